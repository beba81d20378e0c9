#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <string>

namespace karvel::form_fields {

/// A form field's /FT with its slash, its own or inherited (ISO 32000-2, 12.7.4.1); empty for none.
std::string fieldType(const QPDFObjectHandle& field);

/// A field's fully qualified name in UTF-8 (ISO 32000-2, 12.7.4.2).
std::string fieldName(const QPDFObjectHandle& field);

} // namespace karvel::form_fields
