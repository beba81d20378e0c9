#pragma once

#include "KarvelPDFLibrary/objects/Changes.h"

#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <utility>
#include <vector>

namespace karvel {

/// The entries of a name tree (ISO 32000-2, 7.9.6) in the order of the tree, names as their bytes.
/// Whatever the tree's depth and whatever loops it has, each node is read once.
using NameTreeEntries = std::vector<std::pair<std::string, QPDFObjectHandle>>;
NameTreeEntries readNameTree(const QPDFObjectHandle& root);

/// The same for a number tree (ISO 32000-2, 7.9.7).
using NumberTreeEntries = std::vector<std::pair<long long, QPDFObjectHandle>>;
NumberTreeEntries readNumberTree(const QPDFObjectHandle& root);

/// Writes a balanced name tree of entries, which must be sorted by name and each have its own, and
/// returns its root.
QPDFObjectHandle writeNameTree(Changes& changes, const NameTreeEntries& entries);

} // namespace karvel
