#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// Says whether an entry of a tree goes, by its key (a string or a number) and value.
using EntryGoes = std::function<bool(QPDFObjectHandle key, QPDFObjectHandle value)>;

/// Takes entries out of a name tree (`itemsKey` "/Names") or number tree ("/Nums"; ISO
/// 32000-2, 7.9.6 and 7.9.7). Limits are put right, nodes without entries go. `owner` is the
/// indirect object in which `root` stands, or `root` itself. Returns whether the tree is empty now.
bool pruneTree(Removal& removal, QPDFObjectHandle root, const QPDFObjectHandle& owner,
               const char* itemsKey, const EntryGoes& goes);

} // namespace karvel::deletion
