#include "KarvelPDFLibrary/deletion/ListedResources.h"

#include "KarvelPDFLibrary/deletion/PlainUse.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

/// How many of those who list an object are asked at first whether they draw it.
constexpr std::size_t sampledHolders = 8;

bool isLayer(QPDFObjectHandle object)
{
    return object.isDictionaryOfType("/OCG") || object.isDictionaryOfType("/OCMD");
}

bool canBeResource(QPDFObjectHandle object)
{
    return object.isDictionary() || object.isStream() || object.isArray();
}

} // namespace

void ListedResources::run(std::vector<int> drawn)
{
    for (const int object : drawn) {
        going_.drawers.try_emplace(object, 0);
    }
    for (std::vector<int> open = std::move(drawn); true; open = withoutTheirDrawer()) {
        const std::vector<int> shared = dependents_.takeShared();
        open.insert(open.end(), shared.begin(), shared.end());
        if (open.empty()) {
            return;
        }
        judge(open);
    }
}

void ListedResources::judge(const std::vector<int>& objects)
{
    for (const int object : objects) {
        if (!dependents_.goes(object) && judged_.insert(object)) {
            judge(object);
        }
    }
}

/// What was left since somebody drew it who has turned out to go as well: to be judged anew.
std::vector<int> ListedResources::withoutTheirDrawer()
{
    std::vector<int> found;
    for (const auto& [object, drawer] : staying_.drawers) {
        if (dependents_.has(drawer)) {
            found.push_back(object);
            judged_.erase(object);
        }
    }
    if (!found.empty()) {
        staying_ = {};
    }
    std::sort(found.begin(), found.end());
    return found;
}

void ListedResources::judge(int object)
{
    const std::vector<int> holders = stayingHolders(object);
    if (holders.empty()) {
        dependents_.add(object);
        return;
    }
    if (removal_.document().roots() != nullptr && isPlainlyDrawnBySome(object, holders)) {
        return;
    }
    // Entries of the outline and the like, which need not be built, are what is changed by texts.
    if (removal_.objects().changedText(object) != nullptr ||
        !canBeResource(removal_.object(object)) || isDrawnBySome(object, holders) ||
        !isDrawnByWhatGoes(object)) {
        return;
    }
    if (auto listings = undrawnListings(object, holders)) {
        remove(*listings);
        dependents_.add(object);
    }
}

/// Who referred to an object when the removal began, and stays.
std::vector<int> ListedResources::stayingHolders(int object)
{
    std::vector<int> holders = removal_.referrerNumbersOf(object);
    holders.erase(std::remove_if(holders.begin(), holders.end(),
                                 [this](int holder) { return dependents_.has(holder); }),
                  holders.end());
    return holders;
}

/// Whether an object that does not list another has it for another purpose. Layers stand in lists
/// of the document (ISO 32000-2, 8.11.4), which draw nothing.
bool ListedResources::needs(int holder, int object)
{
    const ObjectView::Numbers now = removal_.objects().references(holder);
    return std::find(now.begin(), now.end(), static_cast<std::uint32_t>(object)) != now.end() &&
           !isLayer(removal_.object(object));
}

std::vector<int> ListedResources::some(const std::vector<int>& holders)
{
    const std::size_t count = std::min(sampledHolders, holders.size());
    std::vector<int> some;
    for (std::size_t part = 0; part < count; ++part) {
        some.push_back(holders[part * holders.size() / count]);
    }
    return some;
}

/// The same as isDrawnBySome(), as far as texts tell it.
bool ListedResources::isPlainlyDrawnBySome(int object, const std::vector<int>& holders)
{
    const std::vector<int> asked = some(holders);
    return std::any_of(asked.begin(), asked.end(),
                       [&](int holder) { return drawsPlainly(removal_, holder, object); });
}

/// Also true when one of them has it for another purpose.
bool ListedResources::isDrawnBySome(int object, const std::vector<int>& holders)
{
    for (const int holder : some(holders)) {
        if (staying_.has(object)) {
            break;
        }
        if (sharing_.listings(holder, object).empty() && needs(holder, object)) {
            return true;
        }
        if (const auto user = sharing_.userIn(removal_.object(holder))) {
            read(*user, staying_);
        }
    }
    return staying_.has(object);
}

