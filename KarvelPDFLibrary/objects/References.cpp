#include "KarvelPDFLibrary/objects/References.h"

#include <vector>

namespace karvel {

namespace {

template <class Visit, class Found>
void walk(const QPDFObjectHandle& value, const Visit& visit, const Found& found)
{
    std::vector<QPDFObjectHandle> open = {value};
    bool outermost = true;
    while (!open.empty()) {
        QPDFObjectHandle part = open.back();
        open.pop_back();
        if (part.isIndirect() && !outermost) {
            found(part);
            continue;
        }
        outermost = false;
        if (part.isStream()) {
            part = part.getDict();
        }
        visit(part);
        if (part.isArray()) {
            const std::vector<QPDFObjectHandle> items = part.getArrayAsVector();
            open.insert(open.end(), items.begin(), items.end());
        } else if (part.isDictionary()) {
            for (const auto& [key, entry] : part.getDictAsMap()) {
                open.push_back(entry);
            }
        }
    }
}

} // namespace

void forEachDirectPart(const QPDFObjectHandle& value,
                       const std::function<void(QPDFObjectHandle)>& visit)
{
    walk(value, visit, [](const QPDFObjectHandle& /*reference*/) {});
}

void forEachReference(const QPDFObjectHandle& value,
                      const std::function<void(const QPDFObjectHandle&)>& found)
{
    walk(
        value, [](const QPDFObjectHandle& /*part*/) {}, found);
}

} // namespace karvel
