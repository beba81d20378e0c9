#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <memory>
#include <vector>

namespace karvel::transfer {

/// A document that holds only the listed pages, in that order, and is otherwise as the given one. A
/// page that is listed twice comes twice.
Result<std::unique_ptr<Document>> extract(Document& document, const std::vector<int>& list);

} // namespace karvel::transfer
