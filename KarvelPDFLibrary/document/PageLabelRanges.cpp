#include "KarvelPDFLibrary/document/PageLabelRanges.h"

#include "KarvelPDFLibrary/objects/NameTree.h"

#include <climits>

namespace karvel {

namespace {

/// More than any page has, so that numbers can be counted on from it.
constexpr long long largestNumber = LLONG_MAX / 4;

} // namespace

PageLabelRanges::PageLabelRanges(QPDFObjectHandle catalog)
{
    for (auto& [key, value] : readNumberTree(catalog.getKey("/PageLabels"))) {
        if (!value.isDictionary() || key < 0 || key > largestNumber) {
            continue;
        }
        QPDFObjectHandle style = value.getKey("/S");
        QPDFObjectHandle prefix = value.getKey("/P");
        QPDFObjectHandle number = value.getKey("/St");
        PageLabel label;
        label.style = style.isName() ? style.unparseResolved() : std::string();
        label.prefix = prefix.isString() ? prefix.getStringValue() : std::string();
        if (number.isInteger() && number.getIntValue() < largestNumber) {
            label.number = number.getIntValue();
        }
        first_[key + 1] = label;
    }
}

std::optional<PageLabel> PageLabelRanges::labelOf(int page) const
{
    auto range = first_.upper_bound(page);
    if (range == first_.begin()) {
        return std::nullopt;
    }
    --range;
    PageLabel label = range->second;
    label.number += page - range->first;
    return label;
}

} // namespace karvel
