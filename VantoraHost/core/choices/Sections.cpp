#include "VantoraHost/core/choices/Sections.h"

#include <algorithm>

namespace vantora {

namespace {

class Sections {
public:
    Sections(const std::vector<OutlineEntry>& outline, int pageCount)
        : outline_(outline), pageCount_(pageCount)
    {
        for (std::size_t i = 0; i < outline.size(); ++i) {
            if (isPage(outline[i].page)) {
                byPage_.push_back(i);
            }
        }
        std::stable_sort(byPage_.begin(), byPage_.end(), [&](std::size_t one, std::size_t other) {
            return outline[one].page < outline[other].page;
        });
    }

    bool isPage(int page) const { return page >= 1 && page <= pageCount_; }

    /// The page after the last one of the section that an entry begins.
    int endOf(std::size_t start) const
    {
        const OutlineEntry& entry = outline_[start];
        const auto last =
            std::find_if(outline_.begin() + static_cast<std::ptrdiff_t>(start) + 1, outline_.end(),
                         [&](const OutlineEntry& other) { return other.level <= entry.level; });
        const auto next = static_cast<std::size_t>(last - outline_.begin());
        auto other =
            std::lower_bound(byPage_.begin(), byPage_.end(), entry.page,
                             [&](std::size_t i, int page) { return outline_[i].page < page; });
        other = std::find_if(other, byPage_.end(), [&](std::size_t i) {
            const bool isOutside = i < start ? outline_[i].page > entry.page : i >= next;
            return isOutside && outline_[i].level <= entry.level;
        });
        return other == byPage_.end() ? pageCount_ + 1 : outline_[*other].page;
    }

private:
    const std::vector<OutlineEntry>& outline_;
    const int pageCount_;
    std::vector<std::size_t> byPage_; ///< entries that lead to a page, in the order of the pages
};

} // namespace

std::vector<int> pagesOfSections(const std::vector<OutlineEntry>& outline, int pageCount,
                                 const std::function<bool(const OutlineEntry&)>& isWanted)
{
    const Sections sections(outline, pageCount);
    // By page, how many more sections begin than end there.
    std::vector<int> changes(static_cast<std::size_t>(std::max(pageCount, 0)) + 2, 0);
    for (std::size_t i = 0; i < outline.size(); ++i) {
        if (sections.isPage(outline[i].page) && isWanted(outline[i])) {
            ++changes[static_cast<std::size_t>(outline[i].page)];
            --changes[static_cast<std::size_t>(sections.endOf(i))];
        }
    }
    std::vector<int> pages;
    int open = 0;
    for (int page = 1; page <= pageCount; ++page) {
        open += changes[static_cast<std::size_t>(page)];
        if (open > 0) {
            pages.push_back(page);
        }
    }
    return pages;
}

} // namespace vantora
