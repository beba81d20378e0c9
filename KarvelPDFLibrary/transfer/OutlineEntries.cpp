#include "KarvelPDFLibrary/transfer/OutlineEntries.h"

#include "KarvelPDFLibrary/transfer/Editing.h"

#include <unordered_set>

namespace karvel::transfer {

namespace {

/// What an entry leads to; null when it has no destination.
QPDFObjectHandle destinationOf(QPDFObjectHandle entry)
{
    QPDFObjectHandle action = entry.getKey("/A");
    if (entry.hasKey("/Dest")) {
        return entry.getKey("/Dest");
    }
    return action.isDictionary() && action.getKey("/S").isNameAndEquals("/GoTo")
               ? action.getKey("/D")
               : QPDFObjectHandle::newNull();
}

void chain(const std::vector<QPDFObjectHandle>& entries, QPDFObjectHandle parent)
{
    for (std::size_t i = 0; i < entries.size(); ++i) {
        QPDFObjectHandle entry = entries[i];
        entry.replaceKey("/Parent", parent);
        if (i > 0) {
            entry.replaceKey("/Prev", entries[i - 1]);
        }
        if (i + 1 < entries.size()) {
            entry.replaceKey("/Next", entries[i + 1]);
        }
    }
}

/// The last entry of the highest level, whatever the root says; null when there is none.
QPDFObjectHandle lastOf(QPDFObjectHandle root)
{
    QPDFObjectHandle last = root.getKey("/Last");
    if (last.isDictionary() && last.isIndirect() && last.getKey("/Next").isNull()) {
        return last;
    }
    last = QPDFObjectHandle::newNull();
    std::unordered_set<int> seen;
    for (QPDFObjectHandle entry = root.getKey("/First");
         entry.isDictionary() && entry.isIndirect() && seen.insert(entry.getObjectID()).second;
         entry = entry.getKey("/Next")) {
        last = entry;
    }
    return last;
}

} // namespace

/// Collects the entries in the order of the tree level by level.
void OutlineEntries::walk()
{
    QPDFObjectHandle root = from_.catalog().getKey("/Outlines");
    if (!root.isDictionary()) {
        return;
    }
    std::unordered_set<int> seen;
    if (root.isIndirect()) {
        seen.insert(root.getObjectID());
    }
    const auto addKids = [&](QPDFObjectHandle parent, int index) {
        for (QPDFObjectHandle entry = parent.getKey("/First");
             entry.isDictionary() && entry.isIndirect() && seen.insert(entry.getObjectID()).second;
             entry = entry.getKey("/Next")) {
            if (index >= 0) {
                entries_[static_cast<std::size_t>(index)].kids.push_back(
                    static_cast<int>(entries_.size()));
            }
            entries_.push_back({entry, index});
        }
    };
    addKids(root, -1);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        addKids(entries_[i].source, static_cast<int>(i));
    }
}

void OutlineEntries::keepWhatLeadsHere(bool whole)
{
    for (std::size_t i = entries_.size(); i-- > 0;) {
        Entry& entry = entries_[i];
        const auto leads = destinations_.leads(destinationOf(entry.source));
        entry.losesTarget = leads == Destinations::Leads::ToPageLeftBehind;
        entry.isKept = entry.isKept || whole || leads == Destinations::Leads::ToPageThatComes;
        if (entry.isKept && entry.parent >= 0) {
            entries_[static_cast<std::size_t>(entry.parent)].isKept = true;
        }
    }
}

bool OutlineEntries::isOpen(Entry& entry) const
{
    QPDFObjectHandle count = entry.source.getKey("/Count");
    return count.isInteger() && count.getIntValue() > 0;
}

void OutlineEntries::copyAll(bool whole)
{
    walk();
    keepWhatLeadsHere(whole);
    for (Entry& entry : entries_) {
        if (!entry.isKept) {
            continue;
        }
        entry.copy = to_.changes().add(QPDFObjectHandle::newDictionary());
        std::vector<std::string> leftOut = {"/Parent", "/First", "/Last", "/Next",
                                            "/Prev",   "/Count", "/SE"};
        if (entry.losesTarget) {
            leftOut.insert(leftOut.end(), {"/Dest", "/A"});
        }
        copier_.copyEntries(entry.source, entry.copy, leftOut);
    }
    for (std::size_t i = entries_.size(); i-- > 0;) {
        Entry& entry = entries_[i];
        std::vector<QPDFObjectHandle> kids;
        for (const int kid : entry.kids) {
            Entry& below = entries_[static_cast<std::size_t>(kid)];
            if (below.isKept) {
                kids.push_back(below.copy);
                entry.visible += 1 + (isOpen(below) ? below.visible : 0);
            }
        }
        if (!kids.empty()) {
            chain(kids, entry.copy);
            entry.copy.replaceKey("/First", kids.front());
            entry.copy.replaceKey("/Last", kids.back());
            entry.copy.replaceKey("/Count", QPDFObjectHandle::newInteger(
                                                isOpen(entry) ? entry.visible : -entry.visible));
        }
    }
}

void OutlineEntries::join()
{
    std::vector<QPDFObjectHandle> added;
    long long visible = 0;
    for (Entry& entry : entries_) {
        if (entry.isKept && entry.parent < 0) {
            added.push_back(entry.copy);
            visible += 1 + (isOpen(entry) ? entry.visible : 0);
        }
    }
    if (added.empty()) {
        return;
    }
    QPDFObjectHandle root = editCatalogDictionary(to_, "/Outlines");
    chain(added, root);
    QPDFObjectHandle last = lastOf(root);
    if (last.isNull()) {
        root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
        root.replaceKey("/First", added.front());
    } else {
        to_.changes().edit(last).replaceKey("/Next", added.front());
        added.front().replaceKey("/Prev", last);
    }
    root.replaceKey("/Last", added.back());
    QPDFObjectHandle count = root.getKey("/Count");
    const long long present = count.isInteger() ? std::max(count.getIntValue(), 0LL) : 0;
    root.replaceKey("/Count", QPDFObjectHandle::newInteger(present + visible));
}

} // namespace karvel::transfer
