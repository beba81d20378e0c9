#include "KarvelPDFLibrary/deletion/Trees.h"
#include "KarvelPDFLibrary/deletion/Usage.h"
#include "KarvelPDFLibrary/deletion/modules.h"

namespace karvel::deletion {

namespace {

class CollectionPruner {
public:
    CollectionPruner(Removal& removal, const Usage& usage) : removal_(removal), usage_(usage) {}

    void run()
    {
        QPDFObjectHandle names = removal_.catalogEntry("/Names");
        if (names.isDictionary()) {
            const QPDFObjectHandle owner = names.isIndirect() ? names : removal_.catalog();
            for (const char* key : {"/Pages", "/Templates"}) {
                pruneNames(names, owner, key, [this](auto, const QPDFObjectHandle& page) {
                    return goesIf(removal_.isRemovedPage(page));
                });
            }
            for (const char* key : {"/IDS", "/URLS"}) {
                pruneNames(names, owner, key, [this](auto, const QPDFObjectHandle& value) {
                    return capturedFate(value);
                });
            }
            for (const char* key : Usage::named) {
                pruneNames(names, owner, key, [this](auto, const QPDFObjectHandle& value) {
                    return goesIf(usage_.endedNamed(value));
                });
            }
            removePresentations(names, owner);
        }
        for (const int number : removal_.pageReferrers()) {
            QPDFObjectHandle object = removal_.object(number);
            if (!isOtherwiseKnown(object) && object.isDictionary()) {
                pruneSeparation(object);
            }
        }
    }

private:
    /// Whether the index shows an object to be neither a page nor separation information.
    bool isOtherwiseKnown(const QPDFObjectHandle& object)
    {
        const int number = object.getObjectID();
        return removal_.indexedReferencesOf(number) && !removal_.isRemainingPage(object) &&
               (removal_.mayHave(number, index::HasPlace) ||
                removal_.mayHave(number, index::HasDestination));
    }

    void pruneNames(QPDFObjectHandle names, const QPDFObjectHandle& owner, const char* key,
                    const EntryJudge& judge)
    {
        QPDFObjectHandle tree = names.getKey(key);
        if (!tree.isDictionary()) {
            return;
        }
        bool any = false;
        const bool empty = pruneTree(removal_, tree, owner, "/Names",
                                     [&](QPDFObjectHandle name, QPDFObjectHandle value) {
                                         const EntryFate fate = judge(name, value);
                                         any = any || fate == EntryFate::Goes;
                                         return fate;
                                     });
        if (any && empty) {
            removal_.changes().edit(owner);
            names.removeKey(key);
        }
    }

    /// Web capture (ISO 32000-2, 14.10): content sets lose their removed pages, and images that
    /// only those showed; a set goes with the last of what it has.
    EntryFate capturedFate(QPDFObjectHandle value)
    {
        if (!value.isArray()) {
            return setFate(value);
        }
        std::vector<QPDFObjectHandle> kept;
        bool changed = false;
        for (const QPDFObjectHandle& set : value.getArrayAsVector()) {
            const EntryFate fate = setFate(set);
            changed = changed || fate != EntryFate::Stays;
            if (fate != EntryFate::Goes) {
                kept.push_back(set);
            }
        }
        if (!changed) {
            return EntryFate::Stays;
        }
        if (kept.empty()) {
            return EntryFate::Goes;
        }
        value.setArrayFromVector(kept);
        return recorded(value);
    }

    EntryFate setFate(QPDFObjectHandle set)
    {
        if (removal_.isGone(set)) {
            return EntryFate::Goes;
        }
        QPDFObjectHandle objects =
            set.isDictionary() ? set.getKey("/O") : QPDFObjectHandle::newNull();
        if (!objects.isArray()) {
            return goesIf(removal_.isGone(objects) || usage_.ended(objects));
        }
        std::vector<QPDFObjectHandle> kept;
        for (const QPDFObjectHandle& object : objects.getArrayAsVector()) {
            if (!removal_.isGone(object) && !usage_.ended(object)) {
                kept.push_back(object);
            }
        }
        if (static_cast<int>(kept.size()) == objects.getArrayNItems()) {
            return EntryFate::Stays;
        }
        if (kept.empty()) {
            removal_.drop(set);
            return EntryFate::Goes;
        }
        set.replaceKey("/O", QPDFObjectHandle::newArray(kept));
        return recorded(set);
    }

    EntryFate recorded(const QPDFObjectHandle& value)
    {
        if (!value.isIndirect()) {
            return EntryFate::Changes;
        }
        removal_.changes().edit(value);
        return EntryFate::Stays;
    }

    /// Alternate presentations (ISO 32000-1, 13.5) show the document as it was.
    void removePresentations(QPDFObjectHandle names, const QPDFObjectHandle& owner)
    {
        if (names.hasKey("/AlternatePresentations")) {
            removal_.changes().edit(owner);
            names.removeKey("/AlternatePresentations");
            removal_.warn("alternate presentations of the document, which may show removed pages, "
                          "were removed");
        }
    }

    /// The pages that are separations of the same page (ISO 32000-2, 14.11.4).
    void pruneSeparation(QPDFObjectHandle object)
    {
        QPDFObjectHandle separation = object.getKey("/SeparationInfo");
        QPDFObjectHandle dictionary = separation.isDictionary() ? separation : object;
        if (!dictionary.hasKey("/DeviceColorant")) {
            return;
        }
        QPDFObjectHandle pages = dictionary.getKey("/Pages");
        if (!pages.isArray()) {
            return;
        }
        std::vector<QPDFObjectHandle> kept;
        for (const QPDFObjectHandle& page : pages.getArrayAsVector()) {
            if (!removal_.isRemovedPage(page)) {
                kept.push_back(page);
            }
        }
        if (static_cast<int>(kept.size()) != pages.getArrayNItems()) {
            removal_.changes().edit(dictionary.isIndirect() ? dictionary : object);
            dictionary.replaceKey("/Pages", QPDFObjectHandle::newArray(kept));
        }
    }

    Removal& removal_;
    const Usage& usage_;
};

} // namespace

void removeCollectedThings(Removal& removal, const Usage& usage)
{
    CollectionPruner(removal, usage).run();
}

} // namespace karvel::deletion
