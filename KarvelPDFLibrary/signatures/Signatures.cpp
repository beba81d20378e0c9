#include "KarvelPDFLibrary/signatures/Signatures.h"

#include "KarvelPDFLibrary/form_fields/FieldTree.h"

#include <unordered_set>

namespace karvel::signatures {

namespace {

std::vector<form_fields::Field> signatureFields(Document& document)
{
    std::vector<form_fields::Field> fields;
    for (form_fields::Field& field : form_fields::terminalFields(document)) {
        if (field.type == "/Sig") {
            fields.push_back(std::move(field));
        }
    }
    return fields;
}

/// A field's value, its own or inherited (ISO 32000-2, 12.7.4.1).
QPDFObjectHandle valueOf(QPDFObjectHandle field)
{
    std::unordered_set<int> seen;
    while (field.isDictionary() &&
           (!field.isIndirect() || seen.insert(field.getObjectID()).second)) {
        if (field.hasKey("/V")) {
            return field.getKey("/V");
        }
        field = field.getKey("/Parent");
    }
    return QPDFObjectHandle::newNull();
}

} // namespace

int count(Document& document)
{
    return static_cast<int>(signatureFields(document).size());
}

Result<bool> isSigned(Document& document, int signature)
{
    const std::vector<form_fields::Field> fields = signatureFields(document);
    if (signature < 1 || static_cast<std::size_t>(signature) > fields.size()) {
        return fail(ErrorCode::NotFound,
                    document.name() + ": has no signature field " + std::to_string(signature));
    }
    return valueOf(fields[static_cast<std::size_t>(signature) - 1].object).isDictionary();
}

} // namespace karvel::signatures
