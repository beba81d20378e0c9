#include "KarvelPDFLibrary/pictures/TiffInMemory.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace karvel::pictures {

namespace {

TiffBytes& memory(thandle_t handle)
{
    return *static_cast<TiffBytes*>(handle);
}

tmsize_t readFrom(thandle_t handle, void* buffer, tmsize_t length)
{
    TiffBytes& file = memory(handle);
    const std::size_t there = file.bytes.size() - std::min(file.position, file.bytes.size());
    const std::size_t count = std::min(there, static_cast<std::size_t>(length));
    std::memcpy(buffer, file.bytes.data() + file.position, count);
    file.position += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t writeTo(thandle_t handle, void* buffer, tmsize_t length)
{
    TiffBytes& file = memory(handle);
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
    TiffBytes& file = memory(handle);
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

int note(TIFF* /*file*/, void* bytes, const char* /*module*/, const char* /*form*/,
         va_list /*arguments*/)
{
    static_cast<TiffBytes*>(bytes)->isDamaged = true;
    return 1;
}

struct FreeOptions {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

} // namespace

OpenTiff openTiff(TiffBytes& bytes, const char* mode)
{
    const std::unique_ptr<TIFFOpenOptions, FreeOptions> options(TIFFOpenOptionsAlloc());
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), note, &bytes);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), note, &bytes);
    return OpenTiff(TIFFClientOpenExt("memory", mode, &bytes, readFrom, writeTo, seek, closeNothing,
                                      sizeOf, nullptr, nullptr, options.get()));
}

} // namespace karvel::pictures
