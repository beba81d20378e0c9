#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>
#include <unordered_map>

namespace karvel::deletion {

namespace {

/// The parts below a part (ISO 32000-2, 14.12): arrays of them in an array.
std::vector<QPDFObjectHandle> partsBelow(QPDFObjectHandle part)
{
    std::vector<QPDFObjectHandle> below;
    QPDFObjectHandle groups = part.getKey("/DParts");
    for (int i = 0; groups.isArray() && i < groups.getArrayNItems(); ++i) {
        QPDFObjectHandle group = groups.getArrayItem(i);
        if (group.isArray()) {
            const std::vector<QPDFObjectHandle> parts = group.getArrayAsVector();
            below.insert(below.end(), parts.begin(), parts.end());
        }
    }
    return below;
}

/// Where pages stood before the removal, and which of them stay.
class FormerPages {
public:
    explicit FormerPages(Removal& removal) : document_(removal.document())
    {
        const PageOrder& order = document_.order();
        for (const PageEntry& page : document_.removedPages()) {
            note(page);
        }
        for (int number = 1; number <= order.count(); ++number) {
            note(order.at(number));
        }
        after_.resize(static_cast<std::size_t>(last_) + 2, 0);
        before_.resize(after_.size(), 0);
        for (int number = last_; number >= 1; --number) {
            const auto at = static_cast<std::size_t>(number);
            after_[at] = removal.presentNumberOf(number) > 0 ? number : after_[at + 1];
        }
        for (int number = 1; number <= last_; ++number) {
            const auto at = static_cast<std::size_t>(number);
            before_[at] = removal.presentNumberOf(number) > 0 ? number : before_[at - 1];
        }
    }

    /// The number that a page had; 0 for none.
    int numberOf(const QPDFObjectHandle& page) const
    {
        const auto found = numbers_.find(page.getObjectID());
        return found == numbers_.end() ? 0 : found->second;
    }

    /// Of the pages that stay, the first from a number on and the last up to one; 0 for none.
    int firstFrom(int number) const { return after_[static_cast<std::size_t>(number)]; }
    int lastTo(int number) const { return before_[static_cast<std::size_t>(number)]; }

private:
    void note(const PageEntry& page)
    {
        if (page.original > 0) {
            numbers_[page.object] = page.original;
            last_ = std::max(last_, static_cast<int>(page.original));
        }
    }

    Document& document_;
    std::unordered_map<int, int> numbers_;
    std::vector<int> after_;
    std::vector<int> before_;
    int last_ = 0;
};

class PartRemover {
public:
    explicit PartRemover(Removal& removal) : removal_(removal), pages_(removal) {}

    /// Whether nothing is left of the parts from `root` on.
    bool run(const QPDFObjectHandle& root)
    {
        std::vector<QPDFObjectHandle> parts = {root};
        std::unordered_set<int> seen = {root.getObjectID()};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            for (QPDFObjectHandle part : partsBelow(parts[i])) {
                if (part.isIndirect() && part.isDictionary() &&
                    seen.insert(part.getObjectID()).second) {
                    parts.push_back(part);
                }
            }
        }
        // Those below come after those above.
        for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
            if (goes(*part)) {
                removal_.drop(*part);
            }
        }
        return removal_.isGone(root);
    }

private:
    bool goes(QPDFObjectHandle part)
    {
        if (part.hasKey("/Start")) {
            return !narrow(part);
        }
        bool lost = false;
        for (const QPDFObjectHandle& below : partsBelow(part)) {
            if (!removal_.isGone(below)) {
                return false;
            }
            lost = true;
        }
        return lost;
    }

    /// Lets a part begin and end with pages that stay; false when it has none.
    bool narrow(QPDFObjectHandle part)
    {
        QPDFObjectHandle start = part.getKey("/Start");
        QPDFObjectHandle end = part.hasKey("/End") ? part.getKey("/End") : start;
        const int first = pages_.numberOf(start);
        const int last = pages_.numberOf(end);
        if (first == 0 || last < first) {
            return true; // nothing that could be put right
        }
        const int newFirst = pages_.firstFrom(first);
        if (newFirst == 0 || newFirst > last) {
            return false;
        }
        setPage(part, "/Start", first, newFirst);
        if (part.hasKey("/End")) {
            setPage(part, "/End", last, pages_.lastTo(last));
        }
        return true;
    }

    void setPage(QPDFObjectHandle part, const char* key, int before, int now)
    {
        if (before != now) {
            const int number = removal_.presentNumberOf(now);
            removal_.changes().edit(part).replaceKey(key, removal_.document().page(number));
        }
    }

    Removal& removal_;
    FormerPages pages_;
};

} // namespace

void removeDocumentParts(Removal& removal)
{
    QPDFObjectHandle parts = removal.catalogEntry("/DPartRoot");
    QPDFObjectHandle root =
        parts.isDictionary() ? parts.getKey("/DPartRootNode") : QPDFObjectHandle::newNull();
    if (root.isDictionary() && root.isIndirect() && PartRemover(removal).run(root)) {
        removal.drop(parts);
        removal.changes().edit(removal.catalog()).removeKey("/DPartRoot");
    }
}

} // namespace karvel::deletion
