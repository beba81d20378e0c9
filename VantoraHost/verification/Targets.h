#pragma once

#include "VantoraHost/verification/PdfFile.h"

#include <map>
#include <string>

namespace vantora::verification {

/// Where something leads.
struct Target {
    enum class Where {
        Nowhere,
        Page, ///< a page of the document
        Gone, ///< what is no page of it, or a name that nothing has
        Else, ///< another file, an address, an action
    };
    Where where = Where::Nowhere;
    int place = 0;    ///< of the page, from 0
    std::string more; ///< what tells two targets of a page, or elsewhere, apart

    bool operator==(const Target& other) const
    {
        return where == other.where && place == other.place && more == other.more;
    }
    bool operator!=(const Target& other) const { return !(*this == other); }
};

/// The destinations of a document (ISO 32000-2, 12.3.2), named ones included.
class Targets {
public:
    explicit Targets(PdfFile& file);

    /// Where a destination leads: an array, a name, a string, or a dictionary with /D.
    Target ofDestination(QPDFObjectHandle destination) const;

    /// Where a link, an outline entry or an annotation leads by /Dest or else by /A.
    Target of(const QPDFObjectHandle& holder) const;

    /// All names: as they are for strings, with "/" before them in the old dictionary of names.
    const std::map<std::string, QPDFObjectHandle>& names() const { return names_; }

private:
    Target ofArray(QPDFObjectHandle array) const;

    PdfFile& file_;
    std::map<std::string, QPDFObjectHandle> names_;
};

/// The label of each page in UTF-8 (ISO 32000-2, 12.4.2), and its prefix; empty where the document
/// has none.
struct PageLabel {
    std::string text;
    std::string prefix;
};
std::vector<PageLabel> labelsOf(PdfFile& file);

} // namespace vantora::verification
