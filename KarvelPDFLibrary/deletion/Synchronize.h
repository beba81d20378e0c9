#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::deletion {

/// How far the document is brought up to date.
enum class Degree {
    Recorded, // by the record of changes, for a save that goes by it
    Whole,    // libqpdf's own view too
};

/// Brings a document's objects up to date with its order of pages: puts right everything that
/// refers to removed pages, cuts them, and writes the page tree. One pass, however many runs were
/// removed; nothing when nothing was. To be called before saving, and before anything looks at
/// what the removal of pages changes.
Outcome synchronize(Document& document, Degree degree = Degree::Whole);

} // namespace karvel::deletion
