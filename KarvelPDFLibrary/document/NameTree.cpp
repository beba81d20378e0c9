#include "KarvelPDFLibrary/document/NameTree.h"

#include <unordered_set>

namespace karvel {

namespace {

void readNames(QPDFObjectHandle& node, NameTreeEntries& entries)
{
    QPDFObjectHandle names = node.getKey("/Names");
    const int count = names.isArray() ? names.getArrayNItems() : 0;
    for (int i = 0; i + 1 < count; i += 2) {
        QPDFObjectHandle name = names.getArrayItem(i);
        if (name.isString()) {
            entries.emplace_back(name.getStringValue(), names.getArrayItem(i + 1));
        }
    }
}

} // namespace

NameTreeEntries readNameTree(const QPDFObjectHandle& root)
{
    NameTreeEntries entries;
    std::unordered_set<int> seen;
    std::vector<QPDFObjectHandle> waiting = {root};
    while (!waiting.empty()) {
        QPDFObjectHandle node = waiting.back();
        waiting.pop_back();
        const bool isNode = node.isDictionary();
        if (!isNode || (node.isIndirect() && !seen.insert(node.getObjectID()).second)) {
            continue;
        }
        readNames(node, entries);
        QPDFObjectHandle kids = node.getKey("/Kids");
        for (int i = kids.isArray() ? kids.getArrayNItems() : 0; i-- > 0;) {
            waiting.push_back(kids.getArrayItem(i));
        }
    }
    return entries;
}

} // namespace karvel
