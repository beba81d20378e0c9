#pragma once

#include <string_view>

namespace karvel {

/// What keys begin with that libqpdf gives to values without one: the dictionary is damaged.
constexpr std::string_view inventedKey = "/QPDFFake";

/// Whether any key of a dictionary, given by key and value, is such a one.
template <class Entries>
bool hasInventedKey(const Entries& entries)
{
    for (const auto& [key, value] : entries) {
        if (key.compare(0, inventedKey.size(), inventedKey) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace karvel
