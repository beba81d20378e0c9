#include "KarvelPDFLibrary/saving/RenumberedObjects.h"

#include "KarvelPDFLibrary/saving/CrossReferences.h"
#include "KarvelPDFLibrary/saving/ObjectText.h"

#include <stdexcept>

namespace karvel::saving {

namespace {

using index::IndexedObject;

/// Longer objects are copied from the source in place when they are written.
constexpr std::uint64_t longestText = 256 * 1024;

/// What a scan first looks at of a longer one.
constexpr std::size_t beginning = 4 * 1024;

/// Past "12 0 obj" at the beginning of a text.
std::size_t pastNumber(std::string_view text)
{
    std::size_t at = 0;
    std::uint64_t number = 0;
    index::readUnsigned(text, at, number);
    at = index::skipSpace(text, at);
    index::readUnsigned(text, at, number);
    return std::min(index::skipSpace(text, at) + 3, text.size());
}

std::uint64_t withoutSpaceAtEnd(io::ByteSource& source, std::uint64_t start, std::uint64_t end)
{
    char last[64];
    while (end > start) {
        const std::uint64_t length = std::min<std::uint64_t>(sizeof last, end - start);
        source.readAt(static_cast<std::int64_t>(end - length), last, length);
        for (std::uint64_t i = length; i-- > 0; --end) {
            if (!index::isWhiteSpace(last[i])) {
                return end;
            }
        }
    }
    return end;
}

} // namespace

RenumberedObjects::RenumberedObjects(Document& document, const LinearOrder& order)
    : document_(document), index_(*document.index()), order_(order), text_(*document.source()),
      objects_(document.objects())
{
    if (document.isEncrypted()) {
        cipher_ = Cipher::of(document.file());
        QPDFObjectHandle encryption = document.file().getTrailer().getKey("/Encrypt");
        encryption_ = static_cast<std::uint32_t>(encryption.getObjectID());
    }
}

bool RenumberedObjects::isToBeBuilt(std::uint32_t object) const
{
    const IndexedObject* entry = objects_.unchanged(static_cast<int>(object));
    if (entry == nullptr) {
        return true;
    }
    if (!cipher_ || object == encryption_ || entry->kind == index::Kind::CrossReferenceStream) {
        return false;
    }
    // What leaves an object stream was enciphered with it.
    return entry->container != 0 || !cipher_->fitsAnyNumber();
}

WrittenObject RenumberedObjects::written(std::uint32_t object)
{
    const std::uint32_t number = order_.numbers.of(object);
    if (const PackedStream* stream = order_.stream(object)) {
        return {packed(*stream)};
    }
    const bool isInFile = index_.contains(object) && index_.object(object).container == 0;
    if (isInFile && !isToBeBuilt(object)) {
        if (std::optional<WrittenObject> copy = copied(object)) {
            return *copy;
        }
    }
    return {numbered(static_cast<int>(number), 0, value(object, true))};
}

/// An object with the text that it has in the file; nothing when references in it are written in a
/// way that is not followed here.
std::optional<WrittenObject> RenumberedObjects::copied(std::uint32_t object)
{
    const IndexedObject& entry = index_.object(object);
    const std::uint64_t length = entry.end - entry.start;
    const bool isShort = length <= longestText;
    const std::size_t first = isShort ? static_cast<std::size_t>(length) : beginning;
    if (!text_.open(entry.start, first) || text_.view().size() < first) {
        throw std::runtime_error("the source ends early");
    }
    std::size_t at = pastNumber(text_.view());
    WrittenObject out{std::to_string(order_.numbers.of(object)) + " 0 obj"};
    out.start = entry.start;
    out.end = entry.end;
    while (entry.referenceCount > 0) {
        const index::ScanResult result = order_.numbers.append(out.text, text_.view(), at);
        if (result == index::ScanResult::Complete) {
            break;
        }
        if (result == index::ScanResult::Malformed || !text_.extend()) {
            return std::nullopt;
        }
    }
    if (isShort && text_.view().size() >= length) {
        std::string_view end = text_.view().substr(at, static_cast<std::size_t>(length) - at);
        while (!end.empty() && index::isWhiteSpace(end.back())) {
            end.remove_suffix(1);
        }
        out.text.append(end).append("\n");
        return out;
    }
    out.from = text_.offset() + at;
    out.copied = withoutSpaceAtEnd(*document_.source(), out.from, entry.end) - out.from;
    return out;
}

/// An object's present value under the new numbers. Without a cipher where it is in an object
/// stream, which is enciphered as a whole.
std::string RenumberedObjects::value(std::uint32_t object, bool enciphered)
{
    const auto number = static_cast<int>(object);
    const bool isPlain = !cipher_ || !enciphered;
    const IndexedObject* entry = objects_.unchanged(number);
    const bool isPlainMember = isPlain && entry != nullptr && entry->container != 0;
    if (isPlainMember || objects_.changedText(number) != nullptr) {
        const std::string_view text = objects_.text(number);
        std::string out;
        std::size_t at = 0;
        if (order_.numbers.append(out, text, at) == index::ScanResult::Complete) {
            return out;
        }
    }
    return objectText(objects_.object(number), isPlain ? nullptr : &*cipher_, &order_.numbers);
}

std::string RenumberedObjects::packed(const PackedStream& stream)
{
    std::string header;
    std::string body;
    for (const std::uint32_t member : stream.members) {
        header +=
            std::to_string(order_.numbers.of(member)) + " " + std::to_string(body.size()) + " ";
        body += value(member, false);
        body += '\n';
    }
    const std::string entries = "/Type /ObjStm /N " + std::to_string(stream.members.size()) +
                                " /First " + std::to_string(header.size());
    return this->stream(order_.numbers.of(stream.object), entries, header + body);
}

std::string RenumberedObjects::stream(std::uint32_t number, const std::string& entries,
                                      std::string data) const
{
    data = deflated(data);
    if (cipher_) {
        data = cipher_->stream(data, QPDFObjGen(static_cast<int>(number), 0));
    }
    return numbered(static_cast<int>(number), 0,
                    "<< " + entries + " /Filter /FlateDecode /Length " +
                        std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream");
}

} // namespace karvel::saving
