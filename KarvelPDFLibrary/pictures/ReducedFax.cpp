#include "KarvelPDFLibrary/pictures/ReducedImages.h"
#include "KarvelPDFLibrary/pictures/TiffInMemory.h"

#include <algorithm>
#include <cstdint>

namespace karvel::pictures {

namespace {

constexpr int rowsBetweenQuestions = 32;

/// The data as the one strip of a TIFF file, which is what libtiff decodes.
TiffBytes inTiff(const std::string& data, const FaxImage& image)
{
    TiffBytes bytes;
    const OpenTiff file = openTiff(bytes, "w");
    if (!file) {
        return bytes;
    }
    TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(image.width));
    TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(image.height));
    TIFFSetField(file.get(), TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(image.height));
    TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(file.get(), TIFFTAG_COMPRESSION,
                 image.group < 0 ? COMPRESSION_CCITTFAX4 : COMPRESSION_CCITTFAX3);
    if (image.group > 0) {
        TIFFSetField(file.get(), TIFFTAG_GROUP3OPTIONS, GROUP3OPT_2DENCODING);
    }
    TIFFWriteRawStrip(file.get(), 0, const_cast<char*>(data.data()),
                      static_cast<tmsize_t>(data.size()));
    TIFFFlush(file.get());
    return bytes;
}

int bitsIn(unsigned byte)
{
    return __builtin_popcount(byte);
}

/// Adds the black pixels of a row to the pixels that they belong to.
void addRow(const std::vector<unsigned char>& row, int width, int divisor,
            std::vector<unsigned>& sums)
{
    const std::size_t last = sums.size() - 1;
    if (divisor == 8) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (row[i] != 0) {
                sums[std::min(i, last)] += static_cast<unsigned>(bitsIn(row[i]));
            }
        }
        return;
    }
    for (int x = 0; x < width; ++x) {
        const auto place = static_cast<std::size_t>(x);
        sums[std::min(place / static_cast<std::size_t>(divisor), last)] +=
            (row[place / 8] >> (7 - place % 8)) & 1U;
    }
}

/// What libtiff leaves in the bits behind the last column.
void clearBehind(std::vector<unsigned char>& row, int width)
{
    if (width % 8 != 0) {
        row.back() = static_cast<unsigned char>(row.back() & (0xFF00U >> (width % 8)));
    }
}

} // namespace

std::optional<Raster> reducedFax(const std::string& bytes, const FaxImage& image,
                                 Reduction reduction, const Enough& enough)
{
    const int divisor = reduction.divisor;
    if (image.width < divisor || image.height < divisor ||
        double(image.width) * image.height > mostPixels) {
        return std::nullopt;
    }
    TiffBytes file = inTiff(bytes, image);
    file.position = 0;
    file.isDamaged = false;
    const OpenTiff reader = openTiff(file, "r");
    if (!reader) {
        return std::nullopt;
    }
    Raster raster{
        Raster::Kind::Gray, image.width / divisor, image.height / divisor, reduction.dpi, {}};
    raster.pixels.assign(raster.bytesPerRow() * static_cast<std::size_t>(raster.height), 255);
    std::vector<unsigned char> row(
        std::max<std::size_t>(static_cast<std::size_t>(TIFFScanlineSize(reader.get())), 1));
    std::vector<unsigned> sums(static_cast<std::size_t>(raster.width));
    int first = 0; // of the rows in the sums
    for (int y = 0; y < image.height; ++y) {
        if (TIFFReadScanline(reader.get(), row.data(), static_cast<std::uint32_t>(y), 0) < 0 ||
            file.isDamaged) {
            return std::nullopt;
        }
        clearBehind(row, image.width);
        addRow(row, image.width, divisor, sums);
        const int line = std::min(y / divisor, raster.height - 1);
        if (y + 1 < image.height && std::min((y + 1) / divisor, raster.height - 1) == line) {
            continue;
        }
        for (int x = 0; x < raster.width; ++x) {
            const int wide = x + 1 < raster.width ? divisor : image.width - x * divisor;
            const auto pixels = static_cast<unsigned>(wide * (y + 1 - first));
            const unsigned black = std::min(pixels, sums[static_cast<std::size_t>(x)]);
            const unsigned white = image.isInverted ? black : pixels - black;
            raster.row(line)[x] = static_cast<unsigned char>((255 * white + pixels / 2) / pixels);
        }
        std::fill(sums.begin(), sums.end(), 0);
        first = y + 1;
        if (enough && line % rowsBetweenQuestions == rowsBetweenQuestions - 1 &&
            enough(raster, line + 1)) {
            break;
        }
    }
    return raster;
}

} // namespace karvel::pictures
