#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"
#include "KarvelPDFLibrary/index/ValueTexts.h"

#include <optional>
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

/// Takes what is gone out of pages' /Annots by the pages' texts, so that they need not be built.
class AnnotationLists {
public:
    explicit AnnotationLists(Removal& removal);

    /// False, with nothing changed, when the object has to be built for that. To be called in the
    /// order of the objects.
    bool shorten(int page);

private:
    Removal& removal_;
    std::optional<index::ValueTexts> texts_; // nothing without an index
};

} // namespace karvel::deletion
