#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::outlines {

/// The number of outline entries on all levels, closed ones included. Entries that loops lead back
/// to count once.
int entryCount(Document& document);

} // namespace karvel::outlines
