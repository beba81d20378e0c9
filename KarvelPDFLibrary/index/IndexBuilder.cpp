#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include "KarvelPDFLibrary/base/LargeVectors.h"
#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/CrossReferenceCount.h"
#include "KarvelPDFLibrary/index/CrossReferenceReader.h"
#include "KarvelPDFLibrary/index/DecodedStreams.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ObjectHeader.h"
#include "KarvelPDFLibrary/index/ObjectNotes.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <stdexcept>

namespace karvel::index {

namespace {

/// Files with more objects, or object streams with more data, are left to libqpdf.
constexpr std::uint64_t mostObjects = 50'000'000;
constexpr std::uint64_t mostIndexedBytes = 256U * 1024 * 1024;

/// Why a file has no index; caught where the index is built.
struct NotFit {
    std::string reason;
};

[[noreturn]] void notFit(std::uint32_t object, const char* what)
{
    throw NotFit{"object " + std::to_string(object) + ": " + what};
}

/// Adds the numbers that stand before "obj" in a text: "12 0 obj".
void appendNumbersOfObjects(std::string_view text, std::vector<std::uint32_t>& numbers)
{
    const auto back = [&text](std::size_t at, auto belongs) {
        while (at > 0 && belongs(text[at - 1])) {
            --at;
        }
        return at;
    };
    const auto isDigit = [](char ch) { return ch >= '0' && ch <= '9'; };
    for (std::size_t at = text.find("obj"); at != std::string_view::npos;
         at = text.find("obj", at + 3)) {
        const std::size_t generation = back(back(at, isWhiteSpace), isDigit);
        std::size_t number = back(back(generation, isWhiteSpace), isDigit);
        std::uint64_t value = 0;
        if (readUnsigned(text, number, value) && value <= 0x7FFFFFFF) {
            numbers.push_back(static_cast<std::uint32_t>(value));
        }
    }
}

} // namespace

/// Goes through a file's objects in the order in which they lie there.
class IndexBuilder {
public:
    IndexBuilder(io::ObjectFile& file, io::ByteSource& source, DecodedStreams& streams,
                 FileState state, ReferenceIndex& index)
        : file_(file), streams_(streams), index_(index), text_(source), lengths_(source),
          notes_(index), fileSize_(source.size()), state_(state)
    {
        index_.fileState_ = state;
        streams_.clear();
    }

    void run(const CrossReferences* read)
    {
        if (read != nullptr) {
            take(*read);
        } else {
            take(file_.get().getXRefTable());
        }
        prepare();
        reserveLarge(index_.fileOrder_, inFile_.size());
        for (std::size_t i = 0; i < inFile_.size(); ++i) {
            noteNumbersUpTo(inFile_[i].offset);
            nextStart_ = i + 1 < inFile_.size() ? inFile_[i + 1].offset
                                                : static_cast<std::uint64_t>(fileSize_);
            scanInFile(inFile_[i]);
            index_.fileOrder_.push_back(inFile_[i].object);
        }
        noteNumbersUpTo(static_cast<std::uint64_t>(fileSize_));
        for (const std::uint32_t stream : containers_) {
            scanObjectStream(stream);
        }
        notes_.finish();
        finishDoubts();
    }

private:
    bool isStrict() const { return state_ == FileState::Whole; }

    struct Placed {
        std::uint64_t offset;
        std::uint32_t object;
    };

    void take(const CrossReferences& read);
    void take(const CrossReferenceTable& table);
    void makeRoom(std::uint64_t highest, std::uint64_t objects);
    void placeInFile(std::uint32_t number, std::uint64_t offset);
    void placeInStream(std::uint32_t number, std::uint32_t stream, std::uint32_t position);
    void prepare();
    void scanInFile(const Placed& placed);
    void scanObjectStream(std::uint32_t stream);

    std::size_t scanValue(std::uint32_t number, std::size_t start, bool& isDictionary);
    std::optional<std::size_t> passStream(std::uint32_t number, std::size_t at);
    std::optional<std::uint64_t> streamLength(std::uint32_t number);
    std::optional<std::uint64_t> numberInFile(const Reference& reference);
    DecodedStreams::Stream decoded(std::uint32_t number);
    void keep(IndexedObject& object, std::uint32_t number, int flags);

    std::size_t passNumber(const Placed& placed);
    void noteDoubt(std::uint32_t number, Doubt::Kind kind, std::uint64_t start = 0);
    void noteNumbersUpTo(std::uint64_t offset);
    void finishDoubts();
    void mustEndWord(std::uint32_t number, std::size_t at);

