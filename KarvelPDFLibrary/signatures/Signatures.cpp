#include "KarvelPDFLibrary/signatures/Signatures.h"

#include "KarvelPDFLibrary/form_fields/FieldTree.h"

#include <unordered_set>

namespace karvel::signatures {

namespace {

struct SignatureField {
    int index; // from 1, among all fields of the form
    QPDFObjectHandle object;
};

std::vector<SignatureField> signatureFields(Document& document)
{
    std::vector<SignatureField> found;
    int index = 0;
    for (const form_fields::Field& field : form_fields::terminalFields(document)) {
        ++index;
        if (field.type == "/Sig") {
            found.push_back({index, field.object});
        }
    }
    return found;
}

Result<SignatureField> signatureField(Document& document, int signature)
{
    const std::vector<SignatureField> fields = signatureFields(document);
    if (signature < 1 || static_cast<std::size_t>(signature) > fields.size()) {
        return fail(ErrorCode::NotFound,
                    document.name() + ": has no signature field " + std::to_string(signature));
    }
    return fields[static_cast<std::size_t>(signature) - 1];
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

Result<int> fieldOf(Document& document, int signature)
{
    return signatureField(document, signature).map([](const SignatureField& field) {
        return field.index;
    });
}

Result<bool> isSigned(Document& document, int signature)
{
    return signatureField(document, signature).map([](const SignatureField& field) {
        return valueOf(field.object).isDictionary();
    });
}

} // namespace karvel::signatures
