#include "tests/support/Images.h"

#include "tests/support/Inspect.h"

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>
#include <cstring>
#include <tiffio.h>

namespace support {

namespace {

/// Qt takes the thread of its first object for the program's main one, whose data it never frees.
const QObject firstOfQt;

Image withSize(const std::string& format, int width, int height)
{
    Image image{format, width, height, {}};
    image.rgba.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    return image;
}

/// Qt's own plug-ins read no TIFF.
Image fromTiff(const std::string& file)
{
    const ScratchFolder scratch;
    TIFF* reader = TIFFOpen(scratch.write("a.tif", file).c_str(), "r");
    if (reader == nullptr) {
        return {};
    }
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TIFFGetField(reader, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(reader, TIFFTAG_IMAGELENGTH, &height);
    Image image = withSize("TIFF", static_cast<int>(width), static_cast<int>(height));
    std::vector<std::uint32_t> pixels(image.rgba.size() / 4);
    const bool read = TIFFReadRGBAImageOriented(reader, width, height, pixels.data(),
                                                ORIENTATION_TOPLEFT, 1) != 0;
    TIFFClose(reader);
    std::memcpy(image.rgba.data(), pixels.data(), image.rgba.size());
    return read ? image : Image();
}

std::string bigEndian(std::uint32_t number, int bytes)
{
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>(number >> static_cast<unsigned>(shift));
    }
    return text;
}

std::string jbig2Segment(std::uint32_t number, int type, const std::string& data)
{
    const std::string onPageOne(1, '\1');
    return bigEndian(number, 4) + static_cast<char>(type) + std::string(1, '\0') + onPageOne +
           bigEndian(static_cast<std::uint32_t>(data.size()), 4) + data;
}

} // namespace

std::string groupFour(const std::vector<unsigned char>& bits, int width, int height)
{
    const ScratchFolder scratch;
    const std::string path = scratch.path("a.tif");
    TIFF* writer = TIFFOpen(path.c_str(), "w");
    TIFFSetField(writer, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(writer, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(writer, TIFFTAG_ROWSPERSTRIP, height);
    TIFFSetField(writer, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(writer, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(writer, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(writer, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    std::vector<unsigned char> copy = bits; // libtiff may write into it
    TIFFWriteEncodedStrip(writer, 0, copy.data(), static_cast<tmsize_t>(copy.size()));
    TIFFClose(writer);
    TIFF* reader = TIFFOpen(path.c_str(), "r");
    std::string data(static_cast<std::size_t>(TIFFRawStripSize(reader, 0)), '\0');
    TIFFReadRawStrip(reader, 0, data.data(), static_cast<tmsize_t>(data.size()));
    TIFFClose(reader);
    return data;
}

std::string jbig2(const std::vector<unsigned char>& bits, int width, int height)
{
    constexpr int pageInformation = 48;
    constexpr int genericRegion = 38;
    const std::string size = bigEndian(static_cast<std::uint32_t>(width), 4) +
                             bigEndian(static_cast<std::uint32_t>(height), 4);
    const std::string noResolutionNoStripes(11, '\0');
    const std::string placedByOr(9, '\0');
    const std::string byRuns(1, '\1');
    return jbig2Segment(0, pageInformation, size + noResolutionNoStripes) +
           jbig2Segment(1, genericRegion,
                        size + placedByOr + byRuns + groupFour(bits, width, height));
}

std::array<int, 4> Image::at(int x, int y) const
{
    const unsigned char* pixel = rgba.data() + (static_cast<std::ptrdiff_t>(y) * width + x) * 4;
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Image decoded(const std::string& file)
{
    if (file.compare(0, 4, std::string("II*\0", 4)) == 0) {
        return fromTiff(file);
    }
    QBuffer bytes;
    bytes.setData(file.data(), static_cast<int>(file.size()));
    QImageReader reader(&bytes);
    const std::string format = reader.format().toUpper().toStdString();
    const QImage pixels = reader.read().convertToFormat(QImage::Format_RGBA8888);
    Image image = withSize(format, pixels.width(), pixels.height());
    if (!pixels.isNull()) {
        std::memcpy(image.rgba.data(), pixels.constBits(), image.rgba.size());
    }
    return image;
}

} // namespace support
