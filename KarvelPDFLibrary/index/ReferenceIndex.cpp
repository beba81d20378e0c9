#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <stdexcept>

namespace karvel::index {

namespace {

/// Files with more objects, or object streams with more data, are left to libqpdf.
constexpr std::uint64_t mostObjects = 50'000'000;
constexpr std::size_t mostDecodedBytes = 256U * 1024 * 1024;

/// Why a file has no index; caught where the index is built.
struct NotFit {
    std::string reason;
};

[[noreturn]] void notFit(std::uint32_t object, const char* what)
{
    throw NotFit{"object " + std::to_string(object) + ": " + what};
}

bool isInheritable(std::string_view key)
{
    return key == "Resources" || key == "MediaBox" || key == "CropBox" || key == "Rotate";
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(skipSpace(text, 0), text.size()));
    while (!text.empty() && isWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// What names say of an object wherever they stand in it. Every name of a file is looked up here.
struct TellingName {
    std::string_view name;
    int flag;
};
constexpr TellingName tellingNames[] = {
    {"D", HasDestination},          {"A", HasDestination},
    {"AA", HasDestination},         {"OC", HasOptionalParts},
    {"Sig", HasSignature},          {"Dest", HasDestination},
    {"OCGs", HasOptionalParts},     {"Popup", HasPopup},
    {"ByteRange", HasSignature},    {"Properties", HasOptionalParts},
    {"DocTimeStamp", HasSignature},
};

int flagOf(std::string_view name)
{
    for (const TellingName& telling : tellingNames) {
        if (name == telling.name) {
            return telling.flag;
        }
    }
    // What is written in an unusual way is looked at later.
    return name.find('#') == std::string_view::npos
               ? 0
               : HasDestination | HasOptionalParts | HasPopup | HasSignature;
}

/// A plain number that stands alone; -1 for everything else.
std::int32_t plainNumber(std::string_view value)
{
    const std::string_view text = trimmed(value);
    std::size_t at = 0;
    std::uint64_t number = 0;
    const bool plain = readUnsigned(text, at, number) && at == text.size() && number <= 0x7FFFFFFF;
    return plain ? static_cast<std::int32_t>(number) : -1;
}

} // namespace

/// Collects what one object's scan finds.
class IndexBuilder final : public ScanSink {
public:
    IndexBuilder(QPDF& file, io::ByteSource& source, ReferenceIndex& index)
        : file_(file), index_(index), text_(source)
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
        resolveReferences();
        const auto byObject = [](const auto& a, const auto& b) { return a.object < b.object; };
        std::sort(index_.kids_.begin(), index_.kids_.end(), byObject);
        std::sort(index_.annotations_.begin(), index_.annotations_.end(), byObject);
        std::sort(index_.namedDestinations_.begin(), index_.namedDestinations_.end(),
                  [](const auto& a, const auto& b) { return a.hash < b.hash; });
    }

    void reference(std::uint32_t object, std::uint32_t generation) override
    {
        index_.references_.push_back(object);
        generations_.push_back(static_cast<std::uint16_t>(generation));
    }

    void name(std::string_view name) override
    {
        flags_ = static_cast<std::uint16_t>(flags_ | flagOf(name));
    }

    void destinationName(std::string_view written) override
    {
        destinations_.push_back(destinationHash(decodedString(written)));
    }

    void numberedDestination() override { hasNumberedDestination_ = true; }

    void beforeEntry(std::string_view) override { valueStart_ = index_.references_.size(); }

    void afterEntry(std::string_view key, std::string_view value) override
    {
        if (key == "Type") {
            type_ = decodedName(trimmed(value));
        } else if (key == "Kids") {
            noteKids(value);
        } else if (key == "Count") {
            countValue_ = spanOf(value);
        } else if (key == "Subtype") {
            isLink_ = trimmed(value) == "/Link";
        } else if (key == "Dest") {
            noteDestination(trimmed(value));
        } else if (key == "A" || key == "AA" || key == "PA") {
            hasActions_ = true;
        } else if (key == "Length") {
            length_ = std::string(trimmed(value));
        } else if (key == "FT" || key == "T") {
            isField_ = true;
        } else if (key == "Annots") {
            flags_ |= HasAnnotations;
            noteAnnotations(value);
        } else if (key == "StructParents" || key == "StructParent") {
            flags_ |= HasStructure;
            structureKey_ = plainNumber(value);
        } else if (key == "B") {
            flags_ |= HasBeads;
        } else if (isInheritable(key)) {
            flags_ |= HasInheritable;
        }
    }

private:
    struct Placed {
        std::uint64_t offset;
        std::uint32_t object;
    };

