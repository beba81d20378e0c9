#include "KarvelPDFLibrary/form_fields/FieldTree.h"

#include <algorithm>
#include <unordered_set>

namespace karvel::form_fields {

namespace {

/// The kids that are fields. The others are widget annotations of the field itself: what makes a
/// kid a field is that it has a name.
std::vector<QPDFObjectHandle> fieldsBelow(QPDFObjectHandle field)
{
    std::vector<QPDFObjectHandle> fields;
    QPDFObjectHandle kids = field.getKey("/Kids");
    const int count = kids.isArray() ? kids.getArrayNItems() : 0;
    for (int i = 0; i < count; ++i) {
        QPDFObjectHandle kid = kids.getArrayItem(i);
        if (kid.isDictionary() && kid.hasKey("/T")) {
            fields.push_back(kid);
        }
    }
    return fields;
}

} // namespace

std::vector<Field> terminalFields(Document& document)
{
    std::vector<Field> terminal;
    QPDFObjectHandle form = document.catalogEntry("/AcroForm");
    QPDFObjectHandle roots = form.isDictionary() ? form.getKey("/Fields") : form;
    if (!roots.isArray()) {
        return terminal;
    }
    std::vector<Field> waiting;
    for (int i = roots.getArrayNItems(); i-- > 0;) {
        waiting.push_back({roots.getArrayItem(i), {}});
    }
    std::unordered_set<int> seen;
    while (!waiting.empty()) {
        Field field = std::move(waiting.back());
        waiting.pop_back();
        QPDFObjectHandle& object = field.object;
        if (!object.isDictionary() ||
            (object.isIndirect() && !seen.insert(object.getObjectID()).second)) {
            continue;
        }
        QPDFObjectHandle type = object.getKey("/FT");
        if (type.isName()) {
            field.type = type.getName();
        }
        std::vector<QPDFObjectHandle> below = fieldsBelow(object);
        if (below.empty()) {
            terminal.push_back(std::move(field));
            continue;
        }
        std::reverse(below.begin(), below.end());
        for (const QPDFObjectHandle& kid : below) {
            waiting.push_back({kid, field.type});
        }
    }
    return terminal;
}

} // namespace karvel::form_fields
