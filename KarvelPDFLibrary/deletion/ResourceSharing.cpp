#include "KarvelPDFLibrary/deletion/ResourceSharing.h"

#include "KarvelPDFLibrary/deletion/PageAnnotations.h"

#include <algorithm>
#include <set>

namespace karvel::deletion {

namespace {

/// How many pages before and behind a removed one, and from all over the document, are asked what
/// they use.
constexpr int neighbours = 4;
constexpr int sampledPages = 8;

/// The fonts that every reader has (ISO 32000-1, 9.6.2.2).
bool isStandardFont(const std::string& name)
{
    static const std::set<std::string> names = {
        "/Helvetica",   "/Helvetica-Bold",        "/Helvetica-Oblique",
        "/Courier",     "/Helvetica-BoldOblique", "/Courier-Bold",
        "/Times-Roman", "/Courier-Oblique",       "/Courier-BoldOblique",
        "/Times-Bold",  "/Times-Italic",          "/Times-BoldItalic",
        "/Symbol",      "/ZapfDingbats"};
    return names.count(name) > 0;
}

/// Whether a font is a standard one without anything of its own.
bool isBareFont(QPDFObjectHandle font)
{
    QPDFObjectHandle name = font.getKey("/BaseFont");
    QPDFObjectHandle encoding = font.getKey("/Encoding");
    return name.isName() && isStandardFont(name.getName()) &&
           (encoding.isNull() || encoding.isName()) && !font.hasKey("/FontDescriptor") &&
           !font.hasKey("/ToUnicode") && !font.hasKey("/DescendantFonts");
}

/// Whether a graphics state has more than numbers and names.
bool isMoreThanSettings(QPDFObjectHandle state)
{
    for (const auto& [key, value] : state.getDictAsMap()) {
        QPDFObjectHandle entry = value;
        const bool plain = entry.isName() || entry.isNumber() || entry.isBool() || entry.isNull() ||
                           key == "/D"; // the dash pattern
        if (!plain) {
            return true;
        }
    }
    return false;
}

bool isTreeNode(QPDFObjectHandle object)
{
    return object.isDictionaryOfType("/Pages") ||
           (object.isDictionary() && object.hasKey("/Kids") && object.hasKey("/Count"));
}

QPDFObjectHandle dictionaryOf(QPDFObjectHandle object)
{
    return object.isStream() ? object.getDict() : object;
}

QPDFObjectHandle valuesOf(QPDFObjectHandle dictionary)
{
    QPDFObjectHandle values = QPDFObjectHandle::newArray();
    for (const auto& [key, value] : dictionary.getDictAsMap()) {
        values.appendItem(value);
    }
    return values;
}

} // namespace

bool ResourceSharing::holdsContent(const std::string& category, QPDFObjectHandle entry)
{
    if (category == "/Font") {
        return entry.isDictionary() && !isBareFont(entry);
    }
    if (category == "/ExtGState") {
        return entry.isDictionary() && isMoreThanSettings(entry);
    }
    return category != "/ColorSpace" || !entry.isName();
}

bool ResourceSharing::isDrawn(const std::string& category, QPDFObjectHandle entry)
{
    if (category == "/Font") {
        QPDFObjectHandle subtype =
            entry.isDictionary() ? entry.getKey("/Subtype") : QPDFObjectHandle::newNull();
        return subtype.isName() && subtype.getName() == "/Type3";
    }
    if (category == "/ExtGState") {
        return entry.isDictionary() && entry.getKey("/SMask").isDictionary();
    }
    return category != "/ColorSpace";
}

bool ResourceSharing::mayShare(int object)
{
    if (!removal_.mayHave(object, index::HasResources)) {
        return removal_.isRemovedPage(object); // which inherits them
    }
    const auto references = removal_.indexedReferencesOf(object);
    if (!references) {
        // What goes and was changed before was so to be taken out of some order: it draws nothing.
        return removal_.isRemovedPage(object) || removal_.document().index() == nullptr;
    }
    if (removal_.mayHave(object, index::HasOwnResources)) {
        return false;
    }
    // Its resources are among the objects that it refers to.
    return std::any_of(references->begin(), references->end(), [this](std::uint32_t reference) {
        const auto target = static_cast<int>(reference);
        const bool dictionary = target != 0 && removal_.mayHave(target, index::IsDictionary) &&
                                !removal_.isTreeNode(target);
        return dictionary &&
               (mayBeShared(target) || removal_.mayHave(target, index::HasLinkedCategory));
    });
}

ResourceUser ResourceSharing::userOf(const PageEntry& page)
{
    ResourceUser user;
    user.object = removal_.file().getObject(page.id());
    user.content = user.object.getKey("/Contents");
    user.resources = user.object.getKey("/Resources");
    if (user.resources.isNull()) {
        user.resources = removal_.document().inheritedAttribute(page, "/Resources");
    }
    return user;
}

std::optional<ResourceUser> ResourceSharing::userIn(QPDFObjectHandle object)
{
    QPDFObjectHandle dictionary = dictionaryOf(object);
    if (!dictionary.isDictionary() || !dictionary.getKey("/Resources").isDictionary()) {
        return std::nullopt;
    }
    ResourceUser user = {object, object, dictionary.getKey("/Resources")};
    if (object.isStream()) {
        return user;
    }
    if (object.getKey("/CharProcs").isDictionary()) {
        user.content = valuesOf(object.getKey("/CharProcs"));
        return user;
    }
    user.content = object.getKey("/Contents");
    return removal_.isPage(object.getObjectID()) ? std::optional(user) : std::nullopt;
}

std::vector<ResourceCategory> ResourceSharing::sharedBy(const ResourceUser& user,
                                                        const PageEntry* page)
{
    QPDFObjectHandle resources = user.resources;
    const bool inherited =
        page != nullptr && QPDFObjectHandle(user.object).getKey("/Resources").isNull();
    std::vector<ResourceCategory> shared;
    if (!resources.isDictionary()) {
        return shared;
    }
    for (const char* name : index::resourceCategories) {
        ResourceCategory category;
        category.name = name;
        category.dictionary = resources.getKey(name);
        if (!category.dictionary.isDictionary()) {
            continue;
        }
        if (category.dictionary.isIndirect()) {
            category.owner = category.dictionary;
        } else if (resources.isIndirect()) {
            category.owner = resources;
        } else if (inherited) {
            category.owner = removal_.document().inheritedFrom(*page, "/Resources");
        } else {
            continue; // it goes with its only user
        }
        category.place = category.owner.isIndirect() ? category.owner.getObjectID()
                                                     : placeOfInherited(*page, resources);
        if ((category.place < 0 || mayBeShared(category.place)) && matters(category)) {
            shared.push_back(category);
        }
    }
    return shared;
}

bool ResourceSharing::matters(const ResourceCategory& category)
{
    const auto [entry, isNew] = matters_.try_emplace({category.place, category.name}, false);
    if (isNew) {
        for (const auto& [name, value] : QPDFObjectHandle(category.dictionary).getDictAsMap()) {
            entry->second = entry->second || holdsContent(category.name, value);
        }
    }
    return entry->second;
}

/// The number of the object in which inherited resources stand, or one below 0.
int ResourceSharing::placeOfInherited(const PageEntry& page, const QPDFObjectHandle& resources)
{
    const auto [entry, isNew] = inheritedPlaces_.try_emplace(page.inherited, 0);
    if (!isNew) {
        return entry->second;
    }
    if (resources.isIndirect()) {
        return entry->second = resources.getObjectID();
    }
    const QPDFObjectHandle node = removal_.document().inheritedFrom(page, "/Resources");
    if (node.isIndirect()) {
        return entry->second = node.getObjectID();
    }
    const auto known =
        std::find_if(unowned_.begin(), unowned_.end(), [&](const QPDFObjectHandle& other) {
            return other.isSameObjectAs(resources);
        });
    entry->second = -1 - static_cast<int>(known - unowned_.begin());
    if (known == unowned_.end()) {
        unowned_.push_back(resources);
    }
    return entry->second;
}

const std::vector<int>& ResourceSharing::inheritingFrom(int place)
{
    Document& document = removal_.document();
    if (!knowsInheriting_) {
        knowsInheriting_ = true;
        for (int number = 1; number <= document.pageCount(); ++number) {
            const PageEntry& page = document.order().at(number);
            const bool known = removal_.indexedReferencesOf(page.object).has_value();
            const bool own = known ? removal_.mayHave(page.object, index::HasResources)
                                   : !document.page(number).getKey("/Resources").isNull();
            const QPDFObjectHandle resources = document.inheritedAttribute(page, "/Resources");
            if (!own && QPDFObjectHandle(resources).isDictionary()) {
                inheriting_[placeOfInherited(page, resources)].push_back(number);
            }
        }
    }
    return inheriting_[place];
}

std::vector<ResourceUser> ResourceSharing::someUsersOf(const ResourceCategory& category, int near)
{
    Document& document = removal_.document();
    std::set<int> numbers;
    for (int step = 1; step <= neighbours; ++step) {
        numbers.insert(removal_.presentNumberOf(near + step));
        numbers.insert(removal_.presentNumberOf(std::max(near - step, 1)));
    }
    for (int part = 0; part < sampledPages; ++part) {
        numbers.insert(1 +
                       static_cast<int>((document.pageCount() - 1LL) * part / (sampledPages - 1)));
    }
    std::vector<ResourceUser> users;
    for (const int number : numbers) {
        if (number < 1 || number > document.pageCount()) {
            continue;
        }
        QPDFObjectHandle resources = document.pageAttribute(number, "/Resources");
        if (resources.isDictionary() &&
            resources.getKey(category.name).isSameObjectAs(category.dictionary)) {
            QPDFObjectHandle user = document.page(number);
            users.push_back({user, user.getKey("/Contents"), resources});
        }
    }
    return users;
}

/// Goes upwards from a category to all who use it.
class ResourceSharing::Climb {
public:
    Climb(ResourceSharing& sharing, const ResourceCategory& category)
        : sharing_(sharing), removal_(sharing.removal_), category_(category)
    {
    }

