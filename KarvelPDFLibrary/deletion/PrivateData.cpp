#include "KarvelPDFLibrary/deletion/PrivateData.h"

#include "KarvelPDFLibrary/objects/References.h"

#include <algorithm>
#include <set>
#include <unordered_set>

namespace karvel::deletion {

namespace {

/// How many objects are gone over to find out what private data are held by. What is not found out
/// by then counts as known.
constexpr std::size_t mostSteps = 2'000'000;

constexpr char pieceInfo[] = "/PieceInfo";

/// ISO 32000-2, tables 15, 29 and 31, and what came before and after them.
bool isOfTrailer(const std::string& key)
{
    static const std::set<std::string> keys = {"/Size", "/Prev",    "/Root", "/Encrypt",
                                               "/Info", "/XRefStm", "/ID",   "/AuthCode"};
    return keys.count(key) > 0;
}

bool isOfCatalog(const std::string& key)
{
    static const std::set<std::string> keys = {
        "/Type",         "/Version",      "/Extensions", "/Pages",     "/PageLabels",
        "/Names",        "/Dests",        "/PageLayout", "/PageMode",  "/ViewerPreferences",
        "/Outlines",     "/Threads",      "/OpenAction", "/AA",        "/URI",
        "/AcroForm",     "/Metadata",     "/MarkInfo",   "/Lang",      "/StructTreeRoot",
        "/SpiderInfo",   "/Perms",        "/Legal",      "/PieceInfo", "/OutputIntents",
        "/OCProperties", "/Requirements", "/Collection", "/DSS",       "/NeedsRendering",
        "/AF",           "/DPartRoot"};
    return keys.count(key) > 0;
}

bool isOfPage(const std::string& key)
{
    static const std::set<std::string> keys = {"/Type",
                                               "/Parent",
                                               "/LastModified",
                                               "/Resources",
                                               "/MediaBox",
                                               "/CropBox",
                                               "/BleedBox",
                                               "/TrimBox",
                                               "/ArtBox",
                                               "/BoxColorInfo",
                                               "/Contents",
                                               "/Rotate",
                                               "/Group",
                                               "/Thumb",
                                               "/B",
                                               "/Dur",
                                               "/Trans",
                                               "/Annots",
                                               "/AA",
                                               "/Metadata",
                                               "/PieceInfo",
                                               "/ID",
                                               "/PZ",
                                               "/StructParents",
                                               "/SeparationInfo",
                                               "/Tabs",
                                               "/UserUnit",
                                               "/PresSteps",
                                               "/VP",
                                               "/TemplateInstantiated",
                                               "/AF",
                                               "/DPart",
                                               "/OutputIntents"};
    return keys.count(key) > 0;
}

} // namespace

PrivateData::PrivateData(Removal& removal) : removal_(removal)
{
    const auto add = [this](const std::string& key, QPDFObjGen id) {
        if (isOfTrailer(key)) {
            public_.insert(id.getObj());
        }
    };
    if (const Roots* roots = removal_.document().roots()) {
        for (const Roots::Entry& entry : roots->trailer()) {
            add(entry.key, entry.reference.value_or(QPDFObjGen()));
        }
        return;
    }
    for (const auto& [key, value] : removal_.file().getTrailer().getDictAsMap()) {
        add(key, value.getObjGen());
    }
}

void PrivateData::take(int object)
{
    open_ = {object};
    while (!open_.empty()) {
        const int next = open_.back();
        open_.pop_back();
        QPDFObjectHandle value = removal_.object(next);
        if (leadsBelow(value)) {
            takeFrom(value);
        }
    }
}

void PrivateData::takeFromTrailer()
{
    if (const Roots* roots = removal_.document().roots()) {
        const auto& entries = roots->trailer();
        const auto isKnown = [](const Roots::Entry& entry) { return isOfTrailer(entry.key); };
        if (std::all_of(entries.begin(), entries.end(), isKnown)) {
            return;
        }
    }
    QPDFObjectHandle trailer = removal_.file().getTrailer();
    for (const auto& [key, value] : trailer.getDictAsMap()) {
        if (!isOfTrailer(key) && (leads(value) || (!value.isIndirect() && leadsBelow(value)))) {
            removal_.changes().editTrailer().removeKey(key);
        }
    }
}

/// Whether an object is one in which private data stand below some keys.
bool PrivateData::hasKeysOfItsOwn(const QPDFObjectHandle& object)
{
    return object.isSameObjectAs(removal_.catalog()) || removal_.isRemainingPage(object) ||
           QPDFObjectHandle(object).isStream();
}

void PrivateData::takeFrom(QPDFObjectHandle object)
{
    const int number = object.getObjectID();
    if (hasKeysOfItsOwn(object) && !(object.isStream() && isPrivate(number))) {
        takeFromKeys(object, object.isStream() ? object.getDict() : object);
        return;
    }
    if (!isPrivate(number)) {
        return;
    }
    if (object.isStream()) {
        removal_.changes().replace(object.getObjGen(), QPDFObjectHandle::newNull());
    } else if (empty(object, object)) {
        // What was in the array stood in the dictionaries that hold it.
        removal_.changes().edit(object).setArrayFromVector({});
        emptied_.insert(number);
        const std::vector<int> holders = removal_.referrerNumbersOf(number);
        open_.insert(open_.end(), holders.begin(), holders.end());
    }
}

void PrivateData::takeFromKeys(const QPDFObjectHandle& owner, QPDFObjectHandle dictionary)
{
    for (const auto& [key, value] : dictionary.getDictAsMap()) {
        if (isPrivateKey(owner.getObjectID(), key)) {
            takeFromValue(owner, dictionary, key, key == pieceInfo);
        }
    }
}

/// Whether private data stand below a key of the catalog, a page or a stream, whose keys are all
/// taken to be known.
bool PrivateData::isPrivateKey(int object, const std::string& key)
{
    const bool isKnown = object == removal_.document().catalogId().getObj()
                             ? isOfCatalog(key)
                             : !removal_.isPage(object) || isOfPage(key);
    return key == pieceInfo || !isKnown;
}

/// `isContainer` says that a dictionary there has a key for each program.
void PrivateData::takeFromValue(const QPDFObjectHandle& owner, QPDFObjectHandle dictionary,
                                const std::string& key, bool isContainer)
{
    QPDFObjectHandle value = dictionary.getKey(key);
    const bool isDirect = !value.isIndirect();
    if (isDirect && isContainer && value.isDictionary()) {
        for (const std::string& program : value.getKeys()) {
            takeFromValue(owner, value, program, false);
        }
    } else if (leads(value) || (isDirect && empty(owner, value))) {
        removal_.changes().edit(owner);
        dictionary.removeKey(key);
    }
}

bool PrivateData::leads(const QPDFObjectHandle& reference) const
{
    return removal_.isRemovedPage(reference) ||
           (reference.isIndirect() && emptied_.has(reference.getObjectID()));
}

/// Whether a value leads to removed pages outside of what it refers to itself.
bool PrivateData::leadsBelow(const QPDFObjectHandle& value) const
{
    bool found = false;
    forEachReference(value, [&](const QPDFObjectHandle& one) { found = found || leads(one); });
    return found;
}

/// Empties the innermost dictionaries in which references to removed pages stand. Returns whether
/// there are such references outside of dictionaries.
bool PrivateData::empty(const QPDFObjectHandle& owner, const QPDFObjectHandle& value)
{
    bool isOutside = false;
    std::vector<QPDFObjectHandle> emptied;
    const auto innermost = [](QPDFObjectHandle part, const QPDFObjectHandle& around,
                              const PartPlace&) {
        return std::optional<QPDFObjectHandle>(part.isDictionary() ? part : around);
    };
    const auto note = [&](const QPDFObjectHandle& reference, QPDFObjectHandle dictionary,
                          const PartPlace&) {
        if (leads(reference)) {
            isOutside = isOutside || dictionary.isNull();
            emptied.push_back(dictionary);
        }
    };
    walkParts(value, QPDFObjectHandle::newNull(), innermost, note);
    for (QPDFObjectHandle& dictionary : emptied) {
        removal_.changes().edit(owner);
        if (dictionary.isDictionary()) {
            for (const auto& [key, item] : dictionary.getDictAsMap()) {
                dictionary.removeKey(key);
            }
        }
    }
    return isOutside;
}

/// Whether an object could be reached through private data alone when the removal began: what the
/// other modules put right since then is referred to in other ways.
bool PrivateData::isPrivate(int object)
{
    std::vector<int> around = {object};
    std::unordered_set<int> seen = {object};
    for (std::size_t i = 0; i < around.size(); ++i) {
        const int at = around[i];
        if (private_.has(at)) {
            continue;
        }
        if (isKnown(at)) {
            public_.insert(object);
            return false;
        }
        for (const int holder : removal_.formerReferrersOf(at)) {
            if (!isHeldPrivately(holder, at) && seen.insert(holder).second) {
                around.push_back(holder);
            }
        }
    }
    for (const int one : around) {
        private_.insert(one);
    }
    return true;
}

/// Whether an object is a part of the document that the standard knows, as far as it shows.
bool PrivateData::isKnown(int object)
{
    if (public_.has(object) || removal_.isTreeNode(object) || removal_.isPage(object) ||
        object == removal_.document().catalogId().getObj() || removal_.isOutlineEntry(object) ||
        removal_.plainElement(object) != nullptr || ++steps_ > mostSteps) {
        return true;
    }
    QPDFObjectHandle value = removal_.formerObject(object);
    const bool isAnnotation =
        value.isDictionary() && value.hasKey("/Subtype") && value.hasKey("/Rect");
    const bool isElement = value.isDictionary() && value.hasKey("/S") && value.hasKey("/P");
    return isAnnotation || isElement;
}

/// Whether the catalog, a page or a stream refers to an object by nothing but private data in it.
bool PrivateData::isHeldPrivately(int holder, int object)
{
    const bool isCatalog = holder == removal_.document().catalogId().getObj();
    const bool isOnPage = removal_.isPage(holder);
    if (!isCatalog && !isOnPage && !removal_.mayHave(holder, index::IsStream)) {
        return false;
    }
    QPDFObjectHandle value = removal_.formerObject(holder);
    if (!isCatalog && !isOnPage && !value.isStream()) {
        return false;
    }
    bool found = false;
    for (const auto& [key, entry] : (value.isStream() ? value.getDict() : value).getDictAsMap()) {
        bool isHere = entry.isIndirect() && entry.getObjectID() == object;
        if (!entry.isIndirect()) {
            forEachReference(entry, [&](const QPDFObjectHandle& one) {
                isHere = isHere || one.getObjectID() == object;
            });
        }
        if (isHere && !isPrivateKey(holder, key)) {
            return false;
        }
        found = found || isHere;
    }
    return found;
}

} // namespace karvel::deletion
