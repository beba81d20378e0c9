#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace labelled {

/// A kind of pages of which is known whether a person would see anything on them.
struct Kind {
    const char* name;
    bool isBlank;
};

/// All kinds: as drawn by programs and as scanned in grey, in colour, in black and white.
std::vector<Kind> kinds();

/// A document of pages of a kind, each a little different. The same seed makes the same pages.
std::string documentOf(const Kind& kind, int pages, std::uint64_t seed);

} // namespace labelled
