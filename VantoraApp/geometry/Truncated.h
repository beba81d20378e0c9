#pragma once

#include <limits>

/// The number without its fraction. Numbers beyond the integers give the last of them, no number at
/// all gives 0.
inline int Truncated(double number)
{
    using Limits = std::numeric_limits<int>;
    if (number >= Limits::max())
        return Limits::max();
    if (number <= Limits::min())
        return Limits::min();
    return number == number ? static_cast<int>(number) : 0;
}
