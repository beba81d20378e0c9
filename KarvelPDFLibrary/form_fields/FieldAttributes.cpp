#include "KarvelPDFLibrary/form_fields/FieldAttributes.h"

#include <functional>
#include <unordered_set>

namespace karvel::form_fields {

namespace {

/// Calls `visit` for a field and those above it, until that says no.
void climb(QPDFObjectHandle field, const std::function<bool(QPDFObjectHandle)>& visit)
{
    std::unordered_set<int> seen;
    while (field.isDictionary() &&
           (!field.isIndirect() || seen.insert(field.getObjectID()).second) && visit(field)) {
        field = field.getKey("/Parent");
    }
}

} // namespace

std::string fieldType(const QPDFObjectHandle& field)
{
    std::string type;
    climb(field, [&](QPDFObjectHandle at) {
        QPDFObjectHandle value = at.getKey("/FT");
        type = value.isName() ? value.getName() : std::string();
        return type.empty();
    });
    return type;
}

std::string fieldName(const QPDFObjectHandle& field)
{
    std::string name;
    climb(field, [&](QPDFObjectHandle at) {
        QPDFObjectHandle part = at.getKey("/T");
        if (part.isString()) {
            name = part.getUTF8Value() + (name.empty() ? "" : "." + name);
        }
        return true;
    });
    return name;
}

} // namespace karvel::form_fields
