#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/CrossReferenceCount.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ObjectNotes.h"

#include <algorithm>
#include <cstring>
#include <map>
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

} // namespace

/// Goes through a file's objects in the order in which they lie there.
class IndexBuilder {
public:
    IndexBuilder(QPDF& file, io::ByteSource& source, ReferenceIndex& index)
        : file_(file), index_(index), text_(source), notes_(index), fileSize_(source.size())
    {
    }

    void run()
    {
        readCrossReferences();
        index_.fileOrder_.reserve(inFile_.size());
        for (const Placed& placed : inFile_) {
            scanInFile(placed);
            index_.fileOrder_.push_back(placed.object);
        }
        for (const std::uint32_t stream : containers_) {
            scanObjectStream(stream);
        }
        notes_.finish();
    }

private:
    struct Placed {
        std::uint64_t offset;
        std::uint32_t object;
    };

    void readCrossReferences();
    void scanInFile(const Placed& placed);
    void scanObjectStream(std::uint32_t stream);

    std::size_t scanValue(std::uint32_t number, std::size_t start, bool& isDictionary);
    std::size_t passStream(std::uint32_t number, std::size_t at);
    std::uint64_t streamLength(std::uint32_t number);
    std::string decoded(std::uint32_t number, QPDFObjectHandle stream);
    void keep(IndexedObject& object, std::uint32_t number, int flags);

    QPDF& file_;
    ReferenceIndex& index_;
    FileText text_;
    ObjectNotes notes_;
    std::int64_t fileSize_;
    std::vector<Placed> inFile_;
    std::vector<std::uint32_t> containers_;
    std::map<std::uint32_t, std::vector<std::uint32_t>> membersOf_;

    std::uint64_t previousEnd_ = 0;
    std::uint64_t decodedBytes_ = 0;
};

void IndexBuilder::readCrossReferences()
{
    const std::map<QPDFObjGen, QPDFXRefEntry> table = file_.getXRefTable();
    std::uint64_t highest = 0;
    for (const auto& [id, entry] : table) {
        highest = std::max<std::uint64_t>(highest, static_cast<std::uint64_t>(id.getObj()));
    }
    if (highest >= mostObjects || isOutOfProportion(highest, table.size())) {
        throw NotFit{"too high an object number"};
    }
    index_.objects_.resize(highest + 1);
    for (const auto& [id, entry] : table) {
        const auto number = static_cast<std::uint32_t>(id.getObj());
        IndexedObject& object = index_.objects_[number];
        if (object.kind != Kind::Missing || id.getGen() > 0xFFFF) {
            notFit(number, "is in the cross-reference table twice");
        }
        object.kind = Kind::Other;
        object.generation = static_cast<std::uint16_t>(id.getGen());
        if (entry.getType() == 1) {
            object.start = static_cast<std::uint64_t>(entry.getOffset());
            inFile_.push_back({object.start, number});
        } else if (entry.getType() == 2) {
            object.container = static_cast<std::uint32_t>(entry.getObjStreamNumber());
            object.start = static_cast<std::uint64_t>(entry.getObjStreamIndex());
            membersOf_[object.container].push_back(number);
        } else {
            notFit(number, "has an unknown kind of cross-reference entry");
        }
    }
    std::sort(inFile_.begin(), inFile_.end(),
              [](const Placed& a, const Placed& b) { return a.offset < b.offset; });
    for (const auto& [stream, members] : membersOf_) {
        containers_.push_back(stream);
    }
    text_.open(0, 8);
    if (text_.view().substr(0, 5) != "%PDF-") {
        throw NotFit{"the header is not at the beginning"};
    }
    index_.usesCrossReferenceStream_ = file_.getTrailer().hasKey("/W") || !membersOf_.empty();
    if (index_.usesCrossReferenceStream_ && file_.getTrailer().hasKey("/XRefStm")) {
        throw NotFit{"a file of the hybrid kind"};
    }
}

