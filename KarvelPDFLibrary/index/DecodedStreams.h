#pragma once

#include "KarvelPDFLibrary/index/ReferenceIndex.h"
#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/ObjectFile.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>

namespace karvel::index {

/// What is in an object stream (ISO 32000-2, 7.5.7).
struct DecodedStream {
    std::int64_t count = -1; // /N; -1 where that is no number
    std::int64_t first = -1; // /First

    /// The decoded data, and a word after them: members end without one, and a ValueScanner wants
    /// to see one.
    std::string text;

    std::size_t length() const { return text.size() - endOfText.size(); }

    static constexpr std::string_view endOfText = " endobj ";
};

/// The object streams of a file, decoded. Those that were asked for last are kept, since their
/// members are asked for one by one.
class DecodedStreams {
public:
    using Stream = std::shared_ptr<const DecodedStream>;

    DecodedStreams(io::ObjectFile& file, io::ByteSource& source) : file_(file), source_(source) {}

    /// An object stream, `object`, that an index of a file in this state knows. libqpdf reads it
    /// where it is not plain, is enciphered, or where the file is damaged. Throws TooMuchData for
    /// more than `most` bytes, and std::length_error for what can't be decoded.
    Stream of(std::uint32_t number, const IndexedObject& object, FileState state, std::size_t most);

    /// The same of an index that is made, which has decoded it before, so that it is known to be of
    /// a reasonable size.
    Stream of(const ReferenceIndex& index, std::uint32_t number);

    /// The same without asking libqpdf; null where it would have to be asked.
    Stream plain(std::uint32_t number, const IndexedObject& object, std::size_t most);

    /// Forgets what was kept, since the file is looked at in another way.
    void clear();

private:
    Stream kept(std::uint32_t number) const;
    Stream keep(std::uint32_t number, DecodedStream stream);
    Stream readPlain(std::uint32_t number, const IndexedObject& object, std::size_t most);

    io::ObjectFile& file_;
    io::ByteSource& source_;
    std::unordered_map<std::uint32_t, Stream> kept_;
    std::deque<std::uint32_t> order_; // in which they came
    std::size_t bytes_ = 0;
};

} // namespace karvel::index
