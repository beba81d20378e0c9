#include "KarvelPDFLibrary/index/CrossReferenceReader.h"

#include "KarvelPDFLibrary/base/LargeVectors.h"
#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/CrossReferenceCount.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <set>
#include <string_view>

namespace karvel::index {

namespace {

/// libqpdf looks for "startxref" in so many bytes at the end.
constexpr std::uint64_t searched = 1054;

/// Longer trailers, and files with more sections, are left to libqpdf.
constexpr std::size_t mostOfTrailer = 16 * 1024;
constexpr std::size_t mostSections = 1000;

/// A table's entries are taken so many at a time.
constexpr std::uint64_t entriesAtOnce = 3000;
constexpr std::size_t entryLength = 20;

/// Where anything is not as it should be; caught in readCrossReferences().
struct Unusual {};

void must(bool is)
{
    if (!is) {
        throw Unusual();
    }
}

/// White space for everybody; readers differ about some others.
bool isPlainSpace(char ch)
{
    return ch == ' ' || ch == '\n' || ch == '\r';
}

/// A number that is all of a text.
std::uint64_t numberIn(std::string_view text)
{
    const std::optional<std::uint64_t> number = unsignedIn(text);
    must(number.has_value());
    return *number;
}

/// The numbers of an array of nothing else.
std::vector<std::uint64_t> numbersIn(std::string_view text)
{
    std::vector<std::uint64_t> numbers;
    must(text.size() >= 2 && text.front() == '[' && text.back() == ']');
    text = text.substr(1, text.size() - 2);
    for (std::size_t at = skipSpace(text, 0); at < text.size(); at = skipSpace(text, at)) {
        must(readUnsigned(text, at, numbers.emplace_back()));
        must(at == text.size() || isWhiteSpace(text[at]));
    }
    return numbers;
}

/// A number of so many digits.
std::optional<std::uint64_t> fixedNumber(const char* digits, std::size_t count)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!isDigit(digits[i])) {
            return std::nullopt;
        }
        number = number * 10 + static_cast<std::uint64_t>(digits[i] - '0');
    }
    return number;
}

class Reader {
public:
    explicit Reader(io::ByteSource& source)
        : source_(source), text_(source), size_(static_cast<std::uint64_t>(source.size())),
          mostEntries_(mostEntries(source.size()))
    {
    }

    CrossReferences run()
    {
        readHeader();
        std::set<std::uint64_t> seen;
        for (std::uint64_t next = newestSection(); next > 0; next = readSection(next)) {
            must(seen.insert(next).second && seen.size() <= mostSections);
        }
        const auto trailer = DictionaryText::read(found_.trailer);
        must(trailer && numberIn(trimmed(trailer->value("Size"))) == highest_ + 1);
        must(!trailer->has("Encrypt") && readReference(trailer->value("Root")));
        for (const auto& [number, own] : ownEntries_) {
            const CrossReference& known = entry(number);
            must(known.kind == own.kind && known.place == own.place &&
                 known.generation == own.generation);
        }
        return std::move(found_);
    }

private:
    struct Freed {
        std::uint64_t number;
        std::uint64_t generation;
    };

    void readHeader();
    std::uint64_t newestSection();
    std::uint64_t readSection(std::uint64_t offset);
    std::uint64_t readTable(std::uint64_t offset);
    std::uint64_t readSubsection(std::uint64_t offset, std::vector<Freed>& freed);
    void readEntries(std::uint64_t offset, std::uint64_t first, std::uint64_t count,
                     std::vector<Freed>& freed);
    std::uint64_t readStream(std::uint64_t offset);
    void readEntriesOfStream(std::size_t at, const DictionaryText& dictionary);
    std::string dataAt(std::size_t at, const DictionaryText& dictionary, std::uint64_t length);
    void useEntryOfStream(std::uint64_t number, const std::array<std::uint64_t, 3>& fields);

    std::string dictionaryAt(std::size_t at);
    void use(std::uint64_t number, CrossReference::Kind kind, std::uint64_t place,
             std::uint64_t generation);
    void free(std::uint64_t number, std::uint64_t generation);
    CrossReference& entry(std::uint64_t number);

