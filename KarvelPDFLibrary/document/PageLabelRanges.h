#pragma once

#include <map>
#include <optional>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>

namespace karvel {

/// What the label of a page consists of (ISO 32000-2, 12.4.2).
struct PageLabel {
    std::string style;  // a name such as "/D"; empty for none
    std::string prefix; // the bytes of its string
    long long number = 1;
};

/// The ranges of page labels that a document has, read from their tree whatever that is like.
class PageLabelRanges {
public:
    explicit PageLabelRanges(QPDFObjectHandle catalog);

    /// The label that the tree gives to a page by its number, from 1; nothing before the first
    /// range.
    std::optional<PageLabel> labelOf(int page) const;

private:
    std::map<long long, PageLabel> first_; // the labels of the first pages, by their numbers
};

} // namespace karvel
