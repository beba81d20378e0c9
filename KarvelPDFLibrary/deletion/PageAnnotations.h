#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

#include <unordered_map>

namespace karvel::deletion {

/// What stands in a page's /Annots, or in that array itself.
std::vector<QPDFObjectHandle> annotationsIn(QPDFObjectHandle pageOrArray);

/// Finds the pages that annotations stand on.
class PageAnnotations {
public:
    explicit PageAnnotations(Removal& removal) : removal_(removal) {}

    /// A remaining page whose /Annots lists an annotation; null when there is none.
    QPDFObjectHandle remainingPageOf(const QPDFObjectHandle& annotation);

private:
    bool lists(const QPDFObjectHandle& page, int annotation);

    Removal& removal_;
    std::unordered_map<int, std::unordered_set<int>> listed_; // by page
};

/// Takes what is gone out of a page's /Annots. False, with nothing changed, when it isn't known
/// without building the page that this is all of it. Fastest in the order of the objects.
bool shortenAnnotations(Removal& removal, int page);

} // namespace karvel::deletion
