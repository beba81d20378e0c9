#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel {

/// Whether the loaded file says at its beginning that it is linearised (ISO 32000-2, F.3.3), in
/// full: nothing was added behind it since. What it says is not verified.
bool isLinearized(Document& document);

} // namespace karvel
