#include "KarvelPDFLibrary/deletion/Removal.h"

#include "KarvelPDFLibrary/deletion/PageAnnotations.h"
#include "KarvelPDFLibrary/deletion/PrivateData.h"
#include "KarvelPDFLibrary/objects/References.h"

#include <algorithm>
#include <set>

namespace karvel::deletion {

Removal::Removal(Document& document) : document_(document), objects_(document.objects())
{
    for (const PageEntry& page : document.removedPages()) {
        pages_.insert(page.object);
        removedNumbers_.push_back(page.object);
    }
}

bool Removal::may(int object, int flag) const
{
    const index::IndexedObject* indexed = unchanged(object);
    return indexed == nullptr || (indexed->flags & flag) != 0;
}

std::vector<QPDFObjectHandle> Removal::removedPagesWith(int flag)
{
    std::vector<QPDFObjectHandle> pages;
    for (const PageEntry& page : document_.removedPages()) {
        if (may(page.object, flag)) {
            pages.push_back(file().getObject(page.id()));
        }
    }
    return pages;
}

Referrers& Removal::referrers()
{
    if (!referrers_) {
        referrers_.emplace(document_, objects_);
    }
    return *referrers_;
}

bool Removal::isTreeNode(int object) const
{
    const index::ReferenceIndex* index = document_.index();
    const auto number = static_cast<std::uint32_t>(object);
    return index != nullptr && index->contains(number) &&
           index->object(number).kind == index::Kind::PageNode;
}

bool Removal::isOutlineEntry(int object) const
{
    const index::IndexedObject* indexed = unchanged(object);
    return indexed != nullptr && indexed->kind == index::Kind::OutlineEntry;
}

std::vector<QPDFObjectHandle> Removal::formerObjectsWith(int flag)
{
    std::vector<QPDFObjectHandle> objects;
    for (const int number : referrers().objects()) {
        if (may(number, flag)) {
            objects.push_back(object(number));
        }
    }
    return objects;
}

std::vector<int> Removal::objectsWith(int flag)
{
    std::vector<int> objects;
    for (const int number : referrers().objects()) {
        if (may(number, flag) && !isGone(number)) {
            objects.push_back(number);
        }
    }
    return objects;
}

std::optional<ObjectView::Numbers> Removal::indexedAnnotationsOf(int page) const
{
    const index::ReferenceIndex* index = document_.index();
    const auto* list = unchanged(page) == nullptr
                           ? nullptr
                           : index->annotationsOf(static_cast<std::uint32_t>(page));
    if (list == nullptr) {
        return std::nullopt;
    }
    const std::uint32_t* first = index->references().data() + list->firstReference;
    return ObjectView::Numbers{first, first + list->count};
}

void Removal::drop(int object)
{
    if (dropped_.insert(object)) {
        droppedIds_.push_back(idOf(object));
    }
}

bool Removal::isRemainingPage(int object)
{
    if (!remainingPages_) {
        remainingPages_.emplace();
        for (int number = 1; number <= document_.pageCount(); ++number) {
            remainingPages_->insert(document_.order().at(number).object);
        }
    }
    return remainingPages_->has(object);
}

bool Removal::mayBeArray(int object) const
{
    const index::IndexedObject* indexed = unchanged(object);
    return indexed == nullptr || (indexed->flags & index::IsDictionary) == 0;
}

bool Removal::mayReferToGone(const QPDFObjectHandle& object) const
{
    const auto references = indexedReferencesOf(object.getObjectID());
    return !references ||
           std::any_of(references->begin(), references->end(),
                       [this](std::uint32_t target) { return isGone(static_cast<int>(target)); });
}

void Removal::drop(const QPDFObjectHandle& object)
{
    if (object.isIndirect() && dropped_.insert(object.getObjectID())) {
        droppedIds_.push_back(object.getObjGen());
    }
}

const index::ReferenceIndex::PlainLink* Removal::plainLink(int object) const
{
    return unchanged(object) == nullptr || document_.isEncrypted()
               ? nullptr
               : document_.index()->plainLink(static_cast<std::uint32_t>(object));
}

const index::PlainElement* Removal::plainElement(int object) const
{
    return unchanged(object) == nullptr
               ? nullptr
               : document_.index()->plainElement(static_cast<std::uint32_t>(object));
}

std::vector<int> Removal::referrerNumbersOf(int object)
{
    std::vector<int> numbers;
    for (const std::uint32_t referrer : referrers().of(object)) {
        if (!isGone(static_cast<int>(referrer))) {
            numbers.push_back(static_cast<int>(referrer));
        }
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

std::vector<int> Removal::formerReferrersOf(int object)
{
    const ObjectView::Numbers range = referrers().of(object);
    return {range.begin(), range.end()};
}

std::size_t Removal::formerReferrerCount(int object)
{
    const ObjectView::Numbers range = referrers().of(object);
    return static_cast<std::size_t>(range.end() - range.begin());
}

std::vector<QPDFObjectHandle> Removal::referrersOf(int object)
{
    std::vector<QPDFObjectHandle> found;
    for (const int number : referrerNumbersOf(object)) {
        found.push_back(this->object(number));
    }
    return found;
}

bool Removal::isHeldByGoneOnly(int object)
{
    const ObjectView::Numbers range = referrers().of(object);
    return std::all_of(range.begin(), range.end(), [this](std::uint32_t referrer) {
        return isGone(static_cast<int>(referrer));
    });
}

std::vector<int> Removal::pageReferrers()
{
    std::vector<int> found;
    std::unordered_set<std::uint32_t> seen;
    for (const PageEntry& page : document_.removedPages()) {
        for (const std::uint32_t referrer : referrers().of(page.object)) {
            const auto number = static_cast<int>(referrer);
            if (!isGone(number) && !isTreeNode(number) && plainLink(number) == nullptr &&
                seen.insert(referrer).second) {
                found.push_back(number);
            }
        }
    }
    return found;
}

void Removal::climbFromPages(const std::function<bool(int)>& visit)
{
    std::vector<int> pages;
    for (const PageEntry& page : document_.removedPages()) {
        pages.push_back(page.object);
    }
    climb(std::move(pages), {}, visit);
}

void Removal::climbFrom(const std::vector<int>& objects, const std::function<bool(int)>& visit)
{
    std::vector<int> open;
    std::unordered_set<int> seen;
    for (const int object : objects) {
        if (seen.insert(object).second && visit(object)) {
            open.push_back(object);
        }
    }
    climb(std::move(open), std::move(seen), visit);
}

void Removal::climb(std::vector<int> open, std::unordered_set<int> seen,
                    const std::function<bool(int)>& visit)
{
    while (!open.empty()) {
        const int target = open.back();
        open.pop_back();
        for (const std::uint32_t referrer : referrers().of(target)) {
            const auto number = static_cast<int>(referrer);
            const bool isNew = !isGone(number) && !isTreeNode(number) && seen.insert(number).second;
            if (isNew && visit(number)) {
                open.push_back(number);
            }
        }
    }
}

int Removal::presentNumberOf(int original)
{
    if (presentNumbers_.empty()) {
        const PageOrder& order = document_.order();
        presentNumbers_.resize(
            static_cast<std::size_t>(order.count()) + document_.removedPages().size() + 1, 0);
        for (int number = 1; number <= order.count(); ++number) {
            const auto before = static_cast<std::size_t>(order.at(number).original);
            if (before > 0 && before < presentNumbers_.size()) {
                presentNumbers_[before] = number;
            }
        }
    }
    const bool known = original > 0 && static_cast<std::size_t>(original) < presentNumbers_.size();
    return known ? presentNumbers_[static_cast<std::size_t>(original)] : original;
}

std::vector<int> Removal::objectsThatNameGoneDestinations()
{
    const index::ReferenceIndex* index = document_.index();
    if (goneNames.empty()) {
        return {};
    }
    if (index == nullptr || document_.isEncrypted()) {
        return objectsWith(index::HasDestination); // enciphered strings cannot be compared
    }
    std::vector<int> objects;
    const auto& named = index->namedDestinations();
    for (const std::string& name : goneNames) {
        const std::uint64_t hash = index::destinationHash(name);
        auto entry = std::lower_bound(named.begin(), named.end(), hash,
                                      [](const auto& a, std::uint64_t b) { return a.hash < b; });
        for (; entry != named.end() && entry->hash == hash; ++entry) {
            if (!isGone(static_cast<int>(entry->object))) {
                objects.push_back(static_cast<int>(entry->object));
            }
        }
    }
    for (const int number : changes().numbers()) {
        if (changes().kind(number) == Changes::Kind::Added) {
            objects.push_back(number);
        }
    }
    std::sort(objects.begin(), objects.end());
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
    return objects;
}

std::vector<int> Removal::objectsWithNumberedDestinations()
{
    const index::ReferenceIndex* index = document_.index();
    if (index == nullptr) {
        return objectsWith(index::HasDestination);
    }
    std::vector<int> objects;
    for (const std::uint32_t number : index->withNumberedDestinations()) {
        if (!isGone(static_cast<int>(number))) {
            objects.push_back(static_cast<int>(number));
        }
    }
    return objects;
}

/// Takes gone objects out of a holder's arrays and dictionaries.
void Removal::unlist(const QPDFObjectHandle& holder)
{
    bool changed = false;
    const auto goes = [this](const QPDFObjectHandle& item) {
        return item.isIndirect() && dropped_.has(item.getObjectID());
    };
    forEachDirectPart(holder, [&](QPDFObjectHandle part) {
        if (part.isArray()) {
            std::vector<QPDFObjectHandle> items = part.getArrayAsVector();
            const auto end = std::remove_if(items.begin(), items.end(), goes);
            if (end != items.end()) {
                items.erase(end, items.end());
                part.setArrayFromVector(items);
                changed = true;
            }
            return;
        }
        for (const auto& [key, item] : part.getDictAsMap()) {
            if (goes(item)) {
                part.removeKey(key);
                changed = true;
            }
        }
    });
    if (changed) {
        changes().edit(holder);
    }
}

/// A damaged document may list a page that remains, or a node of the page tree, as what it is not:
/// as an annotation of a removed page, for example.
void Removal::keepWhatPagesNeed()
{
    if (droppedIds_.empty()) {
        return;
    }
    NumberSet needed;
    needed.insert(catalog().getObjectID());
    needed.insert(catalogEntry("/Pages").getObjectID());
    for (const TreeNode& node : document_.treeNodes()) {
        needed.insert(node.object);
    }
    const auto goes = [&](const QPDFObjGen& id) {
        return !needed.has(id.getObj()) && !isRemainingPage(id.getObj());
    };
    const auto kept = std::stable_partition(droppedIds_.begin(), droppedIds_.end(), goes);
    for (auto id = kept; id != droppedIds_.end(); ++id) {
        dropped_.erase(id->getObj());
    }
    droppedIds_.erase(kept, droppedIds_.end());
}

/// Whether an object refers to any of some that are gone.
bool Removal::refersToAny(int object, const NumberSet& gone)
{
    const ObjectView::Numbers references = objects().references(object);
    return std::any_of(references.begin(), references.end(),
                       [&](std::uint32_t target) { return gone.has(static_cast<int>(target)); });
}

void Removal::note(const std::string& things)
{
    Warnings& warnings = document_.warnings();
    const std::string text = leftToJudge + things;
    if (std::find(warnings.begin(), warnings.end(), text) == warnings.end()) {
        warnings.push_back(text);
    }
}

void Removal::takeOutDropped()
{
    keepWhatPagesNeed();
    std::set<int> holders;
    for (const QPDFObjGen& id : droppedIds_) {
        for (const std::uint32_t referrer : referrers().of(id.getObj())) {
            const auto number = static_cast<int>(referrer);
            if (!isGone(number)) {
                holders.insert(number);
            }
        }
    }
    for (const int holder : holders) {
        if (!shortenAnnotations(*this, holder) && refersToAny(holder, dropped_)) {
            unlist(object(holder));
        }
    }
    for (const QPDFObjGen& id : droppedIds_) {
        changes().remove(id);
    }
}

void Removal::cutReferencesToPages(const QPDFObjectHandle& holder)
{
    bool changed = false;
    forEachDirectPart(holder, [&](QPDFObjectHandle part) {
        if (part.isArray()) {
            // What the places mean is not known: the others keep theirs.
            for (int i = 0; i < part.getArrayNItems(); ++i) {
                if (isRemovedPage(part.getArrayItem(i))) {
                    part.setArrayItem(i, QPDFObjectHandle::newNull());
                    changed = true;
                }
            }
            return;
        }
        for (const auto& [key, item] : part.getDictAsMap()) {
            if (isRemovedPage(item)) {
                part.removeKey(key);
                changed = true;
            }
        }
    });
    if (changed) {
        changes().edit(holder);
    }
}

void Removal::cutLeftovers()
{
    PrivateData privateData(*this);
    std::unordered_set<std::uint32_t> seen;
    for (const int page : removedNumbers_) {
        for (const std::uint32_t referrer : referrers().of(page)) {
            const auto number = static_cast<int>(referrer);
            if (isGone(number) || !seen.insert(referrer).second) {
                continue;
            }
            if (refersToAny(number, pages_)) {
                privateData.take(number);
                cutReferencesToPages(object(number));
            }
        }
    }
    privateData.takeFromTrailer();
    if (const Roots* roots = document_.roots()) {
        const auto& trailer = roots->trailer();
        const auto leads = [this](const Roots::Entry& entry) {
            return entry.reference && isRemovedPage(entry.reference->getObj());
        };
        if (std::none_of(trailer.begin(), trailer.end(), leads)) {
            return;
        }
    }
    for (const auto& [key, value] : file().getTrailer().getDictAsMap()) {
        if (isRemovedPage(value)) {
            changes().editTrailer().removeKey(key);
        }
    }
}

void forEachNode(const QPDFObjectHandle& root, const char* kidsKey,
                 const std::function<void(QPDFObjectHandle)>& visit)
{
    std::unordered_set<int> seen;
    std::vector<QPDFObjectHandle> open = {root};
    while (!open.empty()) {
        QPDFObjectHandle node = open.back();
        open.pop_back();
        if (!node.isDictionary() ||
            (node.isIndirect() && !seen.insert(node.getObjectID()).second)) {
            continue;
        }
        visit(node);
        QPDFObjectHandle kids = node.getKey(kidsKey);
        if (kids.isArray()) {
            const std::vector<QPDFObjectHandle> items = kids.getArrayAsVector();
            open.insert(open.end(), items.rbegin(), items.rend());
        }
    }
}

} // namespace karvel::deletion
