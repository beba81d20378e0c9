#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::pages {

/// A page's label as viewers show it (ISO 32000-2, 12.4.2), in UTF-8; the page's number where the
/// document has no labels for it. The document must be up to date (deletion::synchronize).
Result<std::string> pageLabel(Document& document, int page);

} // namespace karvel::pages
