#include "KarvelPDFLibrary/signatures/Signatures.h"

#include "KarvelPDFLibrary/form_fields/FieldTree.h"

#include <algorithm>

namespace karvel::signatures {

int count(Document& document)
{
    const std::vector<form_fields::Field> fields = form_fields::terminalFields(document);
    return static_cast<int>(
        std::count_if(fields.begin(), fields.end(),
                      [](const form_fields::Field& field) { return field.type == "/Sig"; }));
}

} // namespace karvel::signatures
