#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <qpdf/QPDF.hh>
#include <string>

namespace karvel {

/// The first crypt filter (ISO 32000-2, 7.6.6) that an encrypted file's encryption dictionary says
/// strings, streams or embedded files are enciphered by although nobody can tell how: libqpdf takes
/// such a filter for AES, or for none. Empty when there is none.
std::string unknownCryptFilter(QPDF& file);

/// The same for the filters that single streams name. Goes through all objects.
std::string unknownCryptFilterOfStreams(QPDF& file);

} // namespace karvel
