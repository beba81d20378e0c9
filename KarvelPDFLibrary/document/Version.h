#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel {

/// A document's PDF version, such as "1.7": the higher of the header's and the catalog's, or the
/// one that was set.
std::string version(Document& document);

/// Sets the version that saving writes, 1.3 to 1.7 or 2.0, whatever the present one.
Outcome setVersion(Document& document, int major, int minor);

} // namespace karvel
