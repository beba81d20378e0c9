#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::signatures {

/// The number of signature fields, signed or not.
int count(Document& document);

} // namespace karvel::signatures
