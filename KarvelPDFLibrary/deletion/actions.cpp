#include "KarvelPDFLibrary/deletion/ActionChain.h"
#include "KarvelPDFLibrary/deletion/modules.h"
#include "KarvelPDFLibrary/objects/References.h"

namespace karvel::deletion {

namespace {

bool isLink(QPDFObjectHandle dictionary)
{
    QPDFObjectHandle subtype = dictionary.getKey("/Subtype");
    return subtype.isName() && subtype.getName() == "/Link";
}

/// Puts the actions of one dictionary right: a link, a field, an outline entry, or a step of a
/// page's presentation (ISO 32000-2, 12.4.4.2); true when it is a link that is left without any.
bool pruneHolder(Removal& removal, const QPDFObjectHandle& owner, QPDFObjectHandle dictionary)
{
    bool changed = false;
    for (const char* key : {"/Dest", "/A", "/PA", "/NA"}) {
        changed = pruneActions(removal, owner, dictionary, key) || changed;
    }
    changed = pruneAdditionalActions(removal, owner, dictionary) || changed;
    return changed && isLink(dictionary) && !dictionary.hasKey("/A") &&
           !dictionary.hasKey("/Dest") && !dictionary.hasKey("/AA");
}

/// Links that stand in a page's /Annots without a number of their own.
void pruneDirectAnnotations(Removal& removal, QPDFObjectHandle page)
{
    QPDFObjectHandle annotations = page.getKey("/Annots");
    if (!annotations.isArray()) {
        return;
    }
    const QPDFObjectHandle owner = annotations.isIndirect() ? annotations : page;
    for (int i = annotations.getArrayNItems(); i-- > 0;) {
        QPDFObjectHandle annotation = annotations.getArrayItem(i);
        if (!annotation.isIndirect() && annotation.isDictionary() &&
            pruneHolder(removal, owner, annotation)) {
            removal.changes().edit(owner);
            annotations.eraseItem(i);
        }
    }
}

void pruneObject(Removal& removal, QPDFObjectHandle object)
{
    if (object.isArray()) {
        // An array of annotations may be an object of its own.
        for (int i = object.getArrayNItems(); i-- > 0;) {
            QPDFObjectHandle item = object.getArrayItem(i);
            if (!item.isIndirect() && item.isDictionary() && pruneHolder(removal, object, item)) {
                removal.changes().edit(object);
                object.eraseItem(i);
            }
        }
        return;
    }
    if (!object.isDictionary() || object.hasKey("/S")) {
        return; // actions are put right from where they are held
    }
    if (pruneHolder(removal, object, object)) {
        removal.drop(object);
    } else if (object.isDictionaryOfType("/Page")) {
        pruneDirectAnnotations(removal, object);
        QPDFObjectHandle step = object.getKey("/PresSteps");
        if (step.isDictionary() && !step.isIndirect()) {
            pruneHolder(removal, object, step);
        }
    }
}

/// Whether what refers to an object may hold an action or destination through it.
bool carries(QPDFObjectHandle object)
{
    if (object.isArray()) {
        return true; // a destination, or a list of actions
    }
    if (!object.isDictionary()) {
        return false;
    }
    const bool action = object.hasKey("/S") && (object.hasKey("/D") || object.hasKey("/Next"));
    const bool destination = object.hasKey("/D") && !object.hasKey("/Subtype");
    const bool triggers = !object.hasKey("/Type") && !object.hasKey("/Title") &&
                          !object.hasKey("/Subtype") && !object.hasKey("/Kids");
    return action || destination || triggers;
}

/// What the index shows to be a structure element without attributes, or a bead.
bool isOfStructure(Removal& removal, int object)
{
    return !removal.mayBeArray(object) && removal.mayHave(object, index::HasPlace) &&
           !removal.mayHave(object, index::HasDestination | index::HasSubtype);
}

bool isNumberedDestination(QPDFObjectHandle value)
{
    if (!value.isArray() || value.getArrayNItems() < 2 || !value.getArrayItem(0).isInteger() ||
        !value.getArrayItem(1).isName()) {
        return false;
    }
    const std::string fit = value.getArrayItem(1).getName();
    return fit == "/XYZ" || fit.substr(0, 4) == "/Fit";
}

bool leadsToOtherFile(QPDFObjectHandle part)
{
    QPDFObjectHandle kind = part.isDictionary() ? part.getKey("/S") : part;
    return kind.isName() && (kind.getName() == "/GoToR" || kind.getName() == "/GoToE");
}

/// Destinations that name their page by its number get the page's present number.
void renumber(Removal& removal, const QPDFObjectHandle& owner)
{
    const auto enter = [&](QPDFObjectHandle part, bool isOfOtherFile, const PartPlace& place) {
        if (isOfOtherFile && *place.key == "/D") {
            return std::optional<bool>();
        }
        if (isNumberedDestination(part)) {
            const int original = part.getArrayItem(0).getIntValueAsInt() + 1;
            const int present = removal.presentNumberOf(original);
            if (present > 0 && present != original) {
                removal.changes().edit(owner);
                part.setArrayItem(0, QPDFObjectHandle::newInteger(present - 1));
            }
        }
        return std::optional<bool>(leadsToOtherFile(part));
    };
    walkParts(owner, false, enter, [](auto&&...) {});
}

} // namespace

void removeActions(Removal& removal)
{
    const Roots* roots = removal.document().roots();
    if (roots == nullptr || roots->catalogHas("OpenAction") || roots->catalogHas("AA")) {
        QPDFObjectHandle catalog = removal.catalog();
        pruneActions(removal, catalog, catalog, "/OpenAction");
        pruneAdditionalActions(removal, catalog, catalog);
    }

    // Outline entries have a file of their own.
    std::vector<QPDFObjectHandle> holders;
    const auto collect = [&](int number) {
        if (removal.judgePlainLink(number) || removal.isOutlineEntry(number) ||
            isOfStructure(removal, number)) {
            return false;
        }
        QPDFObjectHandle object = removal.object(number);
        if (!(object.isDictionary() && object.hasKey("/Title"))) {
            holders.push_back(object);
        }
        return carries(object);
    };
    removal.climbFromPages(collect);
    removal.climbFrom(removal.threadActions, collect);
    removal.climbFrom(removal.objectsThatNameGoneDestinations(), collect);
    removal.climbFrom(removal.objectsWithNumberedDestinations(), collect);
    for (const QPDFObjectHandle& holder : holders) {
        QPDFObjectHandle object = holder;
        if (!removal.isGone(object) && !(object.isDictionary() && object.hasKey("/Title"))) {
            pruneObject(removal, object);
        }
    }
}

void renumberDestinations(Removal& removal)
{
    for (const int object : removal.objectsWithNumberedDestinations()) {
        renumber(removal, removal.object(object));
    }
}

} // namespace karvel::deletion
