#include "KarvelPDFLibrary/deletion/ActionChain.h"
#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

struct Entry {
    QPDFObjectHandle dictionary;
    int parent; // position; 0 is the outline dictionary itself
    std::vector<int> children;
    bool lostTarget = false;
    bool goes = false;
    bool changed = false; // its list of children
    long long shown = 0;  // descendants that show when it is open
};

/// The outline as a list, parents before their children; entry 0 is the outline dictionary.
class Outline {
public:
    Outline(Removal& removal, const QPDFObjectHandle& root) : removal_(removal)
    {
        entries_.push_back({root, -1, {}});
        std::unordered_set<int> seen = {root.getObjectID()};
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            QPDFObjectHandle child = entries_[i].dictionary.getKey("/First");
            while (child.isDictionary() && child.isIndirect() &&
                   seen.insert(child.getObjectID()).second) {
                entries_[i].children.push_back(static_cast<int>(entries_.size()));
                entries_.push_back({child, static_cast<int>(i), {}});
                child = child.getKey("/Next");
            }
        }
    }

    void removeTargets()
    {
        for (std::size_t i = 1; i < entries_.size(); ++i) {
            Entry& entry = entries_[i];
            QPDFObjectHandle& dictionary = entry.dictionary;
            bool changed = pruneActions(removal_, dictionary, dictionary, "/Dest");
            changed = pruneActions(removal_, dictionary, dictionary, "/A") || changed;
            entry.lostTarget = changed && !dictionary.hasKey("/Dest") && !dictionary.hasKey("/A");
        }
    }

    /// An entry goes when its target went and no child is left.
    void removeEntries()
    {
        for (std::size_t i = entries_.size(); i-- > 1;) {
            Entry& entry = entries_[i];
            std::vector<int>& children = entry.children;
            dropGone(entry);
            entry.goes = entry.lostTarget && children.empty();
            if (entry.goes) {
                at(entry.parent).changed = true;
                removal_.drop(entry.dictionary);
            }
        }
        dropGone(entries_.front());
    }

    void link()
    {
        for (std::size_t i = entries_.size(); i-- > 0;) {
            Entry& entry = entries_[i];
            if (entry.goes) {
                continue;
            }
            for (const int child : entry.children) {
                entry.shown += 1 + (isOpen(at(child)) ? at(child).shown : 0);
            }
            if (entry.changed) {
                linkChildren(entry);
            }
            // A change below shows in the counts of everything above.
            if (entry.changed && entry.parent >= 0) {
                at(entry.parent).changed = true;
            }
        }
    }

    bool isEmpty() const { return entries_.front().children.empty(); }

private:
    Entry& at(int position) { return entries_[static_cast<std::size_t>(position)]; }

    void dropGone(Entry& entry)
    {
        entry.children.erase(std::remove_if(entry.children.begin(), entry.children.end(),
                                            [this](int child) { return at(child).goes; }),
                             entry.children.end());
    }

    /// ISO 32000-2, table 151: the count of a closed entry is negative.
    static bool isOpen(Entry& entry)
    {
        QPDFObjectHandle count = entry.dictionary.getKey("/Count");
        return count.isInteger() && count.getIntValue() > 0;
    }

    void linkChildren(Entry& entry)
    {
        QPDFObjectHandle parent = removal_.changes().edit(entry.dictionary);
        if (entry.children.empty()) {
            for (const char* key : {"/First", "/Last", "/Count"}) {
                parent.removeKey(key);
            }
            return;
        }
        setLink(parent, "/First", at(entry.children.front()).dictionary);
        setLink(parent, "/Last", at(entry.children.back()).dictionary);
        const bool hadCount = parent.hasKey("/Count");
        const bool open = entry.parent < 0 || isOpen(entry);
        if (hadCount) {
            parent.replaceKey("/Count",
                              QPDFObjectHandle::newInteger(open ? entry.shown : -entry.shown));
        }
        for (std::size_t i = 0; i < entry.children.size(); ++i) {
            const QPDFObjectHandle none;
            const QPDFObjectHandle before = i > 0 ? at(entry.children[i - 1]).dictionary : none;
            const QPDFObjectHandle after =
                i + 1 < entry.children.size() ? at(entry.children[i + 1]).dictionary : none;
            setLink(at(entry.children[i]).dictionary, "/Prev", before);
            setLink(at(entry.children[i]).dictionary, "/Next", after);
        }
    }

    /// Changes an entry only where it is not right already.
    void setLink(QPDFObjectHandle dictionary, const char* key, const QPDFObjectHandle& target)
    {
        // The reference is compared, not what it leads to, which may be gone.
        const auto entries = dictionary.getDictAsMap();
        const auto present = entries.find(key);
        const int number = present == entries.end() ? 0 : present->second.getObjectID();
        const int wanted = target.isInitialized() ? target.getObjectID() : 0;
        if (number == wanted) {
            return;
        }
        removal_.changes().edit(dictionary);
        if (wanted == 0) {
            dictionary.removeKey(key);
        } else {
            dictionary.replaceKey(key, target);
        }
    }

    Removal& removal_;
    std::vector<Entry> entries_;
};

} // namespace

void removeOutlineEntries(Removal& removal)
{
    QPDFObjectHandle root = removal.catalog().getKey("/Outlines");
    if (!root.isDictionary() || !root.isIndirect()) {
        return;
    }
    Outline outline(removal, root);
    if (outline.isEmpty()) {
        return;
    }
    outline.removeTargets();
    outline.removeEntries();
    outline.link();
    if (outline.isEmpty()) {
        QPDFObjectHandle catalog = removal.changes().edit(removal.catalog());
        catalog.removeKey("/Outlines");
        removal.drop(root);
        QPDFObjectHandle mode = catalog.getKey("/PageMode");
        if (mode.isName() && mode.getName() == "/UseOutlines") {
            catalog.removeKey("/PageMode");
        }
    }
}

} // namespace karvel::deletion
