#include "KarvelPDFLibrary/deletion/OutlineEntries.h"

#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <charconv>

namespace karvel::deletion {

namespace {

/// By OutlineLink.
constexpr std::array<const char*, 4> linkKeys = {"First", "Last", "Prev", "Next"};

std::optional<long long> integerIn(std::string_view value)
{
    const std::string_view text = index::trimmed(value);
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size()
               ? std::optional<long long>(number)
               : std::nullopt;
}

OutlineEntry readBuilt(Removal& removal, QPDFObjectHandle dictionary)
{
    OutlineEntry entry;
    entry.object = dictionary.getObjectID();
    // The references are read, not what they lead to, which may be gone.
    const auto values = dictionary.getDictAsMap();
    for (std::size_t link = 0; link < linkKeys.size(); ++link) {
        const auto found = values.find(std::string("/") + linkKeys[link]);
        if (found != values.end()) {
            const int target = found->second.getObjectID();
            const bool isThere = target > 0 && found->second.getObjGen() == removal.idOf(target);
            entry.place.links[link] = isThere ? target : -1;
        }
    }
    QPDFObjectHandle count = dictionary.getKey("/Count");
    if (!count.isNull()) {
        entry.place.count = count.isInteger() ? count.getIntValue() : 0;
    }
    return entry;
}

} // namespace

std::optional<OutlineEntry> OutlineEntries::read(int object)
{
    if (auto entry = readText(object)) {
        return entry;
    }
    QPDFObjectHandle dictionary = removal_.object(object);
    return dictionary.isDictionary() ? std::optional<OutlineEntry>(readBuilt(removal_, dictionary))
                                     : std::nullopt;
}

std::optional<OutlineEntry> OutlineEntries::readText(int object)
{
    const index::IndexedObject* indexed = removal_.unchanged(object);
    // In an encrypted file texts don't tell what their strings say.
    if (indexed == nullptr || removal_.document().isEncrypted() ||
        (indexed->flags & index::IsStream) != 0 ||
        (indexed->kind != index::Kind::OutlineEntry && indexed->kind != index::Kind::Other)) {
        return std::nullopt;
    }
    const auto text = index::DictionaryText::read(removal_.objects().text(object));
    if (!text) {
        return std::nullopt;
    }
    OutlineEntry entry;
    entry.object = object;
    entry.isPlain = true;
    for (std::size_t link = 0; link < linkKeys.size(); ++link) {
        const std::string_view value = text->value(linkKeys[link]);
        entry.place.links[link] = value.empty() ? 0 : removal_.targetOfText(value);
        if (entry.place.links[link] == 0 && !value.empty()) {
            return std::nullopt;
        }
    }
    if (const std::string_view count = text->value("Count"); !count.empty()) {
        entry.place.count = integerIn(count);
        if (!entry.place.count) {
            return std::nullopt;
        }
    }
    const std::string_view destination = text->value("Dest");
    const std::string_view action = text->value("A");
    if (!destination.empty() && !action.empty()) {
        return std::nullopt;
    }
    const auto leads =
        action.empty() ? removal_.textLeadsToRemovedPage(destination) : actionLeads(action);
    if (!leads) {
        return std::nullopt;
    }
    if (*leads) {
        entry.lostTarget = action.empty() ? "Dest" : "A";
    }
    const std::string_view element = text->value("SE");
    if (!element.empty() && destination.empty() && action.empty()) {
        const int target = removal_.targetOfText(element);
        if (target == 0) {
            return std::nullopt;
        }
        if (removal_.isGone(target)) {
            entry.lostTarget = "SE";
        }
    }
    return entry;
}

/// Whether an action leads to a removed page; nothing when its text doesn't tell.
std::optional<bool> OutlineEntries::actionLeads(std::string_view action) const
{
    const auto text = index::DictionaryText::read(action);
    if (!text || !text->value("Next").empty()) {
        return std::nullopt;
    }
    const std::string_view kind = index::trimmed(text->value("S"));
    if (kind == "/GoTo") {
        return removal_.textLeadsToRemovedPage(text->value("D"));
    }
    const bool isOther = kind == "/URI" || kind == "/GoToR" || kind == "/Named" ||
                         kind == "/Launch" || kind == "/JavaScript";
    return isOther ? std::optional<bool>(false) : std::nullopt;
}

void OutlineEntries::write(const OutlineEntry& entry, const OutlinePlace& place)
{
    std::vector<ObjectView::Entry> changes;
    if (entry.lostTarget != nullptr) {
        changes.push_back({entry.lostTarget, ""});
    }
    for (std::size_t link = 0; link < linkKeys.size(); ++link) {
        const int target = place.links[link];
        if (target != entry.place.links[link]) {
            changes.push_back(
                {linkKeys[link], target == 0 ? "" : removal_.idOf(target).unparse(' ') + " R"});
        }
    }
    if (place.count != entry.place.count) {
        changes.push_back({"Count", place.count ? std::to_string(*place.count) : ""});
    }
    if (changes.empty()) {
        return;
    }
    const QPDFObjGen id = removal_.idOf(entry.object);
    if (entry.isPlain) {
        removal_.objects().edit(id, changes);
    } else {
        removal_.objects().editObject(id, changes);
    }
}

} // namespace karvel::deletion
