#pragma once

#include "KarvelPDFLibrary/index/ValueTexts.h"
#include "KarvelPDFLibrary/objects/Changes.h"
#include "KarvelPDFLibrary/page_tree/PageTree.h"

namespace karvel::pageTree {

/// Gives pages another place in the tree by their texts, so that they need not be built.
class PageTexts {
public:
    PageTexts(QPDF& file, Changes& changes, const index::ReferenceIndex& index,
              io::ByteSource& source)
        : changes_(changes), index_(index), texts_(file, index, source)
    {
    }

    /// A page gets a parent, and of the values that it inherited those that it has none of its own
    /// for. False, with nothing changed, when the page has to be built for that.
    bool place(QPDFObjGen page, QPDFObjGen parent, const InheritedSet& inherited);

private:
    bool mayBeNull(std::string_view value) const;

    Changes& changes_;
    const index::ReferenceIndex& index_;
    index::ValueTexts texts_;
};

} // namespace karvel::pageTree
