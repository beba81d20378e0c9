#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/LiveGraph.h"
#include "KarvelPDFLibrary/saving/Renumbering.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace karvel::saving {

/// An object stream in the output: the number that it had, and which of its members it keeps.
struct PackedStream {
    std::uint32_t object = 0;
    std::vector<std::uint32_t> members;
};

/// Which objects go where in a linearised file, and under which numbers (ISO 32000-2, annex F).
///
/// The parts of the file (F.3.1), first page first:
///
///   1, 2  header, linearisation parameters     the first 1024 bytes (F.3.3)
///   3     first-page cross-reference section   parts 2 to 6 (F.3.4)
///   4     catalog, and what opening needs      `openDocument` (F.3.5)
///   5     hint stream                          (F.4)
///   6     first page                           `firstPage`: the page, what only it uses, what it
///                                              shares, and the outline if that shows first (F.3.7)
///   7     other pages, one after the other     `otherPages`: each page, then what only it uses
///   8     what several of these share          `shared`
///   9     the rest                             `rest`: page tree, thumbnails, outline, others
///   11    main cross-reference table           parts 7 to 9, numbered from 1 (F.3.4)
///
/// Where an object goes is decided by who uses it, as the clauses of F.3 have it: a page uses what
/// it leads to without passing another page or its own /Parent; a thumbnail, an entry of the
/// catalog and one of the trailer likewise. An object stream is used by whoever uses one of its
/// members, and stands for them; pages and the catalog are taken out of theirs (7.5.7). In every
/// section members have the highest numbers. What nobody uses in this sense but is live, such as
/// pages outside the page tree, goes to the rest. Objects that are null are written as null
/// wherever something refers to them.
///
/// Readers count objects to find them (F.4.2), so numbers follow the order and cannot be kept.
///
/// Users are found in one walk a page that stops where nothing new can be learned: an object counts
/// as used by nobody, by one page or by many, so it is passed three times at most, and the walks
/// together take time in proportion to the references. Only the list of what a page shares with
/// others (F.4.2, items 3 and 4) needs a walk over all that the page reaches; such walks turn back
/// where only objects of part 4 follow. Rejected: sets of users for each object, as libqpdf has
/// them, take time and memory by pages times shared objects (a form's fields are reached from all
/// of its pages); an order by the pages' first use alone, as old linearisers did, gives wrong
/// hints. An overflow hint stream (part 10) serves writers that left too little room for the first;
/// here all lengths are known before anything is written, so there is none.
struct LinearOrder {
    /// Objects that stand in the file by themselves, object streams among them, by the numbers that
    /// they had.
    std::vector<std::uint32_t> openDocument; // the catalog first
    std::vector<std::uint32_t> firstPage;    // the page first
    std::vector<std::uint32_t> otherPages;
    std::vector<std::uint32_t> shared;
    std::vector<std::uint32_t> rest;

    /// By the numbers that they had.
    std::vector<PackedStream> streams;
    const PackedStream* stream(std::uint32_t object) const;

    /// How many objects belong to each page: all of `firstPage` to the first.
    std::vector<std::uint32_t> objectsOfPage;

    /// What pages after the first refer to of `firstPage` and `shared`: positions in the one
    /// followed by the other, page by page, and how many each page has.
    std::vector<std::uint32_t> sharedByPages;
    std::vector<std::uint32_t> sharedCounts;

    /// Where the outline's objects begin and how many there are; they lie together.
    std::uint32_t outlineStart = 0; // the number that its first object had
    std::uint32_t outlineCount = 0;

    /// The numbers in the output, and those of what only linearised files have. The main section
    /// has the numbers below `parameters`, the first-page section those from there on. Numbers of
    /// cross-reference streams are 0 where tables are written.
    Renumbering numbers{0};
    std::uint32_t mainReferences = 0;
    std::uint32_t parameters = 0;
    std::uint32_t firstReferences = 0;
    std::uint32_t hints = 0;
    std::uint32_t size = 0; // one more than the highest number
};

/// The order for a document that is synchronized, has an index, and whose page tree nodes hold no
/// attributes that pages inherit.
LinearOrder linearOrder(Document& document, const LiveGraph& graph, bool withReferenceStreams);

} // namespace karvel::saving
