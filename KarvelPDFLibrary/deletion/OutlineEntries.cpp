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

OutlineEntries::OutlineEntries(Removal& removal) : removal_(removal)
{
    Document& document = removal.document();
    if (document.index() != nullptr && !document.file().isEncrypted()) {
        texts_.emplace(document.file(), *document.index(), *document.source());
    }
}

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
    if (!texts_ || indexed == nullptr || (indexed->flags & index::IsStream) != 0 ||
        (indexed->kind != index::Kind::OutlineEntry && indexed->kind != index::Kind::Other)) {
        return std::nullopt;
    }
    const auto text = index::DictionaryText::read(texts_->from(static_cast<std::uint32_t>(object)));
    if (!text) {
        return std::nullopt;
    }
    OutlineEntry entry;
    entry.object = object;
    entry.isPlain = true;
    for (std::size_t link = 0; link < linkKeys.size(); ++link) {
        const std::string_view value = text->value(linkKeys[link]);
        entry.place.links[link] = value.empty() ? 0 : targetOf(value);
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
    const auto leads = action.empty() ? destinationLeads(destination) : actionLeads(action);
    if (!leads) {
        return std::nullopt;
    }
    if (*leads) {
        entry.lostTarget = action.empty() ? "Dest" : "A";
    }
    const std::string_view element = text->value("SE");
    if (!element.empty() && destination.empty() && action.empty()) {
        const int target = targetOf(element);
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
        return destinationLeads(text->value("D"));
    }
    const bool isOther = kind == "/URI" || kind == "/GoToR" || kind == "/Named" ||
                         kind == "/Launch" || kind == "/JavaScript";
    return isOther ? std::optional<bool>(false) : std::nullopt;
}

/// The same for a destination, or none.
std::optional<bool> OutlineEntries::destinationLeads(std::string_view destination) const
{
    const std::string_view text = index::trimmed(destination);
    if (text.empty()) {
        return false;
    }
    if (text.front() == '[') {
        const int page = targetOf(text.substr(1));
        const bool isRemoved = removal_.isRemovedPage(page);
        return isRemoved || removal_.isRemainingPage(page) ? std::optional<bool>(isRemoved)
                                                           : std::nullopt;
    }
    const bool isName = text.front() == '(' || text.front() == '/' ||
                        (text.front() == '<' && text.substr(0, 2) != "<<");
    return isName ? std::optional<bool>(removal_.goneNames.count(index::decodedString(text)) > 0)
                  : std::nullopt;
}

/// The object that a reference at the beginning of a text leads to; 0 when there is none.
int OutlineEntries::targetOf(std::string_view reference) const
{
    const auto written = index::readReference(reference);
    return written ? static_cast<int>(removal_.document().index()->targetOf(*written)) : 0;
}

void OutlineEntries::write(const OutlineEntry& entry, const OutlinePlace& place)
{
    std::vector<index::DictionaryText::Entry> changes;
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
    if (entry.isPlain) {
        const auto number = static_cast<std::uint32_t>(entry.object);
        const auto text = index::DictionaryText::read(texts_->from(number));
        if (text &&
            removal_.changes().replaceText(removal_.idOf(entry.object), text->with(changes))) {
            return;
        }
    }
    QPDFObjectHandle dictionary = removal_.changes().edit(removal_.object(entry.object));
    for (const auto& [key, value] : changes) {
        const std::string name = "/" + std::string(key);
        if (value.empty()) {
            dictionary.removeKey(name);
        } else {
            dictionary.replaceKey(
                name, QPDFObjectHandle::parse(&removal_.file(), "[" + value + "]").getArrayItem(0));
        }
    }
}

} // namespace karvel::deletion
