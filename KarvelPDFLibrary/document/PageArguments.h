#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel {

/// Fails when a document does not have a page.
Outcome hasPage(Document& document, int page);

/// Fails when a run is empty or not within a document.
Outcome hasPages(Document& document, PageRun run);

/// Fails when pages cannot be put before a page; the page count plus 1 means at the end.
Outcome hasPlaceBefore(Document& document, int page);

} // namespace karvel
