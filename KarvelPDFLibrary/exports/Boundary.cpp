#include "KarvelPDFLibrary/exports/Boundary.h"

#include <cstring>

namespace karvel::boundary {

std::string takeWide(Instance& instance, const wchar_t* argument)
{
    if (argument == nullptr) {
        return {};
    }
    const char* buffer = reinterpret_cast<const char*>(argument);
    const auto bytes = instance.buffers.bytes(buffer);
    if (!bytes) {
        return {};
    }
    std::wstring wide(bytes->size() / sizeof(wchar_t), L'\0');
    std::memcpy(wide.data(), bytes->data(), wide.size() * sizeof(wchar_t));
    instance.buffers.release(buffer);
    return text::fromWide(wide);
}

std::string bytesOf(const Instance& instance, const char* argument)
{
    if (argument == nullptr) {
        return {};
    }
    const auto bytes = instance.buffers.bytes(argument);
    return bytes ? std::string(*bytes) : std::string(argument);
}

} // namespace karvel::boundary
