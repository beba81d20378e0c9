#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>
#include <vector>

namespace karvel::form_fields {

/// A terminal field of the interactive form: one that has no fields below it.
struct Field {
    QPDFObjectHandle object;
    std::string type; // /FT with its slash, inherited or own; empty when absent
};

/// The terminal fields in the order of the field tree (ISO 32000-2, 12.7.4). Whatever the tree's
/// depth and whatever loops it has, each field is met once.
std::vector<Field> terminalFields(Document& document);

} // namespace karvel::form_fields
