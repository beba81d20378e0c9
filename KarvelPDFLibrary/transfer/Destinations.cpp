#include "KarvelPDFLibrary/transfer/Destinations.h"

#include "KarvelPDFLibrary/objects/NameTree.h"
#include "KarvelPDFLibrary/transfer/Editing.h"
#include "KarvelPDFLibrary/transfer/ObjectCopier.h"

namespace karvel::transfer {

namespace {

NameTreeEntries namedIn(Document& document)
{
    QPDFObjectHandle names = document.catalogEntry("/Names");
    return names.isDictionary() ? readNameTree(names.getKey("/Dests")) : NameTreeEntries();
}

/// The array of an explicit destination, which a named one may have in a dictionary.
QPDFObjectHandle arrayOf(QPDFObjectHandle destination)
{
    return destination.isDictionary() ? destination.getKey("/D") : destination;
}

bool namesPageByNumber(QPDFObjectHandle& destination)
{
    return destination.isArray() && destination.getArrayNItems() > 0 &&
           destination.getArrayItem(0).isInteger();
}

bool isGoTo(QPDFObjectHandle& dictionary)
{
    return dictionary.getKey("/S").isNameAndEquals("/GoTo");
}

} // namespace

Destinations::Destinations(Document& from, Document& to, ObjectCopier& copier, CopyOfPage copyOf)
    : from_(from), to_(to), copier_(copier), copyOf_(std::move(copyOf))
{
    for (auto& [name, value] : namedIn(from)) {
        strings_.emplace(name, Named{value, name});
    }
    QPDFObjectHandle old = from.catalog().getKey("/Dests");
    if (old.isDictionary()) {
        for (const auto& [name, value] : old.getDictAsMap()) {
            names_.emplace(name, Named{value, name.substr(1)});
        }
    }
    if (!strings_.empty() || !names_.empty()) {
        for (const auto& [name, value] : namedIn(to)) {
            taken_.insert(name);
        }
    }
}

Destinations::Named* Destinations::find(QPDFObjectHandle name)
{
    auto& all = name.isName() ? names_ : strings_;
    const auto found = all.find(name.isName()     ? name.getName()
                                : name.isString() ? name.getStringValue()
                                                  : std::string());
    return found == all.end() ? nullptr : &found->second;
}

/// The page that a destination leads to: its reference, or null. Some writers give its number.
QPDFObjectHandle Destinations::pageOf(QPDFObjectHandle destination)
{
    if (destination.isString() || destination.isName()) {
        Named* named = find(destination);
        destination = named != nullptr ? named->value : QPDFObjectHandle::newNull();
    }
    QPDFObjectHandle array = arrayOf(destination);
    if (!array.isArray() || array.getArrayNItems() == 0) {
        return QPDFObjectHandle::newNull();
    }
    QPDFObjectHandle page = array.getArrayItem(0);
    if (page.isInteger() && page.getIntValue() >= 0 && page.getIntValue() < from_.pageCount()) {
        return from_.page(static_cast<int>(page.getIntValue()) + 1);
    }
    return page.isIndirect() && page.isDictionary() ? page : QPDFObjectHandle::newNull();
}

QPDFObjectHandle Destinations::copyOfTarget(QPDFObjectHandle page)
{
    return page.isNull() ? QPDFObjectHandle() : copyOf_(page.getObjectID());
}

Destinations::Leads Destinations::leads(QPDFObjectHandle destination)
{
    QPDFObjectHandle page = pageOf(destination);
    if (page.isNull()) {
        return Leads::Nowhere;
    }
    return copyOfTarget(page).isInitialized() ? Leads::ToPageThatComes : Leads::ToPageLeftBehind;
}

QPDFObjectHandle Destinations::nameFor(Named& named)
{
    if (!named.isUsed) {
        named.isUsed = true;
        named.newName = named.name;
        for (int number = 2; !taken_.insert(named.newName).second; ++number) {
            named.newName = named.name + "-" + std::to_string(number);
        }
    }
    return QPDFObjectHandle::newString(named.newName);
}

/// What stands in the target for a destination of the source.
QPDFObjectHandle Destinations::translated(QPDFObjectHandle destination)
{
    if (destination.isString() || destination.isName()) {
        Named* named = find(destination);
        const bool comes = named != nullptr && leads(named->value) == Leads::ToPageThatComes;
        return comes ? nameFor(*named) : QPDFObjectHandle::newNull();
    }
    if (!namesPageByNumber(destination)) {
        return copier_.copy(destination);
    }
    std::vector<QPDFObjectHandle> items = destination.getArrayAsVector();
    const QPDFObjectHandle page = copyOfTarget(pageOf(destination));
    items.front() = page.isInitialized() ? page : QPDFObjectHandle::newNull();
    for (std::size_t i = 1; i < items.size(); ++i) {
        items[i] = copier_.copy(items[i]);
    }
    return QPDFObjectHandle::newArray(items);
}

bool Destinations::leadsToPageLeftBehind(QPDFObjectHandle linkOrAction)
{
    QPDFObjectHandle action = linkOrAction.isDictionary() && isGoTo(linkOrAction)
                                  ? linkOrAction
                                  : linkOrAction.getKey("/A");
    QPDFObjectHandle destination = action.isDictionary() && isGoTo(action)
                                       ? action.getKey("/D")
                                       : linkOrAction.getKey("/Dest");
    return leads(destination) == Leads::ToPageLeftBehind;
}

void Destinations::translate(QPDFObjectHandle source, QPDFObjectHandle copy)
{
    const char* key = isGoTo(source) ? "/D" : "/Dest";
    QPDFObjectHandle destination = source.getKey(key);
    if (destination.isString() || destination.isName() || namesPageByNumber(destination)) {
        copy.replaceKey(key, translated(destination));
    }
    // Where actions stand (ISO 32000-2, 12.6.2 and 12.6.3).
    static constexpr const char* holders[] = {"/A",  "/Next", "/E",  "/X",  "/D",  "/U", "/Fo",
                                              "/Bl", "/PO",   "/PC", "/PV", "/PI", "/O", "/C"};
    for (const char* holder : holders) {
        QPDFObjectHandle action = source.getKey(holder);
        if (action.isDictionary() && isGoTo(action) && leadsToPageLeftBehind(action)) {
            copy.removeKey(holder);
        }
    }
}

void Destinations::copyNamed(bool all)
{
    for (auto* entries : {&strings_, &names_}) {
        for (auto& [key, named] : *entries) {
            if (all && leads(named.value) == Leads::ToPageThatComes) {
                nameFor(named);
            }
            if (named.isUsed) {
                named.copy = translated(arrayOf(named.value));
            }
        }
    }
}

void Destinations::join()
{
    std::map<std::string, QPDFObjectHandle> added;
    for (auto* entries : {&strings_, &names_}) {
        for (auto& [key, named] : *entries) {
            if (named.isUsed) {
                added.emplace(named.newName, named.copy);
            }
        }
    }
    if (added.empty()) {
        return;
    }
    for (auto& [name, value] : namedIn(to_)) {
        added.emplace(name, value);
    }
    const NameTreeEntries sorted(added.begin(), added.end());
    const QPDFObjectHandle root = writeNameTree(to_.changes(), sorted);
    editCatalogDictionary(to_, "/Names").replaceKey("/Dests", root);
}

} // namespace karvel::transfer