    std::optional<std::vector<ResourceUser>> run()
    {
        addInheriting(category_.place);
        if (standsInUser()) {
            if (!add(category_.owner, category_.owner)) {
                return std::nullopt;
            }
        } else if (category_.owner.isIndirect() && !isTreeNode(category_.owner)) {
            open_.push_back(category_.owner);
        }
        while (!open_.empty()) {
            const QPDFObjectHandle at = open_.back();
            open_.pop_back();
            if (!holders_.insert(at.getObjectID()).second) {
                continue;
            }
            for (const QPDFObjectHandle& referrer : removal_.referrersOf(at.getObjectID())) {
                if (!sharing_.dependents_.has(referrer.getObjectID()) && !add(referrer, at)) {
                    return std::nullopt;
                }
            }
        }
        for (const QPDFObjectHandle& stream : streams_) {
            if (!isInCategoryOnly(stream)) {
                users_.push_back(
                    {stream, stream, QPDFObjectHandle(stream).getDict().getKey("/Resources")});
            }
        }
        return std::move(users_);
    }

private:
    /// Whether the category stands in the resources of a single user, which are its own.
    bool standsInUser() const
    {
        QPDFObjectHandle holder = dictionaryOf(category_.owner);
        QPDFObjectHandle resources =
            holder.isDictionary() ? holder.getKey("/Resources") : QPDFObjectHandle::newNull();
        return resources.isDictionary() && !resources.isIndirect() && !isTreeNode(holder) &&
               resources.getKey(category_.name).isSameObjectAs(category_.dictionary);
    }

