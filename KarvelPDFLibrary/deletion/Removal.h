#pragma once

#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "KarvelPDFLibrary/deletion/NumberSet.h"
#include "KarvelPDFLibrary/deletion/Referrers.h"
#include "KarvelPDFLibrary/document/Document.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace karvel::deletion {

/// One removal of pages, as the modules that put references right see it: what goes, and who refers
/// to it. Objects are found through the document's index; only those that matter are built.
class Removal {
public:
    explicit Removal(Document& document);

    Document& document() { return document_; }
    QPDF& file() { return document_.file(); }
    Changes& changes() { return document_.changes(); }
    QPDFObjectHandle catalog() { return document_.catalog(); }
    QPDFObjectHandle catalogEntry(const char* key) { return document_.catalogEntry(key); }

    /// The dictionaries of removed pages that may have the thing that `flag` (index::Flag) stands
    /// for. Without an index all of them.
    std::vector<QPDFObjectHandle> removedPagesWith(int flag);

    /// All objects that may have it, with removed pages and what was dropped.
    std::vector<QPDFObjectHandle> formerObjectsWith(int flag);

    /// What the objects are now.
    ObjectView& objects()
    {
        referrers(); // from which it knows their generations
        return objects_;
    }
    QPDFObjectHandle object(int number) { return objects().object(number); }

    /// An object as it was before it was taken out, or as it is.
    QPDFObjectHandle formerObject(int number) { return changes().present(idOf(number)); }

    /// An object's number with the generation under which it is in use.
    QPDFObjGen idOf(int number) { return objects().idOf(number); }

    /// The numbers of a page's annotations, 0 for those that are not in the file, when they are
    /// known without building the page.
    std::optional<ObjectView::Numbers> indexedAnnotationsOf(int page) const;

    bool isRemovedPage(const QPDFObjectHandle& object) const
    {
        return object.isIndirect() && pages_.has(object.getObjectID());
    }

    bool isRemovedPage(int object) const { return pages_.has(object); }

    bool isRemainingPage(const QPDFObjectHandle& object)
    {
        return object.isIndirect() && isRemainingPage(object.getObjectID());
    }
    bool isRemainingPage(int object);

    bool isPage(int object) { return isRemovedPage(object) || isRemainingPage(object); }

    /// Whether an object may have the thing that `flag` (index::Flag) stands for; true when that
    /// is not known without building it.
    bool mayHave(const QPDFObjectHandle& object, int flag) const
    {
        return !object.isIndirect() || may(object.getObjectID(), flag);
    }
    bool mayHave(int object, int flag) const { return may(object, flag); }

    /// Whether an object may be an array, as far as is known without building it.
    bool mayBeArray(int object) const;
    bool mayBeArray(const QPDFObjectHandle& object) const
    {
        return mayBeArray(object.getObjectID());
    }

    /// An object goes with the pages: it is gone for the modules from now on, and when all are done
    /// it is taken out of every array and dictionary that still refers to it. What refers to it in
    /// another way (pairs in trees, rings) its module puts right. Direct objects are not recorded:
    /// whoever holds them takes them out.
    void drop(const QPDFObjectHandle& object);

    /// The same for an object with a number in the file.
    void drop(int object);

    /// Drops an object that is a plain link (index::ReferenceIndex::PlainLink) and leads to a
    /// removed page. Returns whether it is a plain link, about which then nothing is left to be
    /// done.
    bool judgePlainLink(int object);

    /// What the index knows of a plain structure element; null when the object is something else.
    const index::PlainElement* plainElement(int object) const;

    /// Whether an object is a removed page or was dropped.
    bool isGone(const QPDFObjectHandle& object) const
    {
        return object.isIndirect() && isGone(object.getObjectID());
    }
    bool isGone(int object) const { return pages_.has(object) || dropped_.has(object); }

    /// What the index knows of an object; null when that is nothing, or of a former value.
    const index::IndexedObject* unchanged(int object) const { return objects_.unchanged(object); }

    /// The numbers of the objects that an object refers to, 0 for those that are not in the file,
    /// when they are known without building it.
    std::optional<ObjectView::Numbers> indexedReferencesOf(int object) const
    {
        return objects_.indexedReferences(object);
    }

    /// Whether the index shows an object to be a node of the page tree.
    bool isTreeNode(int object) const;

    /// Whether it shows an object to be an entry of the outline.
    bool isOutlineEntry(int object) const;

    /// Whether an object may refer to something that is gone, as far as is known without building
    /// it.
    bool mayReferToGone(const QPDFObjectHandle& object) const;

