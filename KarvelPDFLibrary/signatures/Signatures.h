#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::signatures {

/// The number of signature fields, signed or not.
int count(Document& document);

/// The index from 1 of a signature field, by its number from 1, among all fields of the form.
Result<int> fieldOf(Document& document, int signature);

/// Whether a signature field, by its number from 1, holds a signature.
Result<bool> isSigned(Document& document, int signature);

/// The texts of a signature, by the codes of the function list.
enum class Text { Signer = 1, Reason, Location, Contact, Date, Handler, Format };

/// A text of a signature; empty where the field isn't signed or the signature lacks it. A date
/// comes in ISO 8601 form, one that can't be read as it is.
Result<std::string> textOf(Document& document, int signature, Text text);

/// What a signature's byte range covers of the file as it was loaded, by the codes of the function
/// list: whether any of it is as it was signed is another question.
enum class Coverage { Unknown, WholeFile, EarlierRevision, Less };
Result<Coverage> coverageOf(Document& document, int signature);

} // namespace karvel::signatures
