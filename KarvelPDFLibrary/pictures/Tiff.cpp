#include "KarvelPDFLibrary/pictures/ImageFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <tiffio.h>

namespace karvel::pictures {

namespace {

struct Memory {
    std::string bytes;
    std::size_t position = 0;
};

Memory& memory(thandle_t handle)
{
    return *static_cast<Memory*>(handle);
}

tmsize_t readFrom(thandle_t handle, void* buffer, tmsize_t length)
{
    Memory& file = memory(handle);
    const std::size_t there = file.bytes.size() - std::min(file.position, file.bytes.size());
    const std::size_t count = std::min(there, static_cast<std::size_t>(length));
    std::memcpy(buffer, file.bytes.data() + file.position, count);
    file.position += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t writeTo(thandle_t handle, void* buffer, tmsize_t length)
{
    Memory& file = memory(handle);
    const auto count = static_cast<std::size_t>(length);
    if (file.bytes.size() < file.position + count) {
        file.bytes.resize(file.position + count);
    }
    std::memcpy(file.bytes.data() + file.position, buffer, count);
    file.position += count;
    return length;
}

toff_t seek(thandle_t handle, toff_t offset, int whence)
{
    Memory& file = memory(handle);
    const std::size_t base = whence == SEEK_SET   ? 0
                             : whence == SEEK_CUR ? file.position
                                                  : file.bytes.size();
    file.position = base + static_cast<std::size_t>(offset);
    return file.position;
}

int closeNothing(thandle_t /*handle*/)
{
    return 0;
}

toff_t sizeOf(thandle_t handle)
{
    return memory(handle).bytes.size();
}

int silent(TIFF* /*file*/, void* /*user*/, const char* /*module*/, const char* /*form*/,
           va_list /*arguments*/)
{
    return 1;
}

struct Close {
    void operator()(TIFF* file) const { TIFFClose(file); }
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

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
    Memory target;
    const std::unique_ptr<TIFFOpenOptions, Close> options(TIFFOpenOptionsAlloc());
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), silent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), silent, nullptr);
    bool written = false;
    {
        const std::unique_ptr<TIFF, Close> file(
            TIFFClientOpenExt("memory", "w", &target, readFrom, writeTo, seek, closeNothing, sizeOf,
                              nullptr, nullptr, options.get()));
        written = file && write(file.get(), raster);
    }
    if (!written) {
        return fail(ErrorCode::LibraryFailed, "the image cannot be written as TIFF");
    }
    return std::move(target.bytes);
}

} // namespace karvel::pictures
