#include "KarvelPDFLibrary/deletion/PageAnnotations.h"
#include "KarvelPDFLibrary/deletion/ParentTree.h"
#include "KarvelPDFLibrary/deletion/Trees.h"
#include "KarvelPDFLibrary/deletion/modules.h"

#include <map>

namespace karvel::deletion {

namespace {

/// Structure elements (ISO 32000-2, 14.7.2) need not say their type; actions have /S too.
bool isElement(QPDFObjectHandle object)
{
    return object.isDictionary() && object.getKey("/S").isName() &&
           (object.isDictionaryOfType("/StructElem") ||
            (object.getKey("/P").isIndirect() && !object.hasKey("/D")));
}

/// A marked-content reference or object reference.
bool isReference(QPDFObjectHandle object)
{
    return object.isDictionary() &&
           (object.hasKey("/MCID") || object.hasKey("/Obj") || object.isDictionaryOfType("/MCR") ||
            object.isDictionaryOfType("/OBJR"));
}

std::vector<QPDFObjectHandle> kidsOf(QPDFObjectHandle element)
{
    QPDFObjectHandle kids = element.getKey("/K");
    if (kids.isArray()) {
        return kids.getArrayAsVector();
    }
    return kids.isNull() ? std::vector<QPDFObjectHandle>() : std::vector<QPDFObjectHandle>{kids};
}

/// Prunes the structure tree from the elements that lose something upwards.
class StructureRemover {
public:
    StructureRemover(Removal& removal, QPDFObjectHandle root)
        : removal_(removal), root_(std::move(root)),
          owner_(root_.isIndirect() ? root_ : removal.catalog()), places_(removal),
          parents_(removal, root_, owner_)
    {
    }

    void run()
    {
        for (const int number : removal_.pageReferrers()) {
            if (!takePlainElement(number)) {
                touchHoldersOf(number);
            }
        }
        for (const QPDFObjectHandle& element : parents_.elements()) {
            touchElement(element);
        }
        const std::vector<QPDFObjGen> dropped = removal_.dropped();
        for (const QPDFObjGen& object : dropped) {
            for (const int holder : removal_.referrerNumbersOf(object.getObj())) {
                touchHoldersOf(holder);
            }
        }
        touchThoseThatInheritPages();
        settleFromTheDeepest();
        parents_.prune(removedAny_);
        if (removedAny_) {
            pruneIdentifiers();
            removeEmptyTree();
        }
    }

private:
    struct Element {
        QPDFObjectHandle object;
        int parent = 0; // 0 for none that is known
        int depth = -1;
        bool isLooked = false;  // its own kids are to be looked at, not only those below them
        bool lostBelow = false; // something below was lost
        bool keeps = false;     // something below was lost, and something is left there
    };

    // --- which elements are concerned ---

    /// An element that only has content of a removed page goes without being built. False when it
    /// is not known to be one.
    bool takePlainElement(int number)
    {
        const index::PlainElement* element = removal_.plainElement(number);
        if (element == nullptr || !removal_.isRemovedPage(static_cast<int>(element->page))) {
            return false;
        }
        removal_.drop(number);
        removedAny_ = true;
        const auto parent = static_cast<int>(element->parent);
        if (parent != 0 && parent != root_.getObjectID() && !removal_.isGone(parent)) {
            Element& above = touch(removal_.object(parent));
            above.isLooked = true;
            above.lostBelow = true;
        }
        return true;
    }

    /// Finds the elements that hold something which refers to what goes.
    void touchHoldersOf(int object)
    {
        std::vector<int> open = {object};
        std::unordered_set<int> seen;
        while (!open.empty()) {
            const int number = open.back();
            open.pop_back();
            const bool mayBeArray = removal_.mayBeArray(number);
            if (!mayBeArray && !removal_.mayHave(number, index::HasPlace)) {
                continue; // neither an element nor a reference to content
            }
            if (number == root_.getObjectID() || !seen.insert(number).second) {
                continue;
            }
            QPDFObjectHandle at = removal_.object(number);
            const bool array = mayBeArray && at.isArray();
            if (!array && isElement(at)) {
                touchElement(at);
            } else if (array || isReference(at)) {
                const std::vector<int> holders = removal_.referrerNumbersOf(number);
                open.insert(open.end(), holders.begin(), holders.end());
            }
        }
    }

