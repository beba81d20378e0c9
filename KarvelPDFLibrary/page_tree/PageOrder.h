#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <qpdf/QPDFObjGen.hh>
#include <vector>

namespace karvel {

/// A run of consecutive pages, 1-based.
struct PageRun {
    int first = 1;
    int count = 0;
};

/// One place in the order of pages.
struct PageEntry {
    std::int32_t object = 0;
    std::int32_t generation = 0;

    /// Which set of inherited attributes applies (PageTree): 0 is the empty set.
    std::uint32_t inherited = 0;

    /// Which node of the tree that was read holds the page (PageTree).
    std::uint32_t node = 0;

    /// The page's number when the page tree was last read or written; 0 for a page that came since.
    std::int32_t original = 0;

    /// The page's number in the document as it was loaded; 0 for a page that came since.
    std::int32_t loaded = 0;

    QPDFObjGen id() const { return QPDFObjGen(object, generation); }
};

/// The order of a document's pages: a vector with a gap that stays where the last change was, so
/// that removing many runs from the back to the front (or the reverse) costs one pass in all.
class PageOrder {
public:
    PageOrder() = default;
    explicit PageOrder(std::vector<PageEntry> entries);

    int count() const { return static_cast<int>(entries_.size() - gapLength_); }

    /// The entry of a page; `page` must be 1 to count().
    const PageEntry& at(int page) const { return entries_[slotOf(page)]; }
    PageEntry& at(int page) { return entries_[slotOf(page)]; }

    /// Removes a run, which must be within the order.
    void remove(PageRun run);

    /// Inserts entries before a page; count() + 1 appends.
    void insert(int beforePage, const std::vector<PageEntry>& added);

    /// All entries in order.
    std::vector<PageEntry> toVector() const;

private:
    std::size_t slotOf(int page) const
    {
        assert(page >= 1 && page <= count());
        const auto index = static_cast<std::size_t>(page) - 1;
        return index < gapStart_ ? index : index + gapLength_;
    }
    void moveGap(std::size_t index);

    std::vector<PageEntry> entries_;
    std::size_t gapStart_ = 0;
    std::size_t gapLength_ = 0;
};

} // namespace karvel