    void readCrossReferences();
    void scanInFile(const Placed& placed);
    void scanObjectStream(std::uint32_t stream);
    void resolveReferences();

    void beginObject()
    {
        referencesBefore_ = index_.references_.size();
        kidsBefore_ = index_.kids_.size();
        type_.clear();
        length_.clear();
        isField_ = false;
        hasKids_ = false;
        hasNumberedDestination_ = false;
        annotations_.reset();
        destinations_.clear();
        isLink_ = false;
        hasActions_ = false;
        linkReference_ = noReference;
        linkName_.clear();
        countValue_ = {};
        flags_ = 0;
    }

    void forgetObject()
    {
        index_.references_.resize(referencesBefore_);
        generations_.resize(referencesBefore_);
        index_.kids_.resize(kidsBefore_);
    }

    std::uint32_t referencesInValue() const
    {
        return static_cast<std::uint32_t>(index_.references_.size() - valueStart_);
    }
    void noteKids(std::string_view value);
    void noteAnnotations(std::string_view value);
    void keepNodeText(std::string_view text);
    void noteDestination(std::string_view value);
    void keepPlainLink(std::uint32_t number);

    /// Where a part of the scanned text lies; valid until the text is read anew.
    Span spanOf(std::string_view part) const
    {
        return {static_cast<std::uint32_t>(part.data() - scanned_),
                static_cast<std::uint32_t>(part.data() - scanned_ + part.size())};
    }
    std::size_t scanValue(std::uint32_t number, std::size_t start, bool& isDictionary);
    std::size_t passStream(std::uint32_t number, std::size_t at);
    std::uint64_t streamLength(std::uint32_t number);
    void keep(IndexedObject& object, std::uint32_t number, bool isDictionary);

    QPDF& file_;
    ReferenceIndex& index_;
    FileText text_;
    std::vector<Placed> inFile_;
    std::vector<std::uint32_t> containers_;
    std::map<std::uint32_t, std::vector<std::uint32_t>> membersOf_;

    /// Generations beside index_.references_, needed until all objects are known.
    std::vector<std::uint16_t> generations_;

    std::uint64_t previousEnd_ = 0;
    std::size_t decodedBytes_ = 0;

