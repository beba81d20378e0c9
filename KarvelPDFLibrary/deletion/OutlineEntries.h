#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

#include <array>
#include <optional>

namespace karvel::deletion {

/// How an outline entry refers to others.
enum OutlineLink { First, Last, Prev, Next };

/// What tells where an entry stands in its outline (ISO 32000-2, tables 150 and 151).
struct OutlinePlace {
    /// Numbers of objects, by OutlineLink; 0 for none, -1 for anything else.
    std::array<int, 4> links{};

    std::optional<long long> count;
};

/// An outline entry, or the outline dictionary, as it stands in the document.
struct OutlineEntry {
    int object = 0;
    OutlinePlace place;

    /// Whether its text tells all about it.
    bool isPlain = false;

    /// Where a plain entry has a target that is a removed page, or a structure element that went
    /// and nothing else: the key that goes, "Dest", "A" or "SE".
    const char* lostTarget = nullptr;
};

/// Reads and changes outline entries: by their texts, so that they need not be built, unless there
/// is anything unusual about them. Fastest in the order of the objects.
class OutlineEntries {
public:
    explicit OutlineEntries(Removal& removal) : removal_(removal) {}

    /// Nothing when the object is not a dictionary.
    std::optional<OutlineEntry> read(int object);

    /// Gives an entry its new place, and takes away the target that a plain one lost.
    void write(const OutlineEntry& entry, const OutlinePlace& place);

private:
    std::optional<OutlineEntry> readText(int object);
    std::optional<bool> actionLeads(std::string_view action) const;

    Removal& removal_;
};

} // namespace karvel::deletion
