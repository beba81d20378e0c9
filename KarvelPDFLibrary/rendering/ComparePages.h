#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/viewer/View.h"

namespace karvel::rendering {

/// A page of a document that is open.
struct ShownPage {
    Document& document;
    viewer::View& view;
    int page = 0;
};

/// How many pixels of two pages differ when they are rendered at a resolution in dots per inch; a
/// pixel that only one has differs. Pages that are made of the same objects are not rendered.
Result<int> differentPixels(const ShownPage& one, const ShownPage& other, int dpi);

} // namespace karvel::rendering
