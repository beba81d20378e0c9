#include "KarvelPDFLibrary/objects/NameTree.h"

#include <algorithm>
#include <unordered_set>

namespace karvel {

namespace {

/// Calls `each(key, value)` with what the nodes of a tree have under a key, in their order.
template <class Each>
void forEachEntry(const QPDFObjectHandle& root, const char* itemsKey, const Each& each)
{
    std::unordered_set<int> seen;
    std::vector<QPDFObjectHandle> waiting = {root};
    while (!waiting.empty()) {
        QPDFObjectHandle node = waiting.back();
        waiting.pop_back();
        const bool isNode = node.isDictionary();
        if (!isNode || (node.isIndirect() && !seen.insert(node.getObjectID()).second)) {
            continue;
        }
        QPDFObjectHandle items = node.getKey(itemsKey);
        const int count = items.isArray() ? items.getArrayNItems() : 0;
        for (int i = 0; i + 1 < count; i += 2) {
            each(items.getArrayItem(i), items.getArrayItem(i + 1));
        }
        QPDFObjectHandle kids = node.getKey("/Kids");
        for (int i = kids.isArray() ? kids.getArrayNItems() : 0; i-- > 0;) {
            waiting.push_back(kids.getArrayItem(i));
        }
    }
}

/// Entries or kids of one node.
constexpr std::size_t fanOut = 64;

struct Node {
    QPDFObjectHandle dictionary;
    std::string first;
    std::string last;
};

Node leaf(Changes& changes, NameTreeEntries::const_iterator begin,
          NameTreeEntries::const_iterator end)
{
    std::vector<QPDFObjectHandle> names;
    for (auto entry = begin; entry != end; ++entry) {
        names.push_back(QPDFObjectHandle::newString(entry->first));
        names.push_back(entry->second);
    }
    QPDFObjectHandle dictionary = changes.add(QPDFObjectHandle::newDictionary());
    dictionary.replaceKey("/Names", QPDFObjectHandle::newArray(names));
    return {dictionary, begin->first, (end - 1)->first};
}

Node parentOf(Changes& changes, std::vector<Node>::iterator begin, std::vector<Node>::iterator end)
{
    std::vector<QPDFObjectHandle> kids;
    for (auto node = begin; node != end; ++node) {
        const auto limit = [](const std::string& name) {
            return QPDFObjectHandle::newString(name);
        };
        node->dictionary.replaceKey(
            "/Limits", QPDFObjectHandle::newArray({limit(node->first), limit(node->last)}));
        kids.push_back(node->dictionary);
    }
    QPDFObjectHandle dictionary = changes.add(QPDFObjectHandle::newDictionary());
    dictionary.replaceKey("/Kids", QPDFObjectHandle::newArray(kids));
    return {dictionary, begin->first, (end - 1)->last};
}

/// Calls `each(begin, end)` with runs of up to fanOut items.
template <class Iterator, class Each>
void inRuns(Iterator begin, Iterator end, Each&& each)
{
    while (begin != end) {
        const auto rest = static_cast<std::size_t>(end - begin);
        const Iterator next = begin + static_cast<std::ptrdiff_t>(std::min(rest, fanOut));
        each(begin, next);
        begin = next;
    }
}

} // namespace

NameTreeEntries readNameTree(const QPDFObjectHandle& root)
{
    NameTreeEntries entries;
    forEachEntry(root, "/Names", [&](QPDFObjectHandle name, const QPDFObjectHandle& value) {
        if (name.isString()) {
            entries.emplace_back(name.getStringValue(), value);
        }
    });
    return entries;
}

NumberTreeEntries readNumberTree(const QPDFObjectHandle& root)
{
    NumberTreeEntries entries;
    forEachEntry(root, "/Nums", [&](QPDFObjectHandle number, const QPDFObjectHandle& value) {
        if (number.isInteger()) {
            entries.emplace_back(number.getIntValue(), value);
        }
    });
    return entries;
}

QPDFObjectHandle writeNameTree(Changes& changes, const NameTreeEntries& entries)
{
    std::vector<Node> level;
    inRuns(entries.begin(), entries.end(),
           [&](auto begin, auto end) { level.push_back(leaf(changes, begin, end)); });
    if (level.empty()) {
        return changes.add(QPDFObjectHandle::parse("<< /Names [] >>"));
    }
    while (level.size() > 1) {
        std::vector<Node> above;
        inRuns(level.begin(), level.end(),
               [&](auto begin, auto end) { above.push_back(parentOf(changes, begin, end)); });
        level = std::move(above);
    }
    return level.front().dictionary;
}

} // namespace karvel
