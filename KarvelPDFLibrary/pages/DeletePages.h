#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::pages {

/// Removes a run of pages; earlier pages keep their numbers and later ones move down. Refuses, and
/// changes nothing, when the run is not within the document or no page would remain.
Outcome deletePages(Document& document, PageRun run);

} // namespace karvel::pages
