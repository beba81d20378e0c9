#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <charconv>
#include <string_view>

namespace karvel::io {

namespace {

constexpr std::string_view devices = "/dev/fd/";
constexpr std::string_view processes = "/proc/self/fd/";

} // namespace

std::string pathOf(int descriptor)
{
    return std::string(devices) + std::to_string(descriptor);
}

std::optional<int> descriptorNamed(const std::string& path)
{
    for (const std::string_view folder : {devices, processes}) {
        if (path.compare(0, folder.size(), folder) != 0) {
            continue;
        }
        int descriptor = -1;
        const char* const end = path.data() + path.size();
        const auto [last, error] = std::from_chars(path.data() + folder.size(), end, descriptor);
        if (error == std::errc() && last == end && descriptor >= 0) {
            return descriptor;
        }
    }
    return std::nullopt;
}

} // namespace karvel::io