/// Scans the value at `start` of the opened text; reads more of the file while it is too short.
std::size_t IndexBuilder::scanValue(std::uint32_t number, std::size_t start, bool& isDictionary)
{
    for (;;) {
        notes_.begin();
        ValueScanner scanner(text_.view(), notes_);
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

std::uint64_t IndexBuilder::streamLength(std::uint32_t number)
{
    std::size_t at = 0;
    std::uint64_t length = 0;
    if (readUnsigned(notes_.length(), at, length) && at == notes_.length().size()) {
        return length;
    }
    QPDFObjectHandle stream =
        file_.getObject(static_cast<int>(number), index_.objects_[number].generation);
    QPDFObjectHandle value = stream.isStream() ? stream.getDict().getKey("/Length") : stream;
    if (!value.isInteger() || value.getIntValue() < 0) {
        notFit(number, "its stream has no usable length");
    }
    return static_cast<std::uint64_t>(value.getIntValue());
}

/// From "stream" on: past "endstream".
std::size_t IndexBuilder::passStream(std::uint32_t number, std::size_t at)
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
    ++at;
    const std::uint64_t data = text_.offset() + at;
    const std::uint64_t end = data + streamLength(number);
    if (end < data || !text_.open(end, 64)) {
        notFit(number, "its stream is longer than the file");
    }
    view = text_.view();
    at = 0;
    if (at < view.size() && view[at] == '\r') {
        ++at;
    }
    if (at < view.size() && view[at] == '\n') {
        ++at;
    }
    if (view.substr(at, 9) != "endstream") {
        notFit(number, "its stream does not end where its length says");
    }
    return at + 9;
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
std::string IndexBuilder::decoded(std::uint32_t number, QPDFObjectHandle stream)
{
    const std::uint64_t possible = mostDecodedBytes(fileSize_);
    const std::uint64_t most = std::min(possible, mostIndexedBytes);
    try {
        std::string data = boundedData(stream, most - decodedBytes_);
        decodedBytes_ += data.size();
        return data;
    } catch (const TooMuchData&) {
        if (most < possible) {
            throw;
        }
        throw OutOfProportion("object stream " + std::to_string(number) +
                              " decodes to more than a file of its size can need");
    }
}

void IndexBuilder::scanInFile(const Placed& placed)
{
    const std::uint32_t number = placed.object;
    IndexedObject& object = index_.objects_[number];
    if (placed.offset < previousEnd_ || !text_.open(placed.offset, 256)) {
        notFit(number, "lies outside the file or inside another object");
    }
    std::size_t at = 0;
    std::uint64_t writtenNumber = 0;
    std::uint64_t writtenGeneration = 0;
    const std::string_view head = text_.view();
    const bool numbered = readUnsigned(head, at, writtenNumber) && (at = skipSpace(head, at)) > 0 &&
                          readUnsigned(head, at, writtenGeneration);
    at = skipSpace(head, at);
    if (!numbered || head.substr(at, 3) != "obj" || writtenNumber != number ||
        writtenGeneration != object.generation) {
        notFit(number, "is not where the cross-reference table says");
    }
    bool isDictionary = false;
    at = scanValue(number, at + 3, isDictionary);
    int flags = isDictionary ? IsDictionary : 0;
    text_.require(at + 64);
    at = skipSpace(text_.view(), at);
    if (isDictionary && text_.view().substr(at, 6) == "stream") {
        at = passStream(number, at);
        flags |= IsStream;
        text_.require(at + 64);
        at = skipSpace(text_.view(), at);
    }
    if (text_.view().substr(at, 6) != "endobj") {
        notFit(number, "has no end");
    }
    at += 6;
    while (at < text_.view().size() && isWhiteSpace(text_.view()[at])) {
        ++at;
    }
    object.end = text_.offset() + at;
    previousEnd_ = object.end;
    keep(object, number, flags);
}

void IndexBuilder::scanObjectStream(std::uint32_t number)
{
    if (!index_.contains(number) || index_.objects_[number].kind != Kind::ObjectStream) {
        notFit(number, "is no object stream, although objects are said to be in it");
    }
    QPDFObjectHandle stream = file_.getObject(static_cast<int>(number), 0);
    QPDFObjectHandle count = stream.getDict().getKey("/N");
    QPDFObjectHandle first = stream.getDict().getKey("/First");
    if (!count.isInteger() || !first.isInteger() || first.getIntValue() < 0) {
        notFit(number, "its header is wrong");
    }
    std::string text = decoded(number, stream);
    const std::size_t length = text.size();
    text += " endobj "; // members end without a word; the scanner wants to see one

    ObjectStreamMembers members;
    members.object = number;
    members.first = static_cast<std::uint64_t>(first.getIntValue());
    std::size_t at = 0;
    for (long long i = 0; i < count.getIntValue(); ++i) {
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
        const bool current = member < index_.objects_.size() &&
                             index_.objects_[member].container == number &&
                             index_.objects_[member].end == 0;
        if (!current) {
            members.allMembersAreCurrent = false;
            continue;
        }
        IndexedObject& object = index_.objects_[member];
        notes_.begin();
        ValueScanner scanner(text, notes_);
        if (scanner.scan(start) != ScanResult::Complete) {
            notFit(static_cast<std::uint32_t>(member), "its text does not read as expected");
        }
        object.start = start;
        object.end = scanner.position();
        notes_.valueEnds(std::string_view(text).substr(start, object.end - start));
        keep(object, static_cast<std::uint32_t>(member), scanner.isDictionary() ? IsDictionary : 0);
        members.members.push_back(static_cast<std::uint32_t>(member));
    }
    if (members.members.size() != membersOf_[number].size()) {
        notFit(number, "does not hold the objects that are said to be in it");
    }
    index_.objectStreams_.push_back(std::move(members));
}

std::unique_ptr<ReferenceIndex> ReferenceIndex::build(QPDF& file, io::ByteSource& source,
                                                      std::string& reason)
{
    auto index = std::make_unique<ReferenceIndex>();
    try {
        IndexBuilder(file, source, *index).run();
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

std::uint64_t destinationHash(std::string_view name)
{
    // FNV-1a. Names that fall together cost a look at an object, nothing else.
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char ch : name) {
        hash = (hash ^ static_cast<unsigned char>(ch)) * 0x100000001b3;
    }
    return hash;
}

/// What a list in the order of object numbers has for an object; null for nothing.
template <typename Entry>
static const Entry* ofObject(const std::vector<Entry>& entries, std::uint32_t object)
{
    const auto found = std::lower_bound(
        entries.begin(), entries.end(), object,
        [](const Entry& entry, std::uint32_t number) { return entry.object < number; });
    return found != entries.end() && found->object == object ? &*found : nullptr;
}

const ReferenceIndex::PlainLink* ReferenceIndex::plainLink(std::uint32_t object) const
{
    return ofObject(plainLinks_, object);
}

const PlainElement* ReferenceIndex::plainElement(std::uint32_t object) const
{
    return ofObject(plainElements_, object);
}

bool isOutOfProportion(std::uint64_t highestNumber, std::uint64_t objects)
{
    return highestNumber > 8'388'607 && highestNumber / 64 > objects;
}

const KidsOfNode* ReferenceIndex::kidsOf(std::uint32_t node) const
{
    return ofObject(kids_, node);
}

const AnnotationsOfPage* ReferenceIndex::annotationsOf(std::uint32_t page) const
{
    return ofObject(annotations_, page);
}

} // namespace karvel::index