    void addInheriting(int place)
    {
        for (const int number : sharing_.inheritingFrom(place)) {
            addUser(removal_.document().page(number),
                    removal_.document().pageAttribute(number, "/Resources"));
        }
    }

    void addUser(QPDFObjectHandle page, const QPDFObjectHandle& resources)
    {
        users_.push_back({page, page.getKey("/Contents"), resources});
    }

    /// False when what the referrer does with it cannot be told.
    bool add(QPDFObjectHandle referrer, const QPDFObjectHandle& target)
    {
        if (removal_.isRemainingPage(referrer)) {
            addUser(referrer, referrer.getKey("/Resources"));
        } else if (isTreeNode(referrer)) {
            addInheriting(referrer.getObjectID());
            addInheriting(target.getObjectID());
        } else if (referrer.isStream()) {
            streams_.push_back(referrer);
            return referrer.getDict().getKey("/Resources").isDictionary();
        } else if (!referrer.isDictionary()) {
            return false;
        } else if (referrer.getKey("/CharProcs").isDictionary()) {
            users_.push_back(
                {referrer, valuesOf(referrer.getKey("/CharProcs")), referrer.getKey("/Resources")});
        } else if (referrer.getKey(category_.name).isSameObjectAs(target)) {
            open_.push_back(referrer); // a resource dictionary with the category
        } else {
            return false;
        }
        return true;
    }

    /// Whether a stream can be reached through the category alone: it then draws only when somebody
    /// names it.
    bool isInCategoryOnly(const QPDFObjectHandle& stream)
    {
        const std::vector<QPDFObjectHandle> referrers = removal_.referrersOf(stream.getObjectID());
        return std::all_of(referrers.begin(), referrers.end(), [&](const QPDFObjectHandle& one) {
            return holders_.count(one.getObjectID()) > 0 ||
                   one.getObjectID() == stream.getObjectID();
        });
    }

