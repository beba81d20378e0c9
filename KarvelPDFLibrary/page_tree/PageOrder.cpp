#include "KarvelPDFLibrary/page_tree/PageOrder.h"

#include "KarvelPDFLibrary/base/LargeVectors.h"

#include <algorithm>

namespace karvel {

PageOrder::PageOrder(std::vector<PageEntry> entries)
    : entries_(std::move(entries)), gapStart_(entries_.size())
{
}

void PageOrder::moveGap(std::size_t index)
{
    assert(index + gapLength_ <= entries_.size());
    const auto begin = entries_.begin();
    const auto offset = [](std::size_t count) { return static_cast<std::ptrdiff_t>(count); };
    if (index < gapStart_) {
        std::move_backward(begin + offset(index), begin + offset(gapStart_),
                           begin + offset(gapStart_ + gapLength_));
    } else if (index > gapStart_) {
        std::move(begin + offset(gapStart_ + gapLength_), begin + offset(index + gapLength_),
                  begin + offset(gapStart_));
    }
    gapStart_ = index;
}

void PageOrder::remove(PageRun run)
{
    assert(run.first >= 1 && run.count >= 0 && run.count <= count() - (run.first - 1));
    const auto first = static_cast<std::size_t>(run.first) - 1;
    const auto count = static_cast<std::size_t>(run.count);
    // Move the gap to the nearer end of the run.
    if (gapStart_ >= first + count) {
        moveGap(first + count);
        gapStart_ = first;
    } else {
        moveGap(first);
    }
    gapLength_ += count;
}

void PageOrder::insert(int beforePage, const std::vector<PageEntry>& added)
{
    assert(beforePage >= 1 && beforePage <= count() + 1);
    if (added.size() > gapLength_) {
        std::vector<PageEntry> all = toVector();
        all.insert(all.begin() + (beforePage - 1), added.begin(), added.end());
        *this = PageOrder(std::move(all));
        return;
    }
    moveGap(static_cast<std::size_t>(beforePage) - 1);
    std::copy(added.begin(), added.end(),
              entries_.begin() + static_cast<std::ptrdiff_t>(gapStart_));
    gapStart_ += added.size();
    gapLength_ -= added.size();
}

std::vector<PageEntry> PageOrder::toVector() const
{
    std::vector<PageEntry> all;
    reserveLarge(all, entries_.size() - gapLength_);
    const auto gap = entries_.begin() + static_cast<std::ptrdiff_t>(gapStart_);
    all.insert(all.end(), entries_.begin(), gap);
    all.insert(all.end(), gap + static_cast<std::ptrdiff_t>(gapLength_), entries_.end());
    return all;
}

} // namespace karvel
