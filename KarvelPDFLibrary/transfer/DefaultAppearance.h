#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <unordered_map>

namespace karvel::transfer {

/// Whether two font dictionaries stand for the same font as far as a field can tell.
bool isSameFont(QPDFObjectHandle one, QPDFObjectHandle other);

/// Puts other font names into a field's default appearance (ISO 32000-2, 12.7.4.3). Names have
/// their slash.
void renameFonts(QPDFObjectHandle field, const std::unordered_map<std::string, std::string>& names);

} // namespace karvel::transfer
