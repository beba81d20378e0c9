#include "VantoraHost/core/Figures.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vantora {

std::string grouped(std::uint64_t number)
{
    std::string digits = std::to_string(number);
    for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3) {
        digits.insert(static_cast<std::size_t>(place), ",");
    }
    return digits;
}

std::string counted(std::uint64_t number, const char* one, const char* several)
{
    return grouped(number) + ' ' + (number == 1 ? one : several);
}

std::string sizeText(std::uint64_t bytes)
{
    constexpr const char* units[] = {"kB", "MB", "GB", "TB"};
    if (bytes < 1000) {
        return counted(bytes, "byte", "bytes");
    }
    // In tenths, so that rounding up to 1000 kB can go on to 1.0 MB.
    std::uint64_t tenths = bytes / 100 + (bytes % 100 >= 50 ? 1 : 0);
    std::size_t unit = 0;
    while (tenths >= 10000 && unit + 1 < std::size(units)) {
        tenths = (tenths + 500) / 1000;
        ++unit;
    }
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + ' ' + units[unit];
}

std::string durationText(double seconds)
{
    const auto whole = static_cast<std::uint64_t>(std::ceil(std::max(0.0, seconds)));
    if (whole < 100) {
        return std::to_string(whole) + " s";
    }
    const std::uint64_t minutes = (whole + 59) / 60;
    return minutes < 100 ? std::to_string(minutes) + " min"
                         : grouped(minutes / 60) + " h " + std::to_string(minutes % 60) + " min";
}

std::string rateText(std::size_t documents, double seconds)
{
    const double rate = static_cast<double>(documents) / std::max(seconds, 1e-6);
    if (rate >= 10) {
        return grouped(static_cast<std::uint64_t>(std::llround(rate)));
    }
    const auto tenths = static_cast<std::uint64_t>(std::llround(rate * 10));
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10);
}

} // namespace vantora
