#include "KarvelPDFLibrary/index/CrossReferenceCount.h"

#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <optional>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace karvel::index {

namespace {

/// Free entries take no object, and are left in large numbers where a few pages remain of many.
constexpr std::uint64_t mostFreeEntries = 8'388'607;

/// A stream's data can't grow beyond that by one filter (zlib, "Maximum Compression Factor").
constexpr std::uint64_t mostGrowth = 1032;

/// What is not worth decoding to be counted.
constexpr std::uint64_t harmlessBytes = 32U * 1024 * 1024;

struct Entries {
    std::uint64_t used = 0;
    std::uint64_t all = 0;
};

/// The entries of a trailer or of a cross-reference stream's dictionary that are needed here.
enum class Key : std::size_t { Size, Index, Widths, Filter, Length, Previous, Beside, Count };
constexpr std::array<std::string_view, static_cast<std::size_t>(Key::Count)> keyNames = {
    "Size", "Index", "W", "Filter", "Length", "Prev", "XRefStm"};

class SectionKeys final : public ScanSink {
public:
    void reference(std::uint32_t, std::uint32_t) override {}
    void beforeEntry(std::string_view) override {}

    void afterEntry(std::string_view key, std::string_view value) override
    {
        const auto found = std::find(keyNames.begin(), keyNames.end(), key);
        if (found != keyNames.end()) {
            values_[static_cast<std::size_t>(found - keyNames.begin())] = trimmed(value);
        }
    }

    const std::string& text(Key key) const { return values_[static_cast<std::size_t>(key)]; }

    std::optional<std::uint64_t> number(Key key) const { return unsignedIn(text(key)); }

    /// The numbers of an array, as far as these are numbers.
    std::vector<std::uint64_t> numbers(Key key) const
    {
        std::vector<std::uint64_t> found;
        const std::string& value = text(key);
        std::uint64_t number = 0;
        for (std::size_t at = 1; (at = skipSpace(value, at)) < value.size();) {
            if (!readUnsigned(value, at, number)) {
                break;
            }
            found.push_back(number);
        }
        return found;
    }

private:
    std::array<std::string, keyNames.size()> values_; // empty for what isn't there
};

/// Counts entries of a decoded stream, up to a limit.
class EntryCounter final : public Pipeline {
public:
    EntryCounter(std::uint64_t typeWidth, std::uint64_t width, const Entries& most)
        : Pipeline("entries", nullptr), typeWidth_(typeWidth), width_(width), most_(most)
    {
    }

    void write(unsigned char const* data, size_t length) override
    {
        for (std::size_t i = 0; i < length; ++i) {
            isUsed_ = isUsed_ || typeWidth_ == 0 || (at_ < typeWidth_ && data[i] != 0);
            if (++at_ == width_) {
                at_ = 0;
                ++counted.all;
                counted.used += isUsed_ ? 1 : 0;
                isUsed_ = false;
            }
        }
        if (counted.used > most_.used || counted.all > most_.all) {
            throw std::runtime_error("too many entries"); // which libqpdf takes as the end of it
        }
    }
    void finish() override {}

    Entries counted;

private:
    std::uint64_t typeWidth_;
    std::uint64_t width_;
    Entries most_;
    std::uint64_t at_ = 0;
    bool isUsed_ = false;
};

/// Follows the sections of a file from the newest to the oldest.
class SectionReader {
public:
    explicit SectionReader(io::ByteSource& source)
        : source_(source), text_(source), most_{mostEntries(source.size()), 0}
    {
        most_.all = most_.used + mostFreeEntries;
    }

    bool hasTooMany()
    {
        std::set<std::uint64_t> seen;
        std::optional<std::uint64_t> next = newestSection();
        while (next && *next > 0 && seen.insert(*next).second) {
            next = readSection(*next);
            if (total_.used > most_.used || total_.all > most_.all) {
                return true;
            }
        }
        return false;
    }

private:
    std::string part(std::int64_t offset, std::int64_t length)
    {
        std::string bytes(static_cast<std::size_t>(length), '\0');
        bytes.resize(source_.readAt(offset, bytes.data(), bytes.size()));
        return bytes;
    }

