#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::structure {

/// Whether the catalog's mark information says that the document is tagged.
bool isTagged(Document& document);

} // namespace karvel::structure
