#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::signatures {

/// The number of signature fields, signed or not.
int count(Document& document);

/// The index from 1 of a signature field, by its number from 1, among all fields of the form.
Result<int> fieldOf(Document& document, int signature);

/// Whether a signature field, by its number from 1, holds a signature.
Result<bool> isSigned(Document& document, int signature);

} // namespace karvel::signatures