    /// Steps over "word", which must be there and end there.
    void passWord(std::size_t& at, std::string_view word)
    {
        text_.require(at + 64);
        const std::string_view text = text_.view();
        must(text.substr(std::min(at, text.size()), word.size()) == word);
        at += word.size();
        must(at < text.size() && (isPlainSpace(text[at]) || isDelimiter(text[at])));
    }

    io::ByteSource& source_;
    FileText text_;
    std::uint64_t size_;
    std::uint64_t mostEntries_;
    std::uint64_t entriesSeen_ = 0;
    std::uint64_t highest_ = 0; // number, free ones included

    /// What must be said of streams of cross-references themselves: libqpdf takes these for objects
    /// of the file when it reads them, whatever is said of them later.
    std::vector<std::pair<std::uint64_t, CrossReference>> ownEntries_;
    CrossReferences found_;
};

void Reader::readHeader()
{
    must(text_.open(0, 16));
    const std::string_view text = text_.view();
    must(text.size() > 8 && text.substr(0, 5) == "%PDF-" && isDigit(text[5]) && text[6] == '.' &&
         isDigit(text[7]) && isPlainSpace(text[8]));
    found_.version = text.substr(5, 3);
}

/// The file must end with "startxref", a number and "%%EOF".
std::uint64_t Reader::newestSection()
{
    const std::uint64_t length = std::min(size_, searched);
    must(text_.open(size_ - length, length));
    std::string_view tail = text_.view().substr(0, length);
    while (!tail.empty() && isPlainSpace(tail.back())) {
        tail.remove_suffix(1);
    }
    const std::string_view word = "startxref";
    const std::size_t start = tail.rfind(word);
    must(start != std::string_view::npos && start > 0 && isPlainSpace(tail[start - 1]));
    std::size_t at = start + word.size();
    const auto passSpace = [&] {
        must(at < tail.size() && isPlainSpace(tail[at]));
        while (at < tail.size() && isPlainSpace(tail[at])) {
            ++at;
        }
    };
    passSpace();
    std::uint64_t offset = 0;
    must(readUnsigned(tail, at, offset) && offset > 0);
    passSpace();
    must(tail.substr(at) == "%%EOF");
    return offset;
}

/// Takes a section's entries, and says where the one before it is; 0 when there is none.
std::uint64_t Reader::readSection(std::uint64_t offset)
{
    must(text_.open(offset, 64));
    return text_.view().substr(0, 4) == "xref" ? readTable(offset) : readStream(offset);
}

/// A dictionary in which nothing is odd, and something after it.
std::string Reader::dictionaryAt(std::size_t at)
{
    text_.require(at + mostOfTrailer);
    const std::string_view text = text_.view();
    const auto dictionary = DictionaryText::readPlainly(text.substr(std::min(at, text.size())));
    must(dictionary.has_value());
    return std::string(dictionary->text()) + " endobj ";
}

std::uint64_t Reader::readTable(std::uint64_t offset)
{
    const std::string_view view = text_.view();
    std::size_t at = std::strlen("xref");
    while (at < view.size() && at < 6 && isPlainSpace(view[at])) {
        ++at;
    }
    must(at > 4);
    std::vector<Freed> freed;
    offset += at;
    do {
        offset = readSubsection(offset, freed);
        must(text_.open(offset, 64) && !text_.view().empty());
    } while (isDigit(text_.view().front()));
    at = 0;
    passWord(at, "trailer");
    const std::string text = dictionaryAt(at);
    const auto trailer = DictionaryText::read(text);
    if (found_.trailer.empty()) {
        found_.trailer = text;
    }
    if (trailer->has("XRefStm")) {
        readStream(numberIn(trimmed(trailer->value("XRefStm"))));
    }
    for (const Freed& entry : freed) { // what the stream beside the table uses counts before
        free(entry.number, entry.generation);
    }
    return trailer->has("Prev") ? numberIn(trimmed(trailer->value("Prev"))) : 0;
}

/// A line with the first number and the count, and as many entries. Says where it ends.
std::uint64_t Reader::readSubsection(std::uint64_t offset, std::vector<Freed>& freed)
{
    must(text_.open(offset, 64));
    const std::string_view view = text_.view();
    std::size_t at = 0;
    std::uint64_t first = 0;
    std::uint64_t count = 0;
    must(readUnsigned(view, at, first) && view.substr(at, 1) == " " &&
         readUnsigned(view, ++at, count));
    const std::size_t lineEnd = at;
    while (at < view.size() && isPlainSpace(view[at])) {
        ++at;
    }
    must(at > lineEnd && at - lineEnd <= 3 && at < 40 && first <= INT_MAX);
    must(count <= (size_ - offset) / entryLength);
    readEntries(offset + at, first, count, freed);
    return offset + at + count * entryLength;
}

