#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace karvel::saving {

/// What the hint tables of a linearised file say (ISO 32000-2, F.4). Offsets are those that things
/// would have without the hint stream; lengths are in bytes.
struct Hints {
    struct Page {
        std::uint32_t objects = 0;
        std::uint64_t length = 0;
        std::uint32_t shared = 0; // how many of `sharedByPages`
    };
    std::uint64_t firstPageOffset = 0;
    std::vector<Page> pages;
    std::vector<std::uint32_t> sharedByPages; // page by page

    /// The lengths of all objects of the first page, then of those that other pages share.
    std::vector<std::uint64_t> sharedLengths;
    std::uint32_t sharedOnFirstPage = 0;
    std::uint32_t firstSharedObject = 0; // after those of the first page; 0 when there is none
    std::uint64_t firstSharedOffset = 0;

    /// The outline; none when the count is 0.
    std::uint32_t outlineObject = 0;
    std::uint64_t outlineOffset = 0;
    std::uint32_t outlineCount = 0;
    std::uint64_t outlineLength = 0;
};

/// The data of a hint stream before compression, with the positions in it that its dictionary
/// names.
struct HintTables {
    std::string data;
    std::size_t sharedStart = 0;  // /S
    std::size_t outlineStart = 0; // /O; 0 for none
};
HintTables hintTables(const Hints& hints);

} // namespace karvel::saving
