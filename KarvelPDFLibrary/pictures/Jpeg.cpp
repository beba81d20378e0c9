#include "KarvelPDFLibrary/pictures/ImageFile.h"
#include "KarvelPDFLibrary/pictures/JpegErrors.h"

#include <cmath>
#include <cstdlib>

namespace karvel::pictures {

namespace {

/// Nothing here may need to be destroyed after setjmp.
bool write(const Raster& raster, int quality, std::vector<unsigned char>& row,
           unsigned char** bytes, unsigned long* length)
{
    jpeg_compress_struct compressor = {};
    JpegErrors errors;
    compressor.err = &errors.manager;
    if (setjmp(errors.escape) != 0) {
        jpeg_destroy_compress(&compressor);
        return false;
    }
    jpeg_create_compress(&compressor);
    jpeg_mem_dest(&compressor, bytes, length);
    compressor.image_width = static_cast<JDIMENSION>(raster.width);
    compressor.image_height = static_cast<JDIMENSION>(raster.height);
    const bool isColor = raster.kind == Raster::Kind::Rgb;
    compressor.input_components = isColor ? 3 : 1;
    compressor.in_color_space = isColor ? JCS_RGB : JCS_GRAYSCALE;
    jpeg_set_defaults(&compressor);
    jpeg_set_quality(&compressor, quality, TRUE);
    compressor.density_unit = 1; // per inch
    compressor.X_density = static_cast<UINT16>(std::lround(raster.dpi));
    compressor.Y_density = compressor.X_density;
    jpeg_start_compress(&compressor, TRUE);
    for (int y = 0; y < raster.height; ++y) {
        const unsigned char* pixels = raster.row(y);
        if (raster.kind == Raster::Kind::Mono) {
            for (int x = 0; x < raster.width; ++x) {
                row[static_cast<std::size_t>(x)] =
                    (pixels[x / 8] & (0x80U >> (x % 8))) != 0 ? 255 : 0;
            }
            pixels = row.data();
        }
        JSAMPROW line = const_cast<JSAMPROW>(pixels);
        jpeg_write_scanlines(&compressor, &line, 1);
    }
    jpeg_finish_compress(&compressor);
    jpeg_destroy_compress(&compressor);
    return true;
}

} // namespace

Result<std::string> jpeg(const Raster& raster, int quality)
{
    std::vector<unsigned char> row(static_cast<std::size_t>(raster.width));
    unsigned char* bytes = nullptr;
    unsigned long length = 0;
    const bool written = write(raster, quality, row, &bytes, &length);
    std::string file;
    if (written) {
        file.assign(reinterpret_cast<const char*>(bytes), length);
    }
    std::free(bytes); // allocated by jpeg_mem_dest
    if (!written) {
        return fail(ErrorCode::LibraryFailed, "the image cannot be written as JPEG");
    }
    return file;
}

} // namespace karvel::pictures
