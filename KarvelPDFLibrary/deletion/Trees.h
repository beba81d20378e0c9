#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// What becomes of an entry of a tree. One changes when its value, which is no object of its own,
/// was changed.
enum class EntryFate { Stays, Changes, Goes };

inline EntryFate goesIf(bool goes)
{
    return goes ? EntryFate::Goes : EntryFate::Stays;
}

/// Decides on an entry of a tree by its key (a string or a number) and value.
using EntryJudge = std::function<EntryFate(QPDFObjectHandle key, QPDFObjectHandle value)>;

/// Tells by its number that a node without children needs no look, since all its entries stay.
using LeafJudge = std::function<bool(int node)>;

/// Takes entries out of a name tree (`itemsKey` "/Names") or number tree ("/Nums"; ISO
/// 32000-2, 7.9.6 and 7.9.7). Limits are put right, nodes without entries go. `owner` is the
/// indirect object in which `root` stands, or `root` itself. Returns whether the tree is empty now.
bool pruneTree(Removal& removal, QPDFObjectHandle root, const QPDFObjectHandle& owner,
               const char* itemsKey, const EntryJudge& judge, const LeafJudge& staysWhole = {});

} // namespace karvel::deletion