    /// Whether nothing but what is gone refers to an object.
    bool isHeldByGoneOnly(int object);

    /// What was dropped so far, in that order.
    const std::vector<QPDFObjGen>& dropped() const { return droppedIds_; }

    /// The objects, not gone themselves, that refer to an object, as things were when the removal
    /// began; each once.
    std::vector<QPDFObjectHandle> referrersOf(int object);

    /// The same as numbers.
    std::vector<int> referrerNumbersOf(int object);

    /// The numbers of all objects that referred to an object when the removal began, gone or not.
    std::vector<int> formerReferrersOf(int object);

    /// How often the objects referred to an object when the removal began.
    std::size_t formerReferrerCount(int object);

    /// The numbers of the objects, not gone themselves, that refer to removed pages, each once.
    /// Page tree nodes and plain links are left out.
    std::vector<int> pageReferrers();

    /// Goes upwards from the removed pages: calls `visit` with every object, not gone itself, that
    /// refers to one, and where that says yes, with the objects that refer to that one, and so on,
    /// each once. Page tree nodes are left out.
    void climbFromPages(const std::function<bool(int)>& visit);

    /// The same from other objects, which are visited too.
    void climbFrom(const std::vector<int>& objects, const std::function<bool(int)>& visit);

    /// Named destinations that are gone: names of the old dictionary with their slash, names of the
    /// tree without.
    std::unordered_set<std::string> goneNames;

    /// Objects that may be thread actions, or hold such, that lead to threads or beads that are
    /// gone.
    std::vector<int> threadActions;

    /// The present number of the page that had a number, from 1, before the removal; 0 when it
    /// went, and the number itself when there never was such a page.
    int presentNumberOf(int original);

    /// All objects, not gone, in which a page is the target of a destination by its number.
    std::vector<int> objectsWithNumberedDestinations();

    /// All objects, not gone, that name a destination that is gone.
    std::vector<int> objectsThatNameGoneDestinations();

    /// Whether a destination (ISO 32000-2, 12.3.2: an array, a name, a string, or a dictionary with
    /// /D) leads to a removed page.
    bool leadsToRemovedPage(const QPDFObjectHandle& destination);

    /// Whether the index shows that a node of a tree of destinations has no children, and all its
    /// destinations lead to pages that remain.
    bool leadsToRemainingPages(int node) const;

    /// The same for a destination's text, or none, in a file that is not encrypted; nothing when
    /// it doesn't tell.
    std::optional<bool> textLeadsToRemovedPage(std::string_view destination);

    /// The object that a reference at the beginning of a text leads to; 0 when there is none.
    int targetOfText(std::string_view reference) const;

    /// Notes things of the document that may repeat what removed pages said, once.
    void note(const std::string& things);

    void warn(const std::string& text) { document_.warnings().push_back(deletingPages + text); }

    /// Takes the dropped objects out of the document.
    void takeOutDropped();

    /// Puts null where anything still refers to a removed page: private data and whatever else no
    /// module knows. To be called last, when the page tree is right.
    void cutLeftovers();

private:
    bool may(int object, int flag) const;
    std::vector<int> objectsWith(int flag);
    bool refersToAny(int object, const NumberSet& gone);

    /// What a destination names: an object, a page by its number, from 1, or another destination.
    struct Target {
        int object = 0;
        std::optional<int> pageNumber;
        std::optional<std::string> name;
    };
    bool isGone(const Target& target);
    Target targetOf(QPDFObjectHandle destination);
    std::optional<Target> indexedTargetOf(const QPDFObjectHandle& destination) const;
    Referrers& referrers();
    void climb(std::vector<int> open, std::unordered_set<int> seen,
               const std::function<bool(int)>& visit);
    const index::ReferenceIndex::PlainLink* plainLink(int object) const;
    void unlist(const QPDFObjectHandle& holder);
    void keepWhatPagesNeed();
    void cutReferencesToPages(const QPDFObjectHandle& holder);

    Document& document_;
    ObjectView objects_;
    NumberSet pages_;
    std::vector<int> removedNumbers_;
    std::optional<NumberSet> remainingPages_; // filled when first asked for
    NumberSet dropped_;
    std::vector<QPDFObjGen> droppedIds_;
    std::optional<Referrers> referrers_;
    std::vector<int> presentNumbers_; // by original number
};

/// Walks a tree of dictionaries from `root` over the references and dictionaries in each node's
/// array `kidsKey`, every node once and without recursion, however deep or looped it is.
void forEachNode(const QPDFObjectHandle& root, const char* kidsKey,
                 const std::function<void(QPDFObjectHandle)>& visit);

} // namespace karvel::deletion
