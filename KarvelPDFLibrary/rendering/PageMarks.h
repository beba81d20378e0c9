#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/viewer/View.h"

#include <vector>

namespace karvel::rendering {

/// How much of a page's rendering is marked (not white), in percent of its pixels.
Result<double> markedPercentage(Document& document, viewer::View& view, int page);

/// How much of a page's rendering is not grey, in percent of its pixels. Components that differ by
/// no more than conversions between colour spaces make them differ count as grey.
Result<double> colouredPercentage(Document& document, viewer::View& view, int page);

/// The pages of a run that render without a mark. When those are all pages of the document, the
/// first one is left out.
Result<std::vector<int>> blankPages(Document& document, viewer::View& view, PageRun run);

} // namespace karvel::rendering