void Reader::readEntries(std::uint64_t offset, std::uint64_t first, std::uint64_t count,
                         std::vector<Freed>& freed)
{
    entriesSeen_ += count;
    must(entriesSeen_ <= mostEntries_ && first + count <= mostEntries_);
    if (count > 0) {
        entry(first + count - 1); // makes room for all
    }
    for (std::uint64_t done = 0; done < count;) {
        const std::uint64_t some = std::min(count - done, entriesAtOnce);
        must(text_.open(offset + done * entryLength, some * entryLength) &&
             text_.view().size() >= some * entryLength);
        const char* row = text_.view().data();
        for (const std::uint64_t end = done + some; done < end; ++done, row += entryLength) {
            const auto place = fixedNumber(row, 10);
            const auto generation = fixedNumber(row + 11, 5);
            const char last = row[19];
            const bool ends =
                row[18] == ' ' ? last == '\n' || last == '\r' : row[18] == '\r' && last == '\n';
            must(place && generation && row[10] == ' ' && row[16] == ' ' && ends);
            if (row[17] == 'n') {
                use(first + done, CrossReference::Kind::InFile, *place, *generation);
            } else {
                must(row[17] == 'f');
                freed.push_back({first + done, *generation});
            }
        }
    }
}

CrossReference& Reader::entry(std::uint64_t number)
{
    highest_ = std::max(highest_, number);
    if (number >= found_.entries.size()) {
        resizeLarge(found_.entries, number + 1);
    }
    return found_.entries[number];
}

/// What was read before is newer, and counts. One number under two generations is for libqpdf.
void Reader::use(std::uint64_t number, CrossReference::Kind kind, std::uint64_t place,
                 std::uint64_t generation)
{
    must(number > 0 && generation <= UINT16_MAX);
    CrossReference& known = entry(number);
    const bool isUsed = known.kind != CrossReference::Kind::None;
    if (known.isFreed || (isUsed && known.generation == generation)) {
        return;
    }
    must(!isUsed);
    known.kind = kind;
    known.place = place;
    known.generation = static_cast<std::uint16_t>(generation);
    ++found_.count;
}

void Reader::free(std::uint64_t number, std::uint64_t generation)
{
    CrossReference& known = entry(number);
    const bool isUsed = known.kind != CrossReference::Kind::None;
    known.isFreed = known.isFreed || !isUsed || known.generation != generation;
}

std::uint64_t Reader::readStream(std::uint64_t offset)
{
    must(offset > 0 && text_.open(offset, 64));
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    std::size_t at = 0;
    const auto passSpace = [&] {
        const std::size_t from = at;
        while (at < text_.view().size() && isPlainSpace(text_.view()[at])) {
            ++at;
        }
        must(at > from);
    };
    must(readUnsigned(text_.view(), at, number) && number > 0 && number <= INT_MAX);
    passSpace();
    must(readUnsigned(text_.view(), at, generation));
    passSpace();
    passWord(at, "obj");
    const std::string text = dictionaryAt(at);
    const auto dictionary = DictionaryText::read(text);
    must(trimmed(dictionary->value("Type")) == "/XRef" && !dictionary->has("F"));
    if (found_.trailer.empty()) {
        found_.trailer = text;
    }

    const bool isKnown = number < found_.entries.size() &&
                         found_.entries[number].kind != CrossReference::Kind::None &&
                         found_.entries[number].generation == generation;
    if (!isKnown) {
        must(number < mostEntries_ && generation <= UINT16_MAX);
        ownEntries_.push_back({number,
                               {offset, static_cast<std::uint16_t>(generation),
                                CrossReference::Kind::InFile, false}});
    }
    readEntriesOfStream(at, *dictionary);
    return dictionary->has("Prev") ? numberIn(trimmed(dictionary->value("Prev"))) : 0;
}

