#pragma once

#include <cstdint>
#include <vector>

namespace karvel {

/// What a damaged document leaves uncertain about its pages. All numbers are those of the pages as
/// it was loaded.
struct PageDoubts {
    /// Pages whose objects can't be read, ascending. Each has its number, as the tree's counts say.
    std::vector<std::int32_t> lost;

    /// The numbers of the pages behind entries of the tree that are no pages, ascending; readers
    /// differ about these: some count a page for each.
    std::vector<std::int32_t> passedOver;

    /// From which page on nothing tells which number a page has; 0 where that is certain.
    std::int32_t unknownFrom = 0;

    bool isLost(std::int32_t page) const;

    /// Whether readers may call pages by other numbers, since some count a page where others don't.
    bool any() const { return !lost.empty() || !passedOver.empty(); }

    /// The first of some pages that went by their numbers, ascending, which is another page than
    /// the one of its number for a reader that counts otherwise, and which none of the numbers
    /// means there; 0 when there is none. A lost page with a certain number is none: nobody sees it.
    std::int32_t firstPerhapsNotMeant(const std::vector<std::int32_t>& removed) const;
};

} // namespace karvel
