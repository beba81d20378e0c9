#include "KarvelPDFLibrary/document/References.h"

#include <vector>

namespace karvel {

void forEachReference(const QPDFObjectHandle& value,
                      const std::function<void(const QPDFObjectHandle&)>& found)
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

} // namespace karvel
