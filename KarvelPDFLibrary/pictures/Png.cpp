#include "KarvelPDFLibrary/pictures/ImageFile.h"

#include <cmath>
#include <csetjmp>
#include <png.h>

namespace karvel::pictures {

namespace {

constexpr double inchesPerMetre = 1 / 0.0254;

void append(png_structp writer, png_bytep bytes, png_size_t length)
{
    static_cast<std::string*>(png_get_io_ptr(writer))
        ->append(reinterpret_cast<const char*>(bytes), length);
}

void flush(png_structp /*writer*/) {}
void ignore(png_structp /*writer*/, png_const_charp /*message*/) {}

int colorType(Raster::Kind kind)
{
    switch (kind) {
    case Raster::Kind::Rgb:
        return PNG_COLOR_TYPE_RGB;
    case Raster::Kind::GrayAlpha:
        return PNG_COLOR_TYPE_GRAY_ALPHA;
    case Raster::Kind::RgbAlpha:
        return PNG_COLOR_TYPE_RGB_ALPHA;
    default:
        return PNG_COLOR_TYPE_GRAY;
    }
}

/// libpng comes back by longjmp from errors: nothing here may need to be destroyed.
bool write(png_structp writer, png_infop info, const Raster& raster)
{
    if (setjmp(png_jmpbuf(writer)) != 0) {
        return false;
    }
    const int depth = raster.kind == Raster::Kind::Mono ? 1 : 8;
    png_set_IHDR(writer, info, static_cast<png_uint_32>(raster.width),
                 static_cast<png_uint_32>(raster.height), depth, colorType(raster.kind),
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const auto perMetre = static_cast<png_uint_32>(std::lround(raster.dpi * inchesPerMetre));
    png_set_pHYs(writer, info, perMetre, perMetre, PNG_RESOLUTION_METER);
    png_write_info(writer, info);
    for (int y = 0; y < raster.height; ++y) {
        png_write_row(writer, raster.row(y));
    }
    png_write_end(writer, info);
    return true;
}

} // namespace

Result<std::string> png(const Raster& raster)
{
    std::string bytes;
    png_structp writer = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, ignore);
    png_infop info = writer != nullptr ? png_create_info_struct(writer) : nullptr;
    bool written = false;
    if (info != nullptr) {
        png_set_write_fn(writer, &bytes, append, flush);
        written = write(writer, info, raster);
    }
    png_destroy_write_struct(&writer, &info);
    if (!written) {
        return fail(ErrorCode::LibraryFailed, "the image cannot be written as PNG");
    }
    return bytes;
}

} // namespace karvel::pictures
