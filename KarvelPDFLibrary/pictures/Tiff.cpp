#include "KarvelPDFLibrary/pictures/ImageFile.h"
#include "KarvelPDFLibrary/pictures/TiffInMemory.h"

#include <algorithm>

namespace karvel::pictures {

namespace {

bool write(TIFF* file, const Raster& raster)
{
    const bool isMono = raster.kind == Raster::Kind::Mono;
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(raster.width));
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(raster.height));
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, isMono ? 1 : 8);
    TIFFSetField(file, TIFFTAG_SAMPLESPERPIXEL, raster.channels());
    TIFFSetField(file, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC,
                 isMono                             ? PHOTOMETRIC_MINISWHITE
                 : raster.kind == Raster::Kind::Rgb ? PHOTOMETRIC_RGB
                                                    : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(file, TIFFTAG_COMPRESSION, isMono ? COMPRESSION_CCITTFAX4 : COMPRESSION_LZW);
    TIFFSetField(file, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(file, 0));
    TIFFSetField(file, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(file, TIFFTAG_XRESOLUTION, raster.dpi);
    TIFFSetField(file, TIFFTAG_YRESOLUTION, raster.dpi);
    std::vector<unsigned char> row(raster.bytesPerRow());
    for (int y = 0; y < raster.height; ++y) {
        std::copy_n(raster.row(y), row.size(), row.begin()); // libtiff may write into it
        if (isMono) {
            for (unsigned char& byte : row) {
                byte = static_cast<unsigned char>(~byte);
            }
        }
        if (TIFFWriteScanline(file, row.data(), static_cast<std::uint32_t>(y), 0) < 0) {
            return false;
        }
    }
    return TIFFFlush(file) != 0;
}

} // namespace

Result<std::string> tiff(const Raster& raster)
{
    TiffBytes target;
    bool written = false;
    {
        const OpenTiff file = openTiff(target, "w");
        written = file && write(file.get(), raster);
    }
    if (!written) {
        return fail(ErrorCode::LibraryFailed, "the image cannot be written as TIFF");
    }
    return std::move(target.bytes);
}

} // namespace karvel::pictures
