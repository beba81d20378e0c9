#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace support {

/// Where a document's index and libqpdf differ about what the file holds: the place of an object,
/// what it is, how long a stream is. Empty when they agree, and for a document without an index.
/// Reads every object.
std::string indexDisagreement(karvel::Document& document);

/// Where what readCrossReferences() says of a file differs from what libqpdf reads, or libqpdf
/// warns, or ends up with something else when it is given what was read. Empty when they agree, and
/// for a file that is left to libqpdf.
std::string crossReferenceDisagreement(const std::string& pdf);

} // namespace support
