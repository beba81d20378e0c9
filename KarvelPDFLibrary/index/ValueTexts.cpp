#include "KarvelPDFLibrary/index/ValueTexts.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"

namespace karvel::index {

std::string_view ValueTexts::from(std::uint32_t number)
{
    const IndexedObject& object = index_.object(number);
    if (object.container != 0) {
        return fromMember(object);
    }
    const std::size_t length = object.end - object.start;
    if (!text_.open(object.start, length) || text_.view().size() < length) {
        return {};
    }
    const std::string_view text = text_.view().substr(0, length);
    std::size_t at = 0;
    std::uint64_t written = 0;
    readUnsigned(text, at, written);
    at = skipSpace(text, at);
    readUnsigned(text, at, written);
    at = skipSpace(text, at);
    return text.substr(skipSpace(text, std::min(at + 3, length))); // past "obj"
}

std::string_view ValueTexts::fromMember(const IndexedObject& object)
{
    if (container_ != object.container) {
        stream_ = streams_.of(index_, object.container);
        container_ = object.container;
    }
    const std::string_view text = std::string_view(stream_->text).substr(object.start);
    return text.substr(skipSpace(text, 0));
}

} // namespace karvel::index
