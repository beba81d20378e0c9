#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/index/ReferenceIndex.h"
#include "KarvelPDFLibrary/io/ObjectFile.h"
#include "KarvelPDFLibrary/objects/Changes.h"
#include "KarvelPDFLibrary/objects/ObjectView.h"
#include "KarvelPDFLibrary/objects/Warnings.h"
#include "KarvelPDFLibrary/page_tree/PageDoubts.h"
#include "KarvelPDFLibrary/page_tree/PageOrder.h"

#include <array>
#include <functional>
#include <optional>
#include <qpdf/QPDF.hh>
#include <vector>

namespace karvel {

using index::inheritableKeys;

/// Values of the inheritable keys, in that order; an uninitialised handle where there is none.
using InheritedSet = std::array<QPDFObjectHandle, inheritableKeys.size()>;

/// A set of inherited attributes that is not read yet: those of a node beside those above it.
struct UnreadSet {
    std::uint32_t position = 0; // in the list of sets
    std::uint32_t above = 0;    // likewise
    QPDFObjGen node;
};

/// A node of the tree that was read; parents come before their children.
struct TreeNode {
    std::int32_t object = 0;
    std::int32_t generation = 0;
    std::int32_t parent = -1; // position in the list of nodes; -1 for the root
};

/// What reading a page tree gives: the order, and the attributes that pages get from above.
struct ReadPages {
    std::vector<PageEntry> entries;
    std::vector<InheritedSet> inherited; // the first is the empty set
    std::vector<UnreadSet> unread;       // of these
    std::vector<TreeNode> nodes;

    /// Copies of pages that stand in the tree more than once, each with the object number of the
    /// page itself: each use is a page of its own.
    std::vector<std::pair<std::int32_t, std::int32_t>> copies;

    /// The tree as it stands does not say what `entries` says: a page without a number of its own,
    /// or one that stood in the tree twice, got a number.
    bool differsFromTree = false;

    /// Pages can be taken out of the tree as it stands: its nodes have numbers of their own and it
    /// is not deeper than is good for readers.
    bool canBePruned = true;

    PageDoubts doubts;
};

namespace pageTree {

/// Whether the table of objects was rebuilt by now: reading a damaged object may bring that about.
using WasReconstructed = std::function<bool()>;

/// Reads a document's page tree, whatever its depth, without recursion. Loops and entries that are
/// no pages are passed over with a warning. In the place of a page that was lost to damage stands
/// an empty one, so that all have the numbers that the document's own counts give them; the doubts
/// say which. Fails when there is no page at all, and when copies of pages that stand in the tree
/// more than once would be out of all proportion to the file's size in bytes (five thousand copies
/// of a small page are not).
Result<ReadPages> read(QPDF& file, std::int64_t size, Changes& changes,
                       const WasReconstructed& reconstructed, Warnings& warnings);

/// Reads a well-formed page tree through the index, from its root on, without reading a page;
/// nothing when there is anything about the tree that read() would have to look at. While the file
/// is not open, what pages inherit is left unread.
std::optional<ReadPages> readFromIndex(io::ObjectFile& file, const index::ReferenceIndex& index,
                                       QPDFObjGen root);

/// Reads what was left unread, which must be done before any object is changed.
void readInherited(QPDF& file, std::vector<InheritedSet>& sets, std::vector<UnreadSet>& unread);

/// Writes a balanced tree for an order under the catalog's present root node. Attributes that all
/// pages inherit alike stay at the root; others move into the pages. Returns whether they stayed.
bool write(QPDF& file, Changes& changes, ObjectView& objects, const std::vector<PageEntry>& entries,
           std::vector<InheritedSet>& inherited);

/// Takes removed pages out of the tree that was read, and nodes that lose all their pages; the
/// pages that remain, and nodes without removed pages, are not changed.
void prune(ObjectView& objects, const index::ReferenceIndex* index,
           const std::vector<PageEntry>& remaining, const std::vector<PageEntry>& removed,
           const std::vector<TreeNode>& nodes);

} // namespace pageTree

} // namespace karvel
