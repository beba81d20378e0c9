#pragma once

#include "KarvelPDFLibrary/saving/Cipher.h"
#include "KarvelPDFLibrary/saving/Renumbering.h"

#include <qpdf/QPDFObjectHandle.hh>
#include <string>

namespace karvel::saving {

/// An object's value as it stands in a file, streams with their data. Strings and the data are
/// enciphered when there is a cipher, for an object with the same number or, where numbers are
/// given, with its number among them; these are also what its references say then.
std::string objectText(QPDFObjectHandle object, const Cipher* cipher,
                       const Renumbering* numbers = nullptr);

/// "12 0 obj", a value and "endobj".
std::string numbered(int object, int generation, const std::string& value);

} // namespace karvel::saving