bool ListedResources::isDrawnByWhatGoes(int object)
{
    NumberSet seen;
    std::vector<int> open = {object};
    while (!open.empty() && !going_.has(object)) {
        const int at = open.back();
        open.pop_back();
        for (const int number : removal_.formerReferrersOf(at)) {
            if (!dependents_.goes(number) || !seen.insert(number)) {
                continue;
            }
            const QPDFObjectHandle holder = removal_.formerObject(number);
            if (const auto user = sharing_.userIn(holder)) {
                unclear_ = !read(*user, going_) || unclear_;
            } else if (QPDFObjectHandle(holder).isDictionary()) {
                open.push_back(number); // resources, or those of a category
            }
        }
    }
    return going_.has(object);
}

/// Where an object is listed that nobody draws who stays. Nothing when somebody does or may, or has
/// it for another purpose.
std::optional<std::vector<ResourceListing>>
ListedResources::undrawnListings(int object, const std::vector<int>& holders)
{
    const QPDFObjectHandle value = removal_.object(object);
    std::vector<ResourceListing> all;
    for (const int holder : holders) {
        const std::vector<ResourceListing> here = sharing_.listings(holder, object);
        if (here.empty() && needs(holder, object)) {
            return std::nullopt;
        }
        for (const ResourceListing& listing : here) {
            if (!ResourceSharing::holdsContent(listing.category.name, value) ||
                isDrawnThrough(listing.category, object)) {
                return std::nullopt;
            }
            all.push_back(listing);
        }
    }
    return all;
}

/// Whether somebody who uses a category draws an object of it, or may.
bool ListedResources::isDrawnThrough(const ResourceCategory& category, int object)
{
    const auto& users = usersOf(category);
    bool clear = users.has_value();
    for (std::size_t i = 0; users && i < users->size(); ++i) {
        const ResourceUser& user = (*users)[i];
        if (!dependents_.has(user.object.getObjectID())) {
            clear = read(user, staying_) && clear;
        }
        if (staying_.has(object)) {
            return true;
        }
    }
    unclear_ =
        unclear_ || (!clear && ResourceSharing::isDrawn(category.name, removal_.object(object)));
    return !clear;
}

const std::optional<std::vector<ResourceUser>>&
ListedResources::usersOf(const ResourceCategory& category)
{
    const auto [entry, isNew] = users_.try_emplace({category.place, category.name});
    if (isNew) {
        entry->second = sharing_.usersOf(category);
    }
    return entry->second;
}

/// Takes down what a user draws, once. Returns whether it could be read.
bool ListedResources::read(const ResourceUser& user, Drawing& drawing)
{
    const auto [entry, isNew] = drawing.users.try_emplace(user.object.getObjectID(), true);
    QPDFObjectHandle resources = user.resources;
    if (!isNew || !resources.isDictionary()) {
        return entry->second;
    }
    const auto never = [](const QPDFObjectHandle&) { return false; };
    std::set<std::string> names;
    entry->second = content_.collect(user.content, resources, never, names) &&
                    content_.collect(sharing_.appearancesOn(user.object), resources, never, names);
    for (const char* category : index::resourceCategories) {
        QPDFObjectHandle entries = resources.getKey(category);
        if (!entries.isDictionary()) {
            continue;
        }
        for (auto& [name, value] : entries.getDictAsMap()) {
            // Default colour spaces (ISO 32000-2, 8.6.5.6) are used without being named.
            const bool drawn = names.count(name) > 0 || name.rfind("/Default", 0) == 0;
            if (drawn && value.isIndirect()) {
                drawing.drawers.try_emplace(value.getObjectID(), user.object.getObjectID());
            }
        }
    }
    return entry->second;
}

void ListedResources::remove(std::vector<ResourceListing>& listings)
{
    for (ResourceListing& listing : listings) {
        removal_.changes().edit(listing.category.owner);
        listing.category.dictionary.removeKey(listing.name);
    }
}

} // namespace karvel::deletion
