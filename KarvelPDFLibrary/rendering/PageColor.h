#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/viewer/View.h"

namespace karvel::rendering {

/// How much of a page's rendering is not grey, in percent of its pixels. Components that differ by
/// no more than compression and conversions between colour spaces make them differ count as grey.
Result<double> colouredPercentage(Document& document, viewer::View& view, int page);

} // namespace karvel::rendering
