#include "KarvelPDFLibrary/deletion/ActionChain.h"
#include "KarvelPDFLibrary/deletion/OutlineEntries.h"
#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

struct Entry {
    OutlineEntry present;
    int parent;         // position; 0 is the outline dictionary itself
    OutlinePlace place; // when all is done
    std::vector<int> children;
    bool lostTarget = false;
    bool goes = false;
    bool changed = false; // its list of children
    long long shown = 0;  // descendants that show when it is open

    Entry(const OutlineEntry& entry, int parentPosition)
        : present(entry), parent(parentPosition), place(entry.place),
          lostTarget(entry.lostTarget != nullptr)
    {
    }

    /// ISO 32000-2, table 151: the count of a closed entry is negative.
    bool isOpen() const { return present.place.count.value_or(0) > 0; }
};

/// The outline as a list, parents before their children; entry 0 is the outline dictionary.
class Outline {
public:
    Outline(Removal& removal, const QPDFObjectHandle& root) : removal_(removal), objects_(removal)
    {
        NumberSet seen;
        seen.insert(root.getObjectID());
        entries_.emplace_back(*objects_.read(root.getObjectID()), -1);
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            int child = entries_[i].place.links[First];
            while (child > 0 && seen.insert(child)) {
                const std::optional<OutlineEntry> entry = objects_.read(child);
                if (!entry) {
                    break;
                }
                entries_[i].children.push_back(static_cast<int>(entries_.size()));
                entries_.emplace_back(*entry, static_cast<int>(i));
                child = entry->place.links[Next];
            }
        }
    }

    void removeTargets()
    {
        for (std::size_t i = 1; i < entries_.size(); ++i) {
            Entry& entry = entries_[i];
            if (entry.present.isPlain) {
                continue;
            }
            QPDFObjectHandle dictionary = removal_.object(entry.present.object);
            bool changed = pruneActions(removal_, dictionary, dictionary, "/Dest");
            changed = pruneActions(removal_, dictionary, dictionary, "/A") || changed;
            const bool leads = dictionary.hasKey("/Dest") || dictionary.hasKey("/A");
            // An entry may lead to a structure element alone (ISO 32000-2, table 151).
            entry.lostTarget = !leads && (changed || removal_.isGone(dictionary.getKey("/SE")));
        }
    }

    /// An entry goes when its target went and no child is left.
    void removeEntries()
    {
        for (std::size_t i = entries_.size(); i-- > 1;) {
            Entry& entry = entries_[i];
            dropGone(entry);
            entry.goes = entry.lostTarget && entry.children.empty();
            if (entry.goes) {
                at(entry.parent).changed = true;
                removal_.drop(entry.present.object);
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
                entry.shown += 1 + (at(child).isOpen() ? at(child).shown : 0);
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

    void write()
    {
        for (const Entry& entry : entries_) {
            if (!entry.goes) {
                objects_.write(entry.present, entry.place);
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

    void linkChildren(Entry& entry)
    {
        const std::vector<int>& children = entry.children;
        if (children.empty()) {
            entry.place.links[First] = entry.place.links[Last] = 0;
            entry.place.count.reset();
            return;
        }
        const auto numberOf = [&](std::size_t child) {
            return child < children.size() ? at(children[child]).present.object : 0;
        };
        entry.place.links[First] = numberOf(0);
        entry.place.links[Last] = numberOf(children.size() - 1);
        if (entry.place.count) {
            const bool open = entry.parent < 0 || entry.isOpen();
            entry.place.count = open ? entry.shown : -entry.shown;
        }
        for (std::size_t i = 0; i < children.size(); ++i) {
            at(children[i]).place.links[Prev] = i > 0 ? numberOf(i - 1) : 0;
            at(children[i]).place.links[Next] = numberOf(i + 1);
        }
    }

    Removal& removal_;
    OutlineEntries objects_;
    std::vector<Entry> entries_;
};

} // namespace

void removeOutlineEntries(Removal& removal)
{
    QPDFObjectHandle root = removal.catalogEntry("/Outlines");
    if (!root.isDictionary()) {
        return;
    }
    if (!root.isIndirect()) {
        root = removal.changes().add(root); // which ISO 32000-2, table 29, wants it to be
        removal.changes().edit(removal.catalog()).replaceKey("/Outlines", root);
    }
    Outline outline(removal, root);
    if (outline.isEmpty()) {
        return;
    }
    outline.removeTargets();
    outline.removeEntries();
    outline.link();
    outline.write();
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