    void touchElement(QPDFObjectHandle object)
    {
        if (object.isIndirect() && !removal_.isGone(object) && isElement(object)) {
            touch(object).isLooked = true;
        }
    }

    /// Takes an element and all above it into the list.
    Element& touch(const QPDFObjectHandle& object)
    {
        const int number = object.getObjectID();
        for (QPDFObjectHandle at = object; at.isIndirect();) {
            const auto [entry, isNew] = elements_.try_emplace(at.getObjectID());
            if (!isNew) {
                break;
            }
            entry->second.object = at;
            QPDFObjectHandle above = parentOf(at);
            entry->second.parent = above.getObjectID();
            at = above;
        }
        return elements_.at(number);
    }

    /// The element above; null for the root or when there is none.
    QPDFObjectHandle parentOf(QPDFObjectHandle element)
    {
        QPDFObjectHandle parent = element.getKey("/P");
        if (parent.isDictionary() && parent.isIndirect()) {
            return isRoot(parent) ? QPDFObjectHandle::newNull() : parent;
        }
        for (QPDFObjectHandle holder : removal_.referrersOf(element.getObjectID())) {
            if (holder.isDictionary() && holder.hasKey("/S") && hasKid(holder, element)) {
                return holder;
            }
        }
        return QPDFObjectHandle::newNull();
    }

    bool hasKid(const QPDFObjectHandle& element, const QPDFObjectHandle& kid)
    {
        const auto [entry, isNew] = kids_.try_emplace(element.getObjectID());
        if (isNew) {
            for (const QPDFObjectHandle& one : kidsOf(element)) {
                entry->second.insert(one.getObjectID());
            }
        }
        return entry->second.count(kid.getObjectID()) > 0;
    }

    bool isRoot(const QPDFObjectHandle& object) const
    {
        return object.isIndirect() && object.getObjectID() == root_.getObjectID();
    }

    /// Where nothing says which elements hold a removed page's marked content, they may be below
    /// an element that names the page.
    void touchThoseThatInheritPages()
    {
        std::vector<QPDFObjectHandle> open;
        for (const auto& [number, element] : elements_) {
            QPDFObjectHandle page = QPDFObjectHandle(element.object).getKey("/Pg");
            if (removal_.isRemovedPage(page) && !parents_.knows(page.getObjectID())) {
                open.push_back(element.object);
            }
        }
        while (!open.empty()) {
            QPDFObjectHandle element = open.back();
            open.pop_back();
            for (QPDFObjectHandle kid : kidsOf(element)) {
                if (kid.isIndirect() && elements_.count(kid.getObjectID()) == 0 && isElement(kid) &&
                    !kid.getKey("/Pg").isIndirect()) {
                    touchElement(kid);
                    open.push_back(kid);
                }
            }
        }
    }

    // --- what they lose ---

    void settleFromTheDeepest()
    {
        std::map<int, std::vector<int>> byDepth;
        for (const auto& [number, element] : elements_) {
            byDepth[-depthOf(number)].push_back(number);
        }
        for (const auto& [depth, numbers] : byDepth) {
            for (const int number : numbers) {
                settle(elements_.at(number));
            }
        }
    }

    int depthOf(int number)
    {
        std::vector<Element*> path;
        int depth = 0;
        for (auto at = elements_.find(number); at != elements_.end();
             at = elements_.find(at->second.parent)) {
            if (at->second.depth >= 0) {
                depth = at->second.depth + 1;
                break;
            }
            at->second.depth = 0; // ends a loop
            path.push_back(&at->second);
        }
        for (auto element = path.rbegin(); element != path.rend(); ++element) {
            (*element)->depth = depth++;
        }
        return elements_.at(number).depth;
    }