    io::ObjectFile& file_;
    DecodedStreams& streams_;
    ReferenceIndex& index_;
    FileText text_;
    FileText lengths_; // where lengths of streams are objects of their own
    ObjectNotes notes_;
    std::int64_t fileSize_;
    std::vector<Placed> inFile_;
    std::vector<std::uint32_t> containers_;
    std::map<std::uint32_t, std::vector<std::uint32_t>> membersOf_;

    std::uint64_t previousEnd_ = 0;
    std::uint64_t nextStart_ = 0;
    std::uint64_t decodedBytes_ = 0;
    FileState state_;
    std::size_t tableSize_ = 0;
    ReadingDoubts reading_;
    std::vector<std::uint32_t> otherNumbers_; // of what the table doesn't name
};

void IndexBuilder::makeRoom(std::uint64_t highest, std::uint64_t objects)
{
    tableSize_ = objects;
    if (highest >= mostObjects || isOutOfProportion(highest, objects)) {
        throw NotFit{"too high an object number"};
    }
    resizeLarge(index_.objects_, highest + 1);
}

void IndexBuilder::placeInFile(std::uint32_t number, std::uint64_t offset)
{
    index_.objects_[number].start = offset;
    inFile_.push_back({offset, number});
}

void IndexBuilder::placeInStream(std::uint32_t number, std::uint32_t stream, std::uint32_t position)
{
    IndexedObject& object = index_.objects_[number];
    object.container = stream;
    object.start = position;
    membersOf_[stream].push_back(number);
}

void IndexBuilder::take(const CrossReferences& read)
{
    std::size_t size = read.entries.size(); // without the free ones at the end
    while (size > 1 && read.entries[size - 1].kind == CrossReference::Kind::None) {
        --size;
    }
    makeRoom(size == 0 ? 0 : size - 1, read.count);
    reserveLarge(inFile_, read.count);
    for (std::uint32_t number = 0; number < size; ++number) {
        const CrossReference& entry = read.entries[number];
        if (entry.kind == CrossReference::Kind::None) {
            continue;
        }
        index_.objects_[number].kind = Kind::Other;
        index_.objects_[number].generation = entry.generation;
        if (entry.kind == CrossReference::Kind::InFile) {
            placeInFile(number, entry.place);
        } else {
            placeInStream(number, static_cast<std::uint32_t>(entry.place >> 32U),
                          static_cast<std::uint32_t>(entry.place));
        }
    }
    const auto trailer = DictionaryText::read(read.trailer);
    index_.usesCrossReferenceStream_ =
        (trailer && trailer->has("W") && trimmed(trailer->value("W")) != "null") ||
        !membersOf_.empty();
}

void IndexBuilder::take(const CrossReferenceTable& table)
{
    makeRoom(table.empty() ? 0 : static_cast<std::uint64_t>(table.rbegin()->first.getObj()),
             table.size());
    for (const auto& [id, entry] : table) {
        const auto number = static_cast<std::uint32_t>(id.getObj());
        if (!isStrict() && entry.getType() == 1 && entry.getOffset() == 0) {
            index_.doubts_.push_back({number, id.getGen(), Doubt::Kind::Nowhere});
            continue;
        }
        IndexedObject& object = index_.objects_[number];
        if (object.kind != Kind::Missing || id.getGen() > 0xFFFF) {
            notFit(number, "is in the cross-reference table twice");
        }
        object.kind = Kind::Other;
        object.generation = static_cast<std::uint16_t>(id.getGen());
        if (entry.getType() == 1) {
            placeInFile(number, static_cast<std::uint64_t>(entry.getOffset()));
        } else if (entry.getType() == 2) {
            placeInStream(number, static_cast<std::uint32_t>(entry.getObjStreamNumber()),
                          static_cast<std::uint32_t>(entry.getObjStreamIndex()));
        } else {
            notFit(number, "has an unknown kind of cross-reference entry");
        }
    }
    index_.usesCrossReferenceStream_ = file_.get().getTrailer().hasKey("/W") || !membersOf_.empty();
}

/// Puts the objects in the order in which they lie in the file. Writers number most of them in that
/// order, in a few runs.
void IndexBuilder::prepare()
{
    constexpr std::size_t fewRuns = 16;
    const auto isBefore = [](const Placed& a, const Placed& b) { return a.offset < b.offset; };
    std::vector<std::ptrdiff_t> ends; // of runs in order
    for (auto end = inFile_.begin(); end != inFile_.end() && ends.size() < fewRuns;) {
        end = std::is_sorted_until(end, inFile_.end(), isBefore);
        ends.push_back(end - inFile_.begin());
    }
    if (!ends.empty() && ends.back() != static_cast<std::ptrdiff_t>(inFile_.size())) {
        std::sort(inFile_.begin(), inFile_.end(), isBefore);
    } else {
        for (std::size_t i = 1; i < ends.size(); ++i) {
            std::inplace_merge(inFile_.begin(), inFile_.begin() + ends[i - 1],
                               inFile_.begin() + ends[i], isBefore);
        }
    }
    for (const auto& [stream, members] : membersOf_) {
        containers_.push_back(stream);
    }
    text_.open(0, 8);
    if (text_.view().substr(0, 5) != "%PDF-") {
        throw NotFit{"the header is not at the beginning"};
    }
}

/// Scans the value at `start` of the opened text; reads more of the file while it is too short.
std::size_t IndexBuilder::scanValue(std::uint32_t number, std::size_t start, bool& isDictionary)
{
    for (;;) {
        notes_.begin();
        ValueScanner scanner(text_.view(), notes_, isStrict() ? nullptr : &reading_);
        const ScanResult result = scanner.scan(start);
        if (result == ScanResult::Complete) {
            isDictionary = scanner.isDictionary();
            notes_.valueEnds(text_.view().substr(start, scanner.position() - start));
            return scanner.position();
        }
        if (result == ScanResult::Malformed || !text_.extend()) {
            notFit(number, "its text does not read as expected");
        }
        notes_.forget();
    }
}

/// Nothing where there is no usable one.
std::optional<std::uint64_t> IndexBuilder::streamLength(std::uint32_t number)
{
    if (const auto length = unsignedIn(notes_.length())) {
        return length;
    }
    if (const auto reference = readReference(notes_.length()); reference && isStrict()) {
        if (const auto known = numberInFile(*reference)) {
            return known;
        }
    }
    QPDFObjectHandle stream =
        file_.get().getObject(static_cast<int>(number), index_.objects_[number].generation);
    QPDFObjectHandle value = stream.isStream() ? stream.getDict().getKey("/Length") : stream;
    const bool isUsable = value.isInteger() && value.getIntValue() >= 0;
    return isUsable ? std::optional(static_cast<std::uint64_t>(value.getIntValue())) : std::nullopt;
}

/// An object that is a number, where that is plain to see.
std::optional<std::uint64_t> IndexBuilder::numberInFile(const Reference& reference)
{
    const bool isThere = index_.targetOf(reference) != 0;
    const IndexedObject* object = isThere ? &index_.object(reference.object) : nullptr;
    if (object == nullptr || object->container != 0 || !lengths_.open(object->start, 64)) {
        return std::nullopt;
    }
    const std::string_view text = lengths_.view();
    const auto header = readObjectHeader(text, reference.object, reference.generation);
    std::size_t at = header ? skipSpace(text, header->end) : 0;
    std::uint64_t number = 0;
    const bool isNumber = header && at > header->end && readUnsigned(text, at, number) &&
                          text.substr(skipSpace(text, at), 6) == "endobj";
    return isNumber ? std::optional(number) : std::nullopt;
}

/// From "stream" on: past "endstream". Nothing where that is not where the length says, of which
/// there is a doubt then.
std::optional<std::size_t> IndexBuilder::passStream(std::uint32_t number, std::size_t at)
{
    at += std::strlen("stream");
    if (!text_.require(at + 2)) {
        notFit(number, "its stream is cut off");
    }
    std::string_view view = text_.view();
    if (view[at] == '\r') {
        ++at;
    }
    if (view[at] != '\n') {
        notFit(number, "its stream does not begin on a line of its own");
    }
    const std::uint64_t data = text_.offset() + at + 1;
    const std::optional<std::uint64_t> length = streamLength(number);
    if (length && data + *length >= data && text_.open(data + *length, 64)) {
        view = text_.view();
        at = view.substr(0, 1) == "\r" ? 1 : 0;
        at += view.substr(at, 1) == "\n" ? 1 : 0;
        if (view.substr(at, 9) == "endstream") {
            return at + 9;
        }
    }
    if (isStrict()) {
        notFit(number, "its stream does not end where its length says");
    }
    noteDoubt(number, Doubt::Kind::Length, data);
    return std::nullopt;
}

void IndexBuilder::keep(IndexedObject& object, std::uint32_t number, int flags)
{
    if (!notes_.keep(object, number, flags)) {
        throw NotFit{"too many references"};
    }
    if (index_.references_.size() > mostReferences(fileSize_)) {
        throw OutOfProportion("it has more references than a file of its size can need");
    }
}

/// An object stream's data. That they are more than is possible is not left to libqpdf, which would
/// read them whole.
DecodedStreams::Stream IndexBuilder::decoded(std::uint32_t number)
{
    const std::uint64_t possible = mostDecodedBytes(fileSize_);
    const std::uint64_t most = std::min(possible, mostIndexedBytes);
    try {
        DecodedStreams::Stream stream =
            streams_.of(number, index_.objects_[number], state_, most - decodedBytes_);
        decodedBytes_ += stream->length();
        return stream;
    } catch (const TooMuchData&) {
        if (most < possible) {
            throw;
        }
        throw OutOfProportion("object stream " + std::to_string(number) +
                              " decodes to more than a file of its size can need");
    }
}

/// Where the value of an object begins.
std::size_t IndexBuilder::passNumber(const Placed& placed)
{
    const std::uint32_t number = placed.object;
    IndexedObject& object = index_.objects_[number];
    if (!text_.open(placed.offset, 256)) {
        notFit(number, "lies outside the file");
    }
    const std::optional<ObjectHeader> header =
        readObjectHeader(text_.view(), number, object.generation);
    if (!header) {
        notFit(number, "is not where the cross-reference table says");
    }
    object.start = placed.offset + header->start;
    if (object.start < previousEnd_) {
        notFit(number, "lies inside another object");
    }
    return header->end;
}

void IndexBuilder::scanInFile(const Placed& placed)
{
    const std::uint32_t number = placed.object;
    IndexedObject& object = index_.objects_[number];
    std::size_t at = passNumber(placed);
    mustEndWord(number, at);
    bool isDictionary = false;
    at = scanValue(number, at, isDictionary);
    int flags = isDictionary ? IsDictionary : 0;
    text_.require(at + 64);
    at = skipSpace(text_.view(), at);
    if (isDictionary && text_.view().substr(at, 6) == "stream") {
        flags |= IsStream;
        const std::optional<std::size_t> end = passStream(number, at);
        if (!end) {
            keep(object, number, flags);
            return;
        }
        mustEndWord(number, at = *end);
        text_.require(at + 64);
        at = skipSpace(text_.view(), at);
    }
    if (text_.view().substr(at, 6) != "endobj") {
        notFit(number, "has no end");
    }
    mustEndWord(number, at += 6);
    while (at < text_.view().size() && isWhiteSpace(text_.view()[at])) {
        ++at;
    }
    if (!isStrict() && text_.offset() + at >= static_cast<std::uint64_t>(fileSize_)) {
        notFit(number, "ends with the file"); // libqpdf doesn't take it then
    }
    object.end = text_.offset() + at;
    previousEnd_ = object.end;
    keep(object, number, flags);
    if (!isStrict() && reading_.any()) {
        noteDoubt(number, Doubt::Kind::Reading);
    }
}

void IndexBuilder::scanObjectStream(std::uint32_t number)
{
    if (!index_.contains(number) || index_.objects_[number].kind != Kind::ObjectStream) {
        notFit(number, "is no object stream, although objects are said to be in it");
    }
    const DecodedStreams::Stream stream = decoded(number);
    if (stream->count < 0 || stream->first < 0) {
        notFit(number, "its header is wrong");
    }
    const std::string& text = stream->text;
    const std::size_t length = stream->length();

    ObjectStreamMembers members;
    members.object = number;
    members.first = static_cast<std::uint64_t>(stream->first);
    std::size_t at = 0;
    for (std::int64_t i = 0; i < stream->count; ++i) {
        std::uint64_t member = 0;
        std::uint64_t offset = 0;
        at = skipSpace(text, at);
        bool good = readUnsigned(text, at, member);
        at = skipSpace(text, at);
        good = good && readUnsigned(text, at, offset);
        const std::uint64_t start = members.first + offset;
        if (!good || start > length) {
            notFit(number, "its header is wrong");
        }
        // An entry that the table overrides is not the object's present value.
        const bool current =
            member < index_.objects_.size() && index_.objects_[member].container == number;
        if (current && index_.objects_[member].end != 0) {
            notFit(number, "holds an object twice");
        }
        if (!current) {
            members.allMembersAreCurrent = false;
            continue;
        }
        IndexedObject& object = index_.objects_[member];
        notes_.begin();
        ValueScanner scanner(text, notes_, isStrict() ? nullptr : &reading_);
        if (scanner.scan(start) != ScanResult::Complete) {
            notFit(static_cast<std::uint32_t>(member), "its text does not read as expected");
        }
        object.start = start;
        object.end = scanner.position();
        notes_.valueEnds(std::string_view(text).substr(start, object.end - start));
        keep(object, static_cast<std::uint32_t>(member), scanner.isDictionary() ? IsDictionary : 0);
        members.members.push_back(static_cast<std::uint32_t>(member));
        if (!isStrict() && reading_.any()) {
            noteDoubt(static_cast<std::uint32_t>(member), Doubt::Kind::Reading);
        }
    }
    if (members.members.size() != membersOf_[number].size()) {
        notFit(number, "does not hold the objects that are said to be in it");
    }
    index_.objectStreams_.push_back(std::move(members));
}

void IndexBuilder::noteDoubt(std::uint32_t number, Doubt::Kind kind, std::uint64_t start)
{
    IndexedObject& object = index_.objects_[number];
    if (kind == Doubt::Kind::Length) {
        object.end = previousEnd_ = start;
    }
    index_.doubts_.push_back({number, object.generation, kind, start, nextStart_});
}

/// libqpdf takes a word that goes on for another one.
void IndexBuilder::mustEndWord(std::uint32_t number, std::size_t at)
{
    if (isStrict()) {
        return;
    }
    const bool ends =
        text_.require(at + 1) && (isWhiteSpace(text_.view()[at]) || isDelimiter(text_.view()[at]));
    if (!ends) {
        notFit(number, "runs into what follows it");
    }
}

/// Notes the numbers of objects between those of the table, up to an offset.
void IndexBuilder::noteNumbersUpTo(std::uint64_t offset)
{
    constexpr std::size_t window = 64 * 1024;
    constexpr std::size_t overlap = 64;
    for (std::uint64_t at = previousEnd_; state_ == FileState::Rebuilt && at < offset;) {
        text_.open(at, window);
        const auto left = static_cast<std::size_t>(std::min<std::uint64_t>(offset - at, window));
        const std::string_view text = text_.view().substr(0, left);
        appendNumbersOfObjects(text, otherNumbers_);
        at += text.size() < window ? text.size() : window - overlap;
    }
}

/// The doubts by number, with those about the place of objects whose numbers stand elsewhere too.
/// libqpdf has read streams of cross-references before it looked for objects.
void IndexBuilder::finishDoubts()
{
    if (isStrict()) {
        return;
    }
    if (isOutOfProportion(index_.highestNumber_, tableSize_)) {
        throw NotFit{"too high a number in a reference"};
    }
    const bool mayLackObjects =
        state_ == FileState::Rebuilt ||
        std::any_of(index_.doubts_.begin(), index_.doubts_.end(),
                    [](const Doubt& doubt) { return doubt.kind == Doubt::Kind::Nowhere; });
    const std::vector<std::uint32_t>& all = index_.references_;
    if (mayLackObjects && std::find(all.begin(), all.end(), 0U) != all.end()) {
        throw NotFit{"references to objects that may be lost"}; // which have to be told apart
    }
    for (const std::uint32_t number : index_.fileOrder_) {
        if (index_.objects_[number].kind == Kind::CrossReferenceStream) {
            otherNumbers_.push_back(number);
        }
    }
    std::sort(otherNumbers_.begin(), otherNumbers_.end());
    otherNumbers_.erase(std::unique(otherNumbers_.begin(), otherNumbers_.end()),
                        otherNumbers_.end());
    for (Doubt& doubt : index_.doubts_) {
        IndexedObject& object = index_.objects_[doubt.object];
        if (doubt.kind == Doubt::Kind::Nowhere) {
            continue;
        }
        if (object.kind == Kind::ObjectStream) {
            notFit(doubt.object, "is an object stream that is damaged");
        }
        object.kind = Kind::Other; // whatever is built on kinds looks at the object itself
    }
    for (const std::uint32_t number : otherNumbers_) {
        if (index_.contains(number) && index_.objects_[number].container == 0) {
            const IndexedObject& object = index_.objects_[number];
            index_.doubts_.push_back(
                {number, object.generation, Doubt::Kind::Place, object.start, object.end});
        }
    }
    std::stable_sort(index_.doubts_.begin(), index_.doubts_.end(),
                     [](const Doubt& a, const Doubt& b) { return a.object < b.object; });
}

std::unique_ptr<ReferenceIndex> ReferenceIndex::build(io::ObjectFile& file, io::ByteSource& source,
                                                      DecodedStreams& streams,
                                                      const CrossReferences* read, FileState state,
                                                      std::string& reason)
{
    auto index = std::make_unique<ReferenceIndex>();
    try {
        IndexBuilder(file, source, streams, state, *index).run(read);
    } catch (const NotFit& notFit) {
        reason = notFit.reason;
        return nullptr;
    } catch (const OutOfProportion&) {
        throw;
    } catch (const std::exception& exception) {
        reason = exception.what();
        return nullptr;
    }
    return index;
}

} // namespace karvel::index