    // what the scan of the present object found
    std::size_t referencesBefore_ = 0;
    std::size_t kidsBefore_ = 0;
    std::size_t valueStart_ = 0;
    std::string type_;
    std::string length_;
    bool isField_ = false;
    bool hasKids_ = false;
    bool hasNumberedDestination_ = false;
    bool isLink_ = false;
    bool hasActions_ = false;
    static constexpr std::size_t noReference = ~std::size_t{0};
    std::size_t linkReference_ = noReference; // position in index_.references_
    std::string linkName_;
    std::vector<std::uint64_t> destinations_;
    const char* scanned_ = nullptr;
    Span countValue_;
    std::optional<AnnotationsOfPage> annotations_;
    std::uint16_t flags_ = 0;
    std::int32_t structureKey_ = -1; // when there is one
};

void IndexBuilder::readCrossReferences()
{
    const std::map<QPDFObjGen, QPDFXRefEntry> table = file_.getXRefTable();
    std::uint64_t highest = 0;
    for (const auto& [id, entry] : table) {
        highest = std::max<std::uint64_t>(highest, static_cast<std::uint64_t>(id.getObj()));
    }
    if (highest >= mostObjects) {
        throw NotFit{"too many objects"};
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

void IndexBuilder::noteDestination(std::string_view value)
{
    if (value.empty()) {
        return;
    }
    if (value.front() == '[') {
        // The array's first item is the reference when nothing but digits and "R" come before it
        // ends.
        const std::size_t first = skipSpace(value, 1);
        const bool one = index_.references_.size() == valueStart_ + 1;
        if (one && first < value.size() && value[first] >= '0' && value[first] <= '9' &&
            value.find("R", first) < value.find('/', first)) {
            linkReference_ = valueStart_;
        }
    } else if (value.front() == '(' || value.front() == '/' ||
               (value.front() == '<' && value.size() > 1 && value[1] != '<')) {
        linkName_ = decodedString(value);
    }
}

void IndexBuilder::keepPlainLink(std::uint32_t number)
{
    if (!isLink_ || hasActions_ || (linkReference_ == noReference && linkName_.empty())) {
        return;
    }
    const bool byName = linkReference_ == noReference;
    index_.plainLinks_.push_back({number, byName ? 0 : static_cast<std::uint32_t>(linkReference_),
                                  static_cast<std::uint32_t>(index_.linkNames_.size()),
                                  static_cast<std::uint32_t>(byName ? linkName_.size() : 0)});
    index_.linkNames_ += byName ? linkName_ : std::string();
}

/// Whether a value with a number of references is an array that holds nothing else.
static bool isArrayOfReferences(std::string_view value, std::uint32_t count)
{
    std::string_view text = trimmed(value);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']') {
        return false;
    }
    text.remove_prefix(1);
    text.remove_suffix(1);
    // As many words, separated by white space, as references make.
    std::size_t words = 0;
    bool inWord = false;
    for (const char ch : text) {
        if (isDelimiter(ch)) {
            return false;
        }
        const bool space = isWhiteSpace(ch);
        words += !space && !inWord ? 1 : 0;
        inWord = !space;
    }
    return words == 3U * count;
}

void IndexBuilder::noteKids(std::string_view value)
{
    hasKids_ = true;
    flags_ |= HasKids;
    const std::uint32_t count = referencesInValue();
    if (isArrayOfReferences(value, count)) {
        index_.kids_.emplace_back();
        index_.kids_.back().firstReference = static_cast<std::uint32_t>(valueStart_);
        index_.kids_.back().count = count;
        index_.kids_.back().kidsValue = spanOf(value);
    }
}

void IndexBuilder::noteAnnotations(std::string_view value)
{
    const std::uint32_t count = referencesInValue();
    annotations_.reset();
    if (isArrayOfReferences(value, count)) {
        annotations_ = AnnotationsOfPage{0, static_cast<std::uint32_t>(valueStart_), count};
    }
}

/// Keeps a node's text with the places in it; forgets the node when it has strings, which would
/// have to be enciphered anew.
void IndexBuilder::keepNodeText(std::string_view text)
{
    if (index_.kids_.size() == kidsBefore_) {
        return;
    }
    bool hasStrings = text.find('(') != std::string_view::npos;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '<') {
            hasStrings = hasStrings || text[i + 1] != '<';
            ++i;
        }
    }
    if (hasStrings) {
        index_.kids_.pop_back();
        return;
    }
    KidsOfNode& node = index_.kids_.back();
    const Span own = spanOf(text);
    const auto relative = [&](Span span) {
        return span.end == 0 ? Span() : Span{span.begin - own.begin, span.end - own.begin};
    };
    node.text = std::string(text);
    node.kidsValue = relative(node.kidsValue);
    node.countValue = relative(countValue_);
}

/// Scans the value at `start` of the opened text; reads more of the file while it is too short.
std::size_t IndexBuilder::scanValue(std::uint32_t number, std::size_t start, bool& isDictionary)
{
    for (;;) {
        scanned_ = text_.view().data();
        ValueScanner scanner(text_.view(), *this);
        const ScanResult result = scanner.scan(start);
        if (result == ScanResult::Complete) {
            isDictionary = scanner.isDictionary();
            keepNodeText(text_.view().substr(start, scanner.position() - start));
            return scanner.position();
        }
        if (result == ScanResult::Malformed || !text_.extend()) {
            notFit(number, "its text does not read as expected");
        }
        forgetObject();
        beginObject();
    }
}

