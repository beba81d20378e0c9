#include "KarvelPDFLibrary/deletion/PlainUse.h"

#include "KarvelPDFLibrary/deletion/ContentNames.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/PlainStream.h"

#include <algorithm>
#include <set>

namespace karvel::deletion {

namespace {

using index::DictionaryText;

/// What is worth decoding for one answer.
constexpr std::size_t mostOfContent = 16U * 1024 * 1024;

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

/// The data of a stream; empty where that is not plain.
std::string dataIn(std::string_view text)
{
    const auto stream = index::PlainStream::read(text);
    try {
        return stream && stream->bytes.size() <= mostOfContent ? stream->data(mostOfContent) : "";
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
    const auto dictionary = DictionaryText::readPlainly(text);
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
