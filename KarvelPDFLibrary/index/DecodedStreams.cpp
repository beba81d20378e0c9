#include "KarvelPDFLibrary/index/DecodedStreams.h"

#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/ObjectHeader.h"
#include "KarvelPDFLibrary/index/PlainStream.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <utility>

namespace karvel::index {

namespace {

constexpr std::size_t mostBytesKept = 2U * 1024 * 1024;

/// A number that is written as digits; -1 for anything else.
std::int64_t plainNumber(std::string_view text)
{
    const std::optional<std::uint64_t> number = unsignedIn(trimmed(text));
    return number && *number <= 0x7FFFFFFF ? static_cast<std::int64_t>(*number) : -1;
}

std::int64_t numberOf(QPDFObjectHandle value)
{
    return value.isInteger() && value.getIntValue() >= 0 ? value.getIntValue() : -1;
}

} // namespace

DecodedStreams::Stream DecodedStreams::of(std::uint32_t number, const IndexedObject& object,
                                          FileState state, std::size_t most)
{
    if (Stream known = kept(number)) {
        return known;
    }
    if (state == FileState::Whole && !file_.isEncrypted()) {
        if (Stream read = readPlain(number, object, most)) {
            return read;
        }
    }
    QPDFObjectHandle stream = file_.get().getObject(static_cast<int>(number), object.generation);
    QPDFObjectHandle dictionary = stream.isStream() ? stream.getDict() : stream;
    DecodedStream decoded;
    if (dictionary.isDictionary()) {
        decoded.count = numberOf(dictionary.getKey("/N"));
        decoded.first = numberOf(dictionary.getKey("/First"));
    }
    decoded.text = boundedData(stream, most);
    return keep(number, std::move(decoded));
}

DecodedStreams::Stream DecodedStreams::of(const ReferenceIndex& index, std::uint32_t number)
{
    return of(number, index.object(number), index.fileState(), SIZE_MAX);
}

DecodedStreams::Stream DecodedStreams::plain(std::uint32_t number, const IndexedObject& object,
                                             std::size_t most)
{
    Stream known = kept(number);
    return known ? known : readPlain(number, object, most);
}

DecodedStreams::Stream DecodedStreams::readPlain(std::uint32_t number, const IndexedObject& object,
                                                 std::size_t most)
{
    std::string text(static_cast<std::size_t>(object.end - object.start), '\0');
    text.resize(source_.readAt(static_cast<std::int64_t>(object.start), text.data(), text.size()));
    const auto header = readObjectHeader(text, number, object.generation);
    const auto stream =
        header ? PlainStream::read(std::string_view(text).substr(skipSpace(text, header->end)))
               : std::nullopt;
    if (!stream) {
        return nullptr;
    }
    DecodedStream decoded;
    decoded.count = plainNumber(stream->dictionary.value("N"));
    decoded.first = plainNumber(stream->dictionary.value("First"));
    if (decoded.count < 0 || decoded.first < 0) {
        return nullptr;
    }
    try {
        decoded.text = stream->data(most);
    } catch (const TooMuchData&) {
        throw;
    } catch (const std::length_error&) {
        return nullptr;
    }
    return keep(number, std::move(decoded));
}

void DecodedStreams::clear()
{
    kept_.clear();
    order_.clear();
    bytes_ = 0;
}

DecodedStreams::Stream DecodedStreams::kept(std::uint32_t number) const
{
    const auto found = kept_.find(number);
    return found == kept_.end() ? nullptr : found->second;
}

DecodedStreams::Stream DecodedStreams::keep(std::uint32_t number, DecodedStream stream)
{
    stream.text += DecodedStream::endOfText;
    auto kept = std::make_shared<const DecodedStream>(std::move(stream));
    bytes_ += kept->text.size();
    order_.push_back(number);
    kept_[number] = kept;
    while (bytes_ > mostBytesKept && order_.size() > 1) {
        const auto oldest = kept_.find(order_.front());
        bytes_ -= oldest->second->text.size();
        kept_.erase(oldest);
        order_.pop_front();
    }
    return kept;
}

} // namespace karvel::index
