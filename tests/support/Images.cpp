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

} // namespace

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
