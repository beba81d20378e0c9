#include "KarvelPDFLibrary/index/PlainStream.h"

#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <utility>

namespace karvel::index {

std::optional<PlainStream> PlainStream::read(std::string_view text)
{
    auto dictionary = DictionaryText::readPlainly(text);
    if (!dictionary) {
        return std::nullopt;
    }
    const std::string_view filter = trimmed(dictionary->value("Filter"));
    const auto count = unsignedIn(trimmed(dictionary->value("Length")));
    const bool isPlain = (filter.empty() || filter == "/FlateDecode") &&
                         !dictionary->has("DecodeParms") && !dictionary->has("F") && count;
    const std::string_view word = "stream";
    std::size_t at = skipSpace(text, dictionary->text().size());
    if (!isPlain || text.substr(std::min(at, text.size()), word.size()) != word) {
        return std::nullopt;
    }
    at += word.size();
    at += text.substr(at, 1) == "\r" ? 1 : 0;
    ++at; // the line feed
    if (at > text.size() || *count > text.size() - at) {
        return std::nullopt;
    }
    return PlainStream{std::move(*dictionary), text.substr(at, *count), !filter.empty()};
}

std::string PlainStream::data(std::size_t most) const
{
    if (isFiltered) {
        return inflated(std::string(bytes), {}, most);
    }
    if (bytes.size() > most) {
        throw TooMuchData();
    }
    return std::string(bytes);
}

} // namespace karvel::index
