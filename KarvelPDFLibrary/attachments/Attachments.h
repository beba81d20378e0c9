#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::attachments {

/// The number of files that the catalog's name tree of embedded files lists.
int count(Document& document);

/// The name of one of these files, by its number from 1 in the tree's order: the one that its
/// description gives it, or its key in the tree.
Result<std::string> nameOf(Document& document, int attachment);

} // namespace karvel::attachments
