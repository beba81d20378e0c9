#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/document/Changes.h"
#include "KarvelPDFLibrary/document/Warnings.h"
#include "KarvelPDFLibrary/pages/PageOrder.h"

#include <array>
#include <qpdf/QPDF.hh>
#include <vector>

namespace karvel {

/// The attributes that pages inherit (ISO 32000-2, 7.7.3.4).
constexpr std::array<const char*, 4> inheritableKeys = {"/Resources", "/MediaBox", "/CropBox",
                                                        "/Rotate"};

/// Values of the inheritable keys, in that order; an uninitialised handle where there is none.
using InheritedSet = std::array<QPDFObjectHandle, inheritableKeys.size()>;

/// What reading a page tree gives: the order, and the attributes that pages get from above.
struct ReadPages {
    std::vector<PageEntry> entries;
    std::vector<InheritedSet> inherited; // the first is the empty set

    /// The tree as it stands does not say what `entries` says: a page without a number of its own,
    /// or one that stood in the tree twice, got a number.
    bool differsFromTree = false;
};

namespace pageTree {

/// Reads a document's page tree, whatever its depth, without recursion. Loops and entries that are
/// no pages are passed over with a warning. Fails when pages were lost to damage, since numbers
/// would then mean other pages than they say, and when there is no page at all.
Result<ReadPages> read(QPDF& file, Changes& changes, bool reconstructed, Warnings& warnings);

/// Writes a balanced tree for an order under the catalog's present root node. Attributes that all
/// pages inherit alike stay at the root; others move into the pages. Returns whether they stayed.
bool write(QPDF& file, Changes& changes, const std::vector<PageEntry>& entries,
           std::vector<InheritedSet>& inherited);

} // namespace pageTree

} // namespace karvel
