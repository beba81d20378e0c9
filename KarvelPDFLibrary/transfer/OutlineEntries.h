#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/transfer/Destinations.h"
#include "KarvelPDFLibrary/transfer/ObjectCopier.h"

#include <vector>

namespace karvel::transfer {

/// Takes outline entries along (ISO 32000-2, 12.3.3): those that lead to pages that come too, with
/// the entries above them, or all with `whole`.
class OutlineEntries {
public:
    OutlineEntries(Document& from, Document& to, ObjectCopier& copier, Destinations& destinations)
        : from_(from), to_(to), copier_(copier), destinations_(destinations)
    {
    }

    void copyAll(bool whole);

    /// Adds them after the target's own.
    void join();

private:
    struct Entry {
        QPDFObjectHandle source;
        int parent = -1;
        bool isKept = false;
        bool losesTarget = false;
        QPDFObjectHandle copy = {};
        std::vector<int> kids = {};
        long long visible = 0; // entries below that are shown when it is open
    };

    void walk();
    void keepWhatLeadsHere(bool whole);
    bool isOpen(Entry& entry) const;

    Document& from_;
    Document& to_;
    ObjectCopier& copier_;
    Destinations& destinations_;
    std::vector<Entry> entries_; // parents before their children
};

} // namespace karvel::transfer
