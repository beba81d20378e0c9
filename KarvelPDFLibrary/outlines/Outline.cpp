#include "KarvelPDFLibrary/outlines/Outline.h"

#include <unordered_set>
#include <utility>
#include <vector>

namespace karvel::outlines {

namespace {

QPDFObjectHandle entryAt(QPDFObjectHandle holder, const char* key)
{
    QPDFObjectHandle entry =
        holder.isDictionary() ? holder.getKey(key) : QPDFObjectHandle::newNull();
    return entry.isIndirect() && entry.isDictionary() ? entry : QPDFObjectHandle::newNull();
}

} // namespace

int entryCount(Document& document)
{
    QPDFObjectHandle outlines = document.catalogEntry("/Outlines");
    if (!outlines.isDictionary()) {
        return 0;
    }
    int count = 0;
    std::unordered_set<int> seen;
    std::vector<QPDFObjectHandle> waiting = {outlines.getKey("/First")};
    while (!waiting.empty()) {
        QPDFObjectHandle entry = waiting.back();
        waiting.pop_back();
        const bool isEntry = entry.isDictionary();
        if (!isEntry || (entry.isIndirect() && !seen.insert(entry.getObjectID()).second)) {
            continue;
        }
        ++count;
        waiting.push_back(entry.getKey("/Next"));
        waiting.push_back(entry.getKey("/First"));
    }
    return count;
}

QPDFObjectHandle firstEntry(Document& document)
{
    return entryAt(document.catalogEntry("/Outlines"), "/First");
}

QPDFObjectHandle firstChild(QPDFObjectHandle entry)
{
    return entryAt(std::move(entry), "/First");
}

QPDFObjectHandle nextEntry(QPDFObjectHandle entry)
{
    return entryAt(std::move(entry), "/Next");
}

std::string titleOf(QPDFObjectHandle entry)
{
    QPDFObjectHandle title = entry.getKey("/Title");
    return title.isString() ? title.getUTF8Value() : std::string();
}

} // namespace karvel::outlines