    /// The page of an element's content: its own /Pg, or that of the next element above that has
    /// one. An object number; 0 when it is not known.
    int pageOf(const QPDFObjectHandle& element)
    {
        std::vector<int> path;
        int page = 0;
        for (QPDFObjectHandle at = element; at.isDictionary() && !isRoot(at);
             at = at.getKey("/P")) {
            const auto [entry, isNew] = pages_.try_emplace(at.getObjectID(), 0);
            if (!isNew) {
                page = entry->second;
                break;
            }
            path.push_back(at.getObjectID());
            QPDFObjectHandle own = at.getKey("/Pg");
            if (own.isIndirect()) {
                page = own.getObjectID();
                break;
            }
        }
        for (const int number : path) {
            pages_[number] = page;
        }
        return page;
    }

    /// Whether marked content goes that doesn't name its page itself.
    bool markedContentGoes(const Element& element, const QPDFObjectHandle& number)
    {
        const int id = element.object.getObjectID();
        QPDFObjectHandle own = QPDFObjectHandle(element.object).getKey("/Pg");
        if (own.isIndirect()) {
            return removal_.isRemovedPage(own);
        }
        const bool held = QPDFObjectHandle(number).isInteger() &&
                          parents_.holds(id, QPDFObjectHandle(number).getIntValue());
        const int page = pageOf(element.object);
        return held || (removal_.isRemovedPage(page) && !parents_.knows(page));
    }

    bool referenceGoes(const Element& element, QPDFObjectHandle reference)
    {
        QPDFObjectHandle object = reference.getKey("/Obj");
        if (removal_.isGone(object)) {
            return true;
        }
        QPDFObjectHandle page = reference.getKey("/Pg");
        const bool goes = page.isIndirect() ? removal_.isRemovedPage(page)
                                            : markedContentGoes(element, reference.getKey("/MCID"));
        if (goes && object.isIndirect()) {
            // An annotation that a page which stays shows as well.
            QPDFObjectHandle other = places_.remainingPageOf(object);
            if (!other.isNull()) {
                removal_.changes().edit(reference.isIndirect() ? reference : element.object);
                reference.replaceKey("/Pg", other);
                return false;
            }
        }
        return goes;
    }

    bool kidGoes(const Element& element, const QPDFObjectHandle& handle)
    {
        QPDFObjectHandle kid = handle;
        if (kid.isIndirect()) {
            return removal_.isGone(kid) || (mayBeReference(element, kid) && isReference(kid) &&
                                            referenceGoes(element, kid));
        }
        if (kid.isInteger()) {
            return markedContentGoes(element, kid);
        }
        return isReference(kid) ? referenceGoes(element, kid)
                                : kid.isDictionary() && removal_.isRemovedPage(kid.getKey("/Pg"));
    }

    /// Most indirect kids are elements, which need not be looked at here.
    bool mayBeReference(const Element& element, const QPDFObjectHandle& kid)
    {
        return removal_.mayReferToGone(kid) || removal_.isRemovedPage(pageOf(element.object));
    }

    void settle(Element& element)
    {
        std::vector<QPDFObjectHandle> kept;
        bool lost = false;
        const bool namesPage = removal_.isRemovedPage(element.object.getKey("/Pg"));
        if (element.isLooked || namesPage) {
            for (const QPDFObjectHandle& kid : kidsOf(element.object)) {
                if (kidGoes(element, kid)) {
                    lost = true;
                    removal_.drop(kid);
                } else {
                    kept.push_back(kid);
                }
            }
        }
        if ((lost || namesPage) && !element.keeps && !holdsContent(kept)) {
            dropWithAllBelow(element.object);
            tellParent(element, false);
            return;
        }
        if (lost || namesPage || element.lostBelow) {
            keepRest(element, lost, kept);
            tellParent(element, true);
        }
    }

    void tellParent(const Element& element, bool keeps)
    {
        const auto parent = elements_.find(element.parent);
        if (parent != elements_.end()) {
            parent->second.lostBelow = true;
            parent->second.keeps = parent->second.keeps || keeps;
            parent->second.isLooked = parent->second.isLooked || !keeps;
        }
    }

