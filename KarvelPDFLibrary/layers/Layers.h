#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::layers {

/// The number of layers (optional content groups, ISO 32000-2, 8.11.4.2).
int count(Document& document);

} // namespace karvel::layers
