#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::layers {

/// The number of layers (optional content groups, ISO 32000-2, 8.11.4.2).
int count(Document& document);

/// The name of a layer by its number from 1; empty where it has none.
Result<std::string> nameOf(Document& document, int layer);

} // namespace karvel::layers
