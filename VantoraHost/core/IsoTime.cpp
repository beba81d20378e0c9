#include "VantoraHost/core/IsoTime.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace vantora {

std::string isoTime(std::int64_t nanoseconds)
{
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t fraction = (nanoseconds % second + second) % second;
    const auto seconds = static_cast<std::time_t>((nanoseconds - fraction) / second);
    std::tm parts = {};
    if (::gmtime_r(&seconds, &parts) == nullptr) {
        return {};
    }
    char text[64];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
    std::snprintf(text + length, sizeof text - length, ".%09dZ", static_cast<int>(fraction));
    return text;
}

std::string isoTime(const std::string& nanoseconds)
{
    std::int64_t number = 0;
    const char* const end = nanoseconds.data() + nanoseconds.size();
    const auto [stopped, failed] = std::from_chars(nanoseconds.data(), end, number);
    return failed == std::errc() && stopped == end && !nanoseconds.empty() ? isoTime(number) : "";
}

std::int64_t nanosecondsNow()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace vantora
