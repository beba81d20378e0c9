#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

#include <utility>

namespace karvel::deletion {

/// The structure's parent tree (ISO 32000-2, 14.7.5.4), which leads from pages, annotations and
/// form XObjects to the elements that hold their content, seen from what goes.
class ParentTree {
public:
    /// `owner` is the structure tree root, or the indirect object in which that stands.
    ParentTree(Removal& removal, QPDFObjectHandle root, QPDFObjectHandle owner);

    /// The elements that hold marked content of removed pages, or removed annotations.
    const std::vector<QPDFObjectHandle>& elements() const { return elements_; }

    /// Whether the tree says which elements hold the marked content of a removed page.
    bool knows(int page) const { return knownPages_.count(page) > 0; }

    /// Whether an element holds the marked content with a number on a removed page.
    bool holds(int element, long long markedContent) const;

    /// Takes out the entries of what went, and what leads to elements that are gone.
    void prune(bool elementsWent);

private:
    void collectKeys();
    void noteKey(int object, long long key);
    void noteDirectAnnotations();
    void collectElements();
    void collectElementsUnder(long long key, QPDFObjectHandle value);
    void emptyPlacesIn(QPDFObjectHandle node);

    /// How much of what an entry leads to is gone.
    enum class Loss { None, Some, All };
    Loss lossOf(QPDFObjectHandle value) const;

    Removal& removal_;
    QPDFObjectHandle owner_;
    QPDFObjectHandle tree_;
    std::unordered_map<long long, int> goneKeys_; // with the removed page, or 0
    std::unordered_set<long long> keysInUse_;
    std::vector<QPDFObjectHandle> elements_;
    std::vector<std::pair<int, long long>> markedContent_; // sorted: element and number
    std::unordered_set<int> knownPages_;
};

} // namespace karvel::deletion