    std::optional<std::uint64_t> newestSection();
    std::optional<std::uint64_t> readSection(std::uint64_t offset);
    std::optional<std::uint64_t> readTable(std::size_t at);
    std::optional<std::uint64_t> readStream(std::uint64_t offset, std::size_t at);
    bool scan(std::size_t at, SectionKeys& keys);
    Entries entriesOf(const SectionKeys& keys, std::uint64_t data);
    std::uint64_t lengthOf(const SectionKeys& keys, std::uint64_t data);
    void countEntries(EntryCounter& counter, std::uint64_t data, std::uint64_t length);

    io::ByteSource& source_;
    FileText text_;
    Entries most_;
    Entries total_;
    std::uint64_t base_ = 0;                   // offsets count from the header
    std::size_t valueEnd_ = 0;                 // of the dictionary that was scanned last
    std::string dictionary_;                   // its text, where it is a stream's
    std::map<std::uint64_t, Entries> streams_; // by offset: tables may name one often
};

/// libqpdf looks for the header and for the last "startxref" in so many bytes.
constexpr std::size_t searchedAtEnds = 1054;

std::optional<std::uint64_t> SectionReader::newestSection()
{
    const auto size = static_cast<std::uint64_t>(source_.size());
    text_.open(0, searchedAtEnds);
    const std::size_t header = text_.view().substr(0, searchedAtEnds).find("%PDF-");
    base_ = header == std::string_view::npos ? 0 : header;
    if (!text_.open(size - std::min<std::uint64_t>(size, searchedAtEnds), searchedAtEnds)) {
        return std::nullopt;
    }
    const std::string_view tail = text_.view().substr(0, searchedAtEnds);
    const std::size_t keyword = tail.rfind("startxref");
    std::uint64_t offset = 0;
    std::size_t at = keyword + std::string_view("startxref").size();
    if (keyword == std::string_view::npos ||
        !readUnsigned(tail, at = skipSpace(tail, at), offset)) {
        return std::nullopt;
    }
    return offset;
}

/// Counts a section's entries, and says where the one before it is.
std::optional<std::uint64_t> SectionReader::readSection(std::uint64_t offset)
{
    if (!text_.open(base_ + offset, 256)) {
        return std::nullopt;
    }
    std::size_t at = 0;
    while (at < text_.view().size() && isWhiteSpace(text_.view()[at])) {
        ++at;
    }
    return text_.view().substr(at, 4) == "xref" ? readTable(at + 4) : readStream(offset, at);
}

/// A table's entries have their own bytes in the file, which bounds them; only its trailer counts.
std::optional<std::uint64_t> SectionReader::readTable(std::size_t at)
{
    const std::string_view word = "trailer";
    std::size_t trailer = 0;
    while ((trailer = text_.view().find(word, at)) == std::string_view::npos) {
        at = std::max(at, text_.view().size() - std::min(text_.view().size(), word.size()));
        if (!text_.extend()) {
            return std::nullopt;
        }
    }
    SectionKeys keys;
    if (!scan(trailer + word.size(), keys)) {
        return std::nullopt;
    }
    const std::optional<std::uint64_t> stream = keys.number(Key::Beside);
    if (stream && text_.open(base_ + *stream, 256)) {
        readStream(*stream, skipSpace(text_.view(), 0));
    }
    return keys.number(Key::Previous);
}

/// The stream at an offset, which begins at a place of the text. Any number of tables may name it.
std::optional<std::uint64_t> SectionReader::readStream(std::uint64_t offset, std::size_t at)
{
    if (const auto known = streams_.find(offset); known != streams_.end()) {
        total_.used += known->second.used;
        total_.all += known->second.all;
        return std::nullopt;
    }
    std::uint64_t number = 0;
    const std::string_view view = text_.view();
    const bool isObject = readUnsigned(view, at, number) && (at = skipSpace(view, at)) > 0 &&
                          readUnsigned(view, at, number) && (at = skipSpace(view, at)) > 0 &&
                          view.substr(at, 3) == "obj";
    SectionKeys keys;
    if (!isObject || !scan(at + 3, keys)) {
        return std::nullopt;
    }
    at = skipSpace(text_.view(), valueEnd_);
    if (text_.view().substr(at, 6) != "stream") {
        return std::nullopt;
    }
    at += 6;
    at += text_.view().substr(at, 1) == "\r" ? 1 : 0;
    at += text_.view().substr(at, 1) == "\n" ? 1 : 0;
    const Entries entries = entriesOf(keys, text_.offset() + at);
    streams_[offset] = entries;
    total_.used += entries.used;
    total_.all += entries.all;
    return keys.number(Key::Previous);
}

bool SectionReader::scan(std::size_t at, SectionKeys& keys)
{
    for (;;) {
        SectionKeys found;
        ValueScanner scanner(text_.view(), found);
        const ScanResult result = scanner.scan(at);
        if (result == ScanResult::Complete) {
            valueEnd_ = scanner.position();
            text_.require(valueEnd_ + 256);
            dictionary_ = trimmed(text_.view().substr(at, valueEnd_ - at));
            keys = std::move(found);
            return scanner.isDictionary();
        }
        if (result == ScanResult::Malformed || !text_.extend()) {
            return false;
        }
    }
}

/// Where the length isn't right, libqpdf looks for the end.
std::uint64_t SectionReader::lengthOf(const SectionKeys& keys, std::uint64_t data)
{
    const std::uint64_t left = static_cast<std::uint64_t>(source_.size()) - data;
    const std::uint64_t length = keys.number(Key::Length).value_or(left);
    const bool isRight = length < left && text_.open(data + length, 16) &&
                         text_.view().substr(0, 16).find("endstream") != std::string_view::npos;
    return isRight ? length : std::min(left, harmlessBytes);
}

/// The entries of a stream by where its data begin: as many as it says, unless that or its data are
/// so many that they have to be looked at.
Entries SectionReader::entriesOf(const SectionKeys& keys, std::uint64_t data)
{
    const std::vector<std::uint64_t> widths = keys.numbers(Key::Widths);
    const std::uint64_t width = std::accumulate(widths.begin(), widths.end(), std::uint64_t(0));
    if (widths.size() != 3 || width == 0 || width > 64) {
        return {}; // libqpdf doesn't take it
    }
    const std::vector<std::uint64_t> index = keys.numbers(Key::Index);
    std::uint64_t said = index.empty() ? keys.number(Key::Size).value_or(0) : 0;
    for (std::size_t i = 1; i < index.size(); i += 2) {
        said += index[i];
    }
    const std::uint64_t length = lengthOf(keys, data);
    const std::string_view filter = keys.text(Key::Filter);
    const bool mayGrow =
        std::count(filter.begin(), filter.end(), '/') > 1 || length * mostGrowth > harmlessBytes;
    if (total_.used + said <= most_.used && !mayGrow) {
        return {said, said};
    }
    EntryCounter counter(widths[0], width, most_);
    countEntries(counter, data, length);
    return counter.counted;
}

void SectionReader::countEntries(EntryCounter& counter, std::uint64_t data, std::uint64_t length)
{
    try {
        QPDF scratch;
        scratch.setSuppressWarnings(true);
        scratch.emptyPDF();
        QPDFObjectHandle stream = scratch.newStream(
            part(static_cast<std::int64_t>(data), static_cast<std::int64_t>(length)));
        stream.replaceDict(QPDFObjectHandle::parse(&scratch, dictionary_));
        stream.pipeStreamData(&counter, nullptr, 0, qpdf_dl_specialized, true);
    } catch (const std::runtime_error&) {
        return; // what can't be decoded has no entries for libqpdf either
    }
}

} // namespace

std::uint64_t mostEntries(std::int64_t fileSize)
{
    return 1'000'000 + static_cast<std::uint64_t>(fileSize) / 4;
}

std::uint64_t mostDecodedBytes(std::int64_t fileSize)
{
    return 4U * 1024 * 1024 + 64 * static_cast<std::uint64_t>(fileSize);
}

std::uint64_t mostReferences(std::int64_t fileSize)
{
    return 1'000'000 + 4 * static_cast<std::uint64_t>(fileSize);
}

bool hasExcessiveCrossReferences(io::ByteSource& source)
{
    return SectionReader(source).hasTooMany();
}

} // namespace karvel::index
