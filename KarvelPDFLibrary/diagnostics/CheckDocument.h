#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::diagnostics {

/// How far a check goes; each level includes those before it.
enum class CheckLevel : int {
    Structure = 1, // cross-reference table, objects, page tree, linearization
    Streams = 2,   // decodes every stream
    Content = 3,   // parses every page's content
};

/// Checks a document as it is now and returns the number of problems, each added to its warnings.
Result<int> checkDocument(Document& document, CheckLevel level);

} // namespace karvel::diagnostics