    ResourceSharing& sharing_;
    Removal& removal_;
    const ResourceCategory& category_;
    std::vector<QPDFObjectHandle> open_;
    std::unordered_set<int> holders_;
    std::vector<QPDFObjectHandle> streams_;
    std::vector<ResourceUser> users_;
};

std::optional<std::vector<ResourceUser>> ResourceSharing::usersOf(const ResourceCategory& category)
{
    return Climb(*this, category).run();
}

std::vector<ResourceListing> ResourceSharing::listings(int object, int listed)
{
    const Lists& lists = listsIn(object);
    const auto [first, last] =
        std::equal_range(lists.entries.begin(), lists.entries.end(), Lists::Entry{listed, 0, {}});
    std::vector<ResourceListing> found;
    for (auto entry = first; entry != last; ++entry) {
        found.push_back({lists.categories[entry->category], entry->name});
    }
    return found;
}

const ResourceSharing::Lists& ResourceSharing::listsIn(int object)
{
    const auto [known, isNew] = lists_.try_emplace(object);
    Lists& lists = known->second;
    if (removal_.objects().changedText(object) != nullptr && !removal_.isRemainingPage(object) &&
        !removal_.isTreeNode(object)) {
        return lists; // an entry of the outline or the like, which need not be built
    }
    const QPDFObjectHandle owner = removal_.object(object);
    QPDFObjectHandle holder = dictionaryOf(owner);
    if (!isNew || !holder.isDictionary()) {
        return lists;
    }
    QPDFObjectHandle own = holder.getKey("/Resources");
    for (const char* name : index::resourceCategories) {
        if (own.isDictionary() && !own.isIndirect() && !own.getKey(name).isIndirect()) {
            lists.add({name, own.getKey(name), owner, object});
        }
        if (!holder.getKey(name).isIndirect()) {
            lists.add({name, holder.getKey(name), owner, object});
        }
    }
    if (lists.categories.empty()) {
        for (const char* name : categoriesOf(object)) {
            lists.add({name, holder, owner, object});
        }
    }
    std::sort(lists.entries.begin(), lists.entries.end());
    return lists;
}

void ResourceSharing::Lists::add(const ResourceCategory& category)
{
    if (!QPDFObjectHandle(category.dictionary).isDictionary()) {
        return;
    }
    for (auto& [name, value] : QPDFObjectHandle(category.dictionary).getDictAsMap()) {
        if (value.isIndirect()) {
            entries.push_back({value.getObjectID(), categories.size(), name});
        }
    }
    categories.push_back(category);
}

/// The categories as whose dictionary an object stands in resources.
std::set<const char*> ResourceSharing::categoriesOf(int object)
{
    std::set<const char*> categories;
    for (const QPDFObjectHandle& referrer : removal_.referrersOf(object)) {
        QPDFObjectHandle holder = dictionaryOf(referrer);
        if (!holder.isDictionary()) {
            continue;
        }
        for (QPDFObjectHandle resources : {holder.getKey("/Resources"), holder}) {
            for (const char* name : index::resourceCategories) {
                if (resources.isDictionary() && resources.getKey(name).getObjectID() == object) {
                    categories.insert(name);
                }
            }
        }
    }
    return categories;
}

/// Whether an object may refer to a stream, itself or through a dictionary other than a page.
bool ResourceSharing::mayLeadToStream(int object)
{
    const auto references = removal_.indexedReferencesOf(object);
    if (!references) {
        return true;
    }
    return std::any_of(references->begin(), references->end(), [this](std::uint32_t reference) {
        const index::IndexedObject* target = removal_.unchanged(static_cast<int>(reference));
        if (target == nullptr) {
            return reference != 0;
        }
        return (target->flags & index::IsStream) != 0 ||
               ((target->flags & index::IsDictionary) != 0 && target->kind == index::Kind::Other);
    });
}

QPDFObjectHandle ResourceSharing::appearancesOn(QPDFObjectHandle page)
{
    QPDFObjectHandle streams = QPDFObjectHandle::newArray();
    const auto add = [&](QPDFObjectHandle stream) {
        if (stream.isStream() && !stream.getDict().getKey("/Resources").isDictionary()) {
            streams.appendItem(stream);
        }
    };
    for (QPDFObjectHandle annotation : annotationsIn(page)) {
        if (annotation.isIndirect() && !mayLeadToStream(annotation.getObjectID())) {
            continue; // as most links
        }
        QPDFObjectHandle appearances =
            annotation.isDictionary() ? annotation.getKey("/AP") : QPDFObjectHandle::newNull();
        if (!appearances.isDictionary()) {
            continue;
        }
        for (auto& [key, appearance] : appearances.getDictAsMap()) {
            QPDFObjectHandle states = appearance;
            if (states.isDictionary()) {
                for (const auto& [state, stream] : states.getDictAsMap()) {
                    add(stream);
                }
            } else {
                add(states);
            }
        }
    }
    return streams;
}

} // namespace karvel::deletion
