#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::signatures {

/// The number of signature fields, signed or not.
int count(Document& document);

/// Whether a signature field, by its number from 1, holds a signature.
Result<bool> isSigned(Document& document, int signature);

} // namespace karvel::signatures
