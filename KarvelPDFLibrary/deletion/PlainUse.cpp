#include "KarvelPDFLibrary/deletion/PlainUse.h"

#include "KarvelPDFLibrary/deletion/ContentNames.h"
#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"

#include <algorithm>
#include <set>

namespace karvel::deletion {

namespace {

using index::DictionaryText;

/// What is worth decoding for one answer.
constexpr std::size_t mostOfContent = 16U * 1024 * 1024;

/// A dictionary that libqpdf reads in the same way.
std::optional<DictionaryText> plain(std::string_view text)
{
    index::ReadingDoubts doubts;
    auto dictionary = DictionaryText::read(text, &doubts);
    return doubts.any() ? std::nullopt : std::move(dictionary);
}

/// A dictionary that stands in another one's text.
std::optional<DictionaryText> inner(const DictionaryText& outer, std::string_view key)
{
    const std::string_view value = outer.value(key);
    const std::string_view text = outer.text();
    if (index::trimmed(value).substr(0, 2) != "<<") {
        return std::nullopt;
    }
    return DictionaryText::read(text.substr(static_cast<std::size_t>(value.data() - text.data())));
}

/// The names under which resources list an object.
std::set<std::string> namesOf(const DictionaryText& resources, const index::ReferenceIndex& index,
                              int object)
{
    std::set<std::string> names;
    for (const char* category : index::resourceCategories) {
        const auto entries = inner(resources, category + 1);
        for (std::size_t i = 0; entries && i < entries->entries().size(); ++i) {
            const auto& [name, value] = entries->entries()[i];
            const auto reference = index::readReference(value);
            if (reference && index.targetOf(*reference) == static_cast<std::uint32_t>(object)) {
                names.insert("/" + name);
            }
        }
    }
    return names;
}

/// The data of a stream, by a text that goes up to its end; empty where that is not plain.
std::string dataIn(std::string_view text)
{
    const auto dictionary = plain(text);
    if (!dictionary) {
        return {};
    }
    const std::string_view filter = index::trimmed(dictionary->value("Filter"));
    const std::string_view length = index::trimmed(dictionary->value("Length"));
    std::uint64_t count = 0;
    std::size_t digits = 0;
    const bool isPlain = (filter.empty() || filter == "/FlateDecode") &&
                         !dictionary->has("DecodeParms") && !dictionary->has("F") &&
                         index::readUnsigned(length, digits, count) && digits == length.size();
    const std::string_view word = "stream";
    std::size_t at = index::skipSpace(text, dictionary->text().size());
    if (!isPlain || text.substr(std::min(at, text.size()), word.size()) != word) {
        return {};
    }
    at += word.size();
    at += text.substr(at, 1) == "\r" ? 1 : 0;
    ++at; // the line feed
    if (at > text.size() || count > text.size() - at || count > mostOfContent) {
        return {};
    }
    std::string data(text.substr(at, count));
    if (filter.empty()) {
        return data;
    }
    try {
        return index::inflated(data, {}, mostOfContent);
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

bool drawsPlainly(Removal& removal, int page, int object)
{
    const index::IndexedObject* indexed = removal.unchanged(page);
    if (indexed == nullptr || indexed->kind != index::Kind::Page ||
        !removal.isRemainingPage(page)) {
        return false;
    }
    const std::string text(removal.objects().text(page)); // the next one takes its place
    const auto dictionary = plain(text);
    const auto resources = dictionary ? inner(*dictionary, "Resources") : std::nullopt;
    const auto content =
        dictionary ? index::readReference(dictionary->value("Contents")) : std::nullopt;
    if (!resources || !content) {
        return false;
    }
    const std::set<std::string> names = namesOf(*resources, *removal.document().index(), object);
    const auto number = static_cast<int>(removal.document().index()->targetOf(*content));
    const bool isStream = number != 0 && removal.unchanged(number) != nullptr &&
                          removal.mayHave(number, index::IsStream);
    bool isNamed = false;
    if (isStream && !names.empty()) {
        forEachName(dataIn(removal.objects().text(number)),
                    [&](const std::string& name) { isNamed = isNamed || names.count(name) > 0; });
    }
    return isNamed;
}

} // namespace karvel::deletion
