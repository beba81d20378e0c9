#include "KarvelPDFLibrary/outlines/Outline.h"

#include <unordered_set>
#include <vector>

namespace karvel::outlines {

int entryCount(Document& document)
{
    QPDFObjectHandle outlines = document.catalog().getKey("/Outlines");
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

} // namespace karvel::outlines