std::uint64_t IndexBuilder::streamLength(std::uint32_t number)
{
    std::size_t at = 0;
    std::uint64_t length = 0;
    if (readUnsigned(length_, at, length) && at == length_.size()) {
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

void IndexBuilder::keep(IndexedObject& object, std::uint32_t number, bool isDictionary)
{
    object.firstReference = static_cast<std::uint32_t>(referencesBefore_);
    object.referenceCount =
        static_cast<std::uint32_t>(index_.references_.size() - referencesBefore_);
    object.flags = static_cast<std::uint16_t>(flags_ | (isDictionary ? IsDictionary : 0)) & 0x1FFF;
    for (const std::uint64_t hash : destinations_) {
        index_.namedDestinations_.push_back({hash, number});
    }
    if (annotations_) {
        annotations_->object = number;
        index_.annotations_.push_back(*annotations_);
    }
    if ((flags_ & HasStructure) != 0) {
        index_.structureKeys_.push_back({number, structureKey_});
    }
    if (hasNumberedDestination_) {
        index_.withNumberedDestinations_.push_back(number);
    }
    keepPlainLink(number);
    if (hasKids_ && !isField_) {
        object.kind = Kind::PageNode;
        if (index_.kids_.size() > kidsBefore_) {
            index_.kids_.back().object = number;
        }
    } else {
        index_.kids_.resize(kidsBefore_);
        if (type_ == "/Page") {
            object.kind = Kind::Page;
        } else if (type_ == "/ObjStm") {
            object.kind = Kind::ObjectStream;
        } else if (type_ == "/XRef") {
            object.kind = Kind::CrossReferenceStream;
        }
    }
    if (index_.references_.size() > 0xFFFFFFF0U) {
        throw NotFit{"too many references"};
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
    beginObject();
    bool isDictionary = false;
    at = scanValue(number, at + 3, isDictionary);
    text_.require(at + 64);
    at = skipSpace(text_.view(), at);
    if (isDictionary && text_.view().substr(at, 6) == "stream") {
        at = passStream(number, at);
        flags_ |= IsStream;
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
    keep(object, number, isDictionary);
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
    std::string text = boundedData(stream, mostDecodedBytes - decodedBytes_);
    const std::size_t length = text.size();
    decodedBytes_ += length;
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
        beginObject();
        scanned_ = text.data();
        ValueScanner scanner(text, *this);
        if (scanner.scan(start) != ScanResult::Complete) {
            notFit(static_cast<std::uint32_t>(member), "its text does not read as expected");
        }
        object.start = start;
        object.end = scanner.position();
        keepNodeText(std::string_view(text).substr(start, object.end - start));
        keep(object, static_cast<std::uint32_t>(member), scanner.isDictionary());
        members.members.push_back(static_cast<std::uint32_t>(member));
    }
    if (members.members.size() != membersOf_[number].size()) {
        notFit(number, "does not hold the objects that are said to be in it");
    }
    index_.objectStreams_.push_back(std::move(members));
}

/// References that mean null become references to object 0, which no file has.
void IndexBuilder::resolveReferences()
{
    std::vector<std::uint32_t>& all = index_.references_;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!index_.contains(all[i]) || index_.objects_[all[i]].generation != generations_[i]) {
            all[i] = 0;
        }
    }
    // Links were noted with the place of their reference; now it is known what it means.
    for (ReferenceIndex::PlainLink& link : index_.plainLinks_) {
        link.page = link.nameLength > 0 ? 0 : all[link.page];
    }
    std::sort(index_.plainLinks_.begin(), index_.plainLinks_.end(),
              [](const auto& a, const auto& b) { return a.object < b.object; });
    generations_ = {};
    all.shrink_to_fit();
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

const KidsOfNode* ReferenceIndex::kidsOf(std::uint32_t node) const
{
    return ofObject(kids_, node);
}

const AnnotationsOfPage* ReferenceIndex::annotationsOf(std::uint32_t page) const
{
    return ofObject(annotations_, page);
}

} // namespace karvel::index
