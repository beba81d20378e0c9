#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::metadata {

/// Half of the trailer's file identifier (ISO 32000-2, 14.4) in hexadecimal digits; empty when
/// there is none.
enum class IdentifierPart : int { Permanent = 1, Changing = 2 };
std::string fileIdentifier(Document& document, IdentifierPart part);

} // namespace karvel::metadata
