#include "KarvelPDFLibrary/deletion/Trees.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

struct Node {
    QPDFObjectHandle dictionary;
    QPDFObjectHandle owner; // the indirect object in which it stands
    int parent;
    bool staysWhole = false; // nothing else is known of it then
    bool changed = false;
    bool empty = false;
};

/// The tree's nodes, parents before their children, each once.
std::vector<Node> nodesOf(const QPDFObjectHandle& root, const QPDFObjectHandle& owner,
                          const LeafJudge& staysWhole)
{
    std::vector<Node> nodes = {{root, root.isIndirect() ? root : owner, -1}};
    std::unordered_set<int> seen = {root.getObjectID()};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].staysWhole) {
            continue;
        }
        QPDFObjectHandle kids = nodes[i].dictionary.getKey("/Kids");
        if (!kids.isArray()) {
            continue;
        }
        const QPDFObjectHandle holder = kids.isIndirect() ? kids : nodes[i].owner;
        for (const QPDFObjectHandle& kid : kids.getArrayAsVector()) {
            QPDFObjectHandle dictionary = kid;
            const bool isNew = !kid.isIndirect() || seen.insert(kid.getObjectID()).second;
            if (isNew && kid.isIndirect() && staysWhole && staysWhole(kid.getObjectID())) {
                nodes.push_back({kid, kid, static_cast<int>(i), true});
            } else if (dictionary.isDictionary() && isNew) {
                nodes.push_back({kid, kid.isIndirect() ? kid : holder, static_cast<int>(i)});
            }
        }
    }
    return nodes;
}

void touch(Removal& removal, const QPDFObjectHandle& owner)
{
    if (owner.isIndirect()) {
        removal.changes().edit(owner);
    }
}

void pruneItems(Removal& removal, Node& node, const char* itemsKey, const EntryJudge& judge)
{
    QPDFObjectHandle items = node.dictionary.getKey(itemsKey);
    if (!items.isArray()) {
        return;
    }
    std::vector<QPDFObjectHandle> kept;
    const std::vector<QPDFObjectHandle> all = items.getArrayAsVector();
    for (std::size_t i = 0; i + 1 < all.size(); i += 2) {
        const EntryFate fate = judge(all[i], all[i + 1]);
        node.changed = node.changed || fate != EntryFate::Stays;
        if (fate != EntryFate::Goes) {
            kept.push_back(all[i]);
            kept.push_back(all[i + 1]);
        }
    }
    if (node.changed) {
        touch(removal, node.owner);
        node.dictionary.replaceKey(itemsKey, QPDFObjectHandle::newArray(kept));
    }
    node.empty = kept.empty();
}

/// The first and last key below a node, whose own entries and children are right already.
void putLimitsRight(Removal& removal, Node& node, const char* itemsKey)
{
    QPDFObjectHandle items = node.dictionary.getKey(itemsKey);
    QPDFObjectHandle kids = node.dictionary.getKey("/Kids");
    QPDFObjectHandle first;
    QPDFObjectHandle last;
    if (items.isArray() && items.getArrayNItems() >= 2) {
        first = items.getArrayItem(0);
        last = items.getArrayItem(items.getArrayNItems() - 2);
    } else if (kids.isArray() && kids.getArrayNItems() > 0) {
        QPDFObjectHandle low = kids.getArrayItem(0).getKey("/Limits");
        QPDFObjectHandle high = kids.getArrayItem(kids.getArrayNItems() - 1).getKey("/Limits");
        if (low.isArray() && high.isArray() && low.getArrayNItems() > 0 &&
            high.getArrayNItems() > 1) {
            first = low.getArrayItem(0);
            last = high.getArrayItem(1);
        }
    }
    if (first.isInitialized() && node.dictionary.hasKey("/Limits")) {
        touch(removal, node.owner);
        node.dictionary.replaceKey("/Limits", QPDFObjectHandle::newArray({first, last}));
    }
}

/// Keeps the kids that have entries.
void pruneKids(Removal& removal, Node& node, const std::vector<QPDFObjectHandle>& kept)
{
    touch(removal, node.owner);
    node.dictionary.replaceKey("/Kids", QPDFObjectHandle::newArray(kept));
    node.changed = true;
    node.empty = kept.empty();
}

} // namespace

bool pruneTree(Removal& removal, QPDFObjectHandle root, const QPDFObjectHandle& owner,
               const char* itemsKey, const EntryJudge& judge, const LeafJudge& staysWhole)
{
    std::vector<Node> nodes = nodesOf(root, owner, staysWhole);
    std::vector<std::vector<QPDFObjectHandle>> keptKids(nodes.size());
    std::vector<bool> lostKid(nodes.size());
    for (std::size_t i = nodes.size(); i-- > 0;) {
        Node& node = nodes[i];
        if (node.staysWhole) {
            keptKids[static_cast<std::size_t>(node.parent)].push_back(node.dictionary);
            continue;
        }
        pruneItems(removal, node, itemsKey, judge);
        const bool inner = node.dictionary.getKey("/Kids").isArray();
        if (inner && lostKid[i]) {
            std::reverse(keptKids[i].begin(), keptKids[i].end());
            pruneKids(removal, node, keptKids[i]);
        }
        if (node.changed && !node.empty) {
            putLimitsRight(removal, node, itemsKey);
        }
        if (node.parent >= 0) {
            const auto parent = static_cast<std::size_t>(node.parent);
            nodes[parent].changed = nodes[parent].changed || node.changed;
            if (node.empty && node.changed) {
                lostKid[parent] = true;
            } else {
                keptKids[parent].push_back(node.dictionary);
            }
        }
    }
    return nodes.front().empty;
}

} // namespace karvel::deletion
