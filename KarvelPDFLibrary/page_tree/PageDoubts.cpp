#include "KarvelPDFLibrary/page_tree/PageDoubts.h"

#include <algorithm>
#include <iterator>

namespace karvel {

namespace {

bool holds(const std::vector<std::int32_t>& ascending, std::int32_t number)
{
    return std::binary_search(ascending.begin(), ascending.end(), number);
}

} // namespace

bool PageDoubts::isLost(std::int32_t page) const
{
    return holds(lost, page);
}

std::int32_t PageDoubts::firstPerhapsNotMeant(const std::vector<std::int32_t>& removed) const
{
    for (const std::int32_t page : removed) {
        const bool isKnown = unknownFrom == 0 || page < unknownFrom;
        if (isKnown && isLost(page)) {
            continue;
        }
        const auto lostBefore = static_cast<std::int32_t>(
            std::distance(lost.begin(), std::lower_bound(lost.begin(), lost.end(), page)));
        const auto passedBefore = static_cast<std::int32_t>(std::distance(
            passedOver.begin(), std::upper_bound(passedOver.begin(), passedOver.end(), page)));
        if (!isKnown || !holds(removed, page - lostBefore) ||
            !holds(removed, page + passedBefore) ||
            !holds(removed, page - lostBefore + passedBefore)) {
            return page;
        }
    }
    return 0;
}

} // namespace karvel