    void keepRest(Element& element, bool lost, const std::vector<QPDFObjectHandle>& kept)
    {
        QPDFObjectHandle object = element.object;
        if (lost) {
            removal_.changes().edit(object).replaceKey("/K", QPDFObjectHandle::newArray(kept));
            removedAny_ = true;
        }
        // What is left has pages of its own.
        if (removal_.isRemovedPage(object.getKey("/Pg"))) {
            removal_.changes().edit(object).removeKey("/Pg");
        }
        // ISO 32000-2, 14.9.4: a replacement for all of the content, which it is no more.
        for (const char* key : {"/ActualText", "/E"}) {
            if (object.hasKey(key)) {
                removal_.changes().edit(object).removeKey(key);
            }
        }
    }

    /// Whether there is any content below some kids, none of which is gone.
    bool holdsContent(const std::vector<QPDFObjectHandle>& kids)
    {
        std::vector<QPDFObjectHandle> open(kids.rbegin(), kids.rend());
        std::vector<int> passed;
        while (!open.empty()) {
            QPDFObjectHandle kid = open.back();
            open.pop_back();
            if (removal_.isGone(kid)) {
                continue;
            }
            if (kid.isInteger() || isReference(kid)) {
                for (const int number : passed) {
                    empty_.erase(number);
                }
                return true;
            }
            if (!kid.isDictionary()) {
                continue;
            }
            if (kid.isIndirect()) {
                if (!empty_.insert(kid.getObjectID()).second) {
                    continue;
                }
                passed.push_back(kid.getObjectID());
            }
            const std::vector<QPDFObjectHandle> below = kidsOf(kid);
            open.insert(open.end(), below.rbegin(), below.rend());
        }
        return false;
    }

    /// An element that lost its content goes with the elements in it, which have none either.
    void dropWithAllBelow(const QPDFObjectHandle& element)
    {
        removedAny_ = true;
        std::vector<QPDFObjectHandle> open = {element};
        while (!open.empty()) {
            QPDFObjectHandle at = open.back();
            open.pop_back();
            if (removal_.isGone(at)) {
                continue;
            }
            removal_.drop(at);
            for (const QPDFObjectHandle& kid : kidsOf(at)) {
                if (kid.isIndirect() && QPDFObjectHandle(kid).isDictionary()) {
                    open.push_back(kid);
                }
            }
        }
    }

    // --- the root ---

    void pruneIdentifiers()
    {
        QPDFObjectHandle identifiers = root_.getKey("/IDTree");
        if (identifiers.isDictionary() &&
            pruneTree(removal_, identifiers, owner_, "/Names",
                      [this](const QPDFObjectHandle&, const QPDFObjectHandle& element) {
                          return goesIf(removal_.isGone(element));
                      })) {
            removal_.changes().edit(owner_);
            root_.removeKey("/IDTree");
        }
    }

    /// A document in which nothing is tagged any more doesn't say that it is.
    void removeEmptyTree()
    {
        for (const QPDFObjectHandle& kid : kidsOf(root_)) {
            if (!removal_.isGone(kid)) {
                return;
            }
        }
        QPDFObjectHandle catalog = removal_.changes().edit(removal_.catalog());
        catalog.removeKey("/StructTreeRoot");
        catalog.removeKey("/MarkInfo");
        removal_.drop(root_);
    }

    Removal& removal_;
    QPDFObjectHandle root_;
    QPDFObjectHandle owner_; // the object in which the root stands
    PageAnnotations places_;
    ParentTree parents_;
    std::unordered_map<int, Element> elements_;
    std::unordered_map<int, int> pages_;
    std::unordered_set<int> empty_; // elements without content
    std::unordered_map<int, std::unordered_set<int>>
        kids_; // where elements don't name their parent
    bool removedAny_ = false;
};

} // namespace

void removeStructure(Removal& removal)
{
    QPDFObjectHandle root = removal.catalogEntry("/StructTreeRoot");
    if (root.isDictionary()) {
        StructureRemover(removal, root).run();
    }
}

} // namespace karvel::deletion
