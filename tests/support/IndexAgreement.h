#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace support {

/// Where a document's index and libqpdf differ about what the file holds: the place of an object,
/// what it is, how long a stream is. Empty when they agree, and for a document without an index.
/// Reads every object.
std::string indexDisagreement(karvel::Document& document);

} // namespace support
