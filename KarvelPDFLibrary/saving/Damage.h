#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::saving {

/// Fails when a page's content was lost to damage of the file. libqpdf replaces what it cannot read
/// by null or by an empty stream, which would make a blank page.
Outcome pagesAreWhole(Document& document);

} // namespace karvel::saving