/// Takes the entries of a stream whose dictionary begins there.
void Reader::readEntriesOfStream(std::size_t at, const DictionaryText& dictionary)
{
    const std::vector<std::uint64_t> widths = numbersIn(trimmed(dictionary.value("W")));
    must(widths.size() == 3 && *std::max_element(widths.begin(), widths.end()) <= 7);
    const std::uint64_t width = widths[0] + widths[1] + widths[2];
    std::vector<std::uint64_t> ranges = {0, numberIn(trimmed(dictionary.value("Size")))};
    if (dictionary.has("Index")) {
        ranges = numbersIn(trimmed(dictionary.value("Index")));
    }
    must(width > 0 && !ranges.empty() && ranges.size() % 2 == 0);
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < ranges.size(); i += 2) {
        // libqpdf takes one entry for a range of none.
        must(ranges[i + 1] > 0 && ranges[i + 1] <= mostEntries_ && ranges[i] <= mostEntries_ &&
             ranges[i] + ranges[i + 1] <= mostEntries_);
        count += ranges[i + 1];
        must(entriesSeen_ + count <= mostEntries_);
    }
    entriesSeen_ += count;
    const std::string data = dataAt(at, dictionary, count * width);
    const char* next = data.data();
    for (std::size_t i = 0; i < ranges.size(); i += 2) {
        for (std::uint64_t k = 0; k < ranges[i + 1]; ++k) {
            std::array<std::uint64_t, 3> fields = {widths[0] == 0 ? 1U : 0U, 0, 0};
            for (std::size_t field = 0; field < fields.size(); ++field) {
                for (std::uint64_t byte = 0; byte < widths[field]; ++byte) {
                    fields[field] = fields[field] << 8U | static_cast<unsigned char>(*next++);
                }
            }
            useEntryOfStream(ranges[i] + k, fields);
        }
    }
}

void Reader::useEntryOfStream(std::uint64_t number, const std::array<std::uint64_t, 3>& fields)
{
    switch (fields[0]) {
    case 0:
        free(number, 0);
        break;
    case 1:
        use(number, CrossReference::Kind::InFile, fields[1], fields[2]);
        break;
    case 2:
        must(fields[1] <= INT_MAX && fields[2] <= INT_MAX);
        use(number, CrossReference::Kind::InObjectStream, fields[1] << 32U | fields[2], 0);
        break;
    default:
        throw Unusual();
    }
}

/// The data of a stream whose dictionary begins there, which must have a length.
std::string Reader::dataAt(std::size_t at, const DictionaryText& dictionary, std::uint64_t length)
{
    const std::string_view filter = trimmed(dictionary.value("Filter"));
    const std::string_view parameters = trimmed(dictionary.value("DecodeParms"));
    must((filter.empty() || filter == "/FlateDecode") &&
         referencesIn(std::string(parameters)).empty());
    at += dictionary.text().size();
    text_.require(at + 64);
    at = skipSpace(text_.view(), at);
    passWord(at, "stream");
    at += text_.view()[at] == '\r' ? 1 : 0;
    must(at < text_.view().size() && text_.view()[at] == '\n');
    const std::uint64_t start = text_.offset() + at + 1;
    const std::uint64_t packed = numberIn(trimmed(dictionary.value("Length")));
    // Deflating makes nothing much longer; a text of that length may not be worth reading.
    must(start < size_ && packed < size_ - start && packed <= length + length / 8 + 1024);
    std::string data(packed, '\0');
    must(source_.readAt(static_cast<std::int64_t>(start), data.data(), packed) == packed);

    must(text_.open(start + packed, 64));
    at = 0;
    while (at < 2 && at < text_.view().size() && isPlainSpace(text_.view()[at])) {
        ++at;
    }
    passWord(at, "endstream");
    at = skipSpace(text_.view(), at);
    passWord(at, "endobj");
    if (!filter.empty()) {
        data = inflated(data, parameters, length);
    }
    must(data.size() == length);
    return data;
}

} // namespace

std::optional<CrossReferences> readCrossReferences(io::ByteSource& source)
{
    try {
        return Reader(source).run();
    } catch (const Unusual&) {
        return std::nullopt;
    } catch (const std::exception&) { // a stream can't be decoded, or the source not be read
        return std::nullopt;
    }
}

} // namespace karvel::index
