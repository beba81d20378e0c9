#include "KarvelPDFLibrary/index/ObjectNotes.h"

#include <algorithm>
#include <array>

namespace karvel::index {

namespace {

/// What names say of an object wherever they stand in it. Every name of a file is looked up here.
struct TellingName {
    std::string_view name;
    int flag;
};
constexpr TellingName tellingNames[] = {
    {"D", HasDestination},
    {"A", HasDestination},
    {"AA", HasDestination},
    {"OC", HasOptionalParts},
    {"Pg", HasPlace},
    {"Sig", HasSignature},
    {"Obj", HasPlace},
    {"Dest", HasDestination},
    {"OCGs", HasOptionalParts},
    {"Popup", HasPopup},
    {"ByteRange", HasSignature},
    {"Properties", HasOptionalParts},
    {"DocTimeStamp", HasSignature},
};

/// Of a name that is written in an unusual way and is looked at later.
constexpr int anyFlag = HasDestination | HasOptionalParts | HasPopup | HasSignature | HasPlace;

/// By length, the letters with which some words begin. Most names are none of those that matter.
using Beginnings = std::array<std::uint32_t, 16>;

constexpr void add(Beginnings& letters, std::string_view word)
{
    letters[word.size()] |= 1U << static_cast<unsigned>(word.front() - 'A');
}

bool mayBeOneOf(const Beginnings& letters, std::string_view name)
{
    const bool isInRange =
        !name.empty() && name.size() < letters.size() && name.front() >= 'A' && name.front() <= 'Z';
    return isInRange &&
           (letters[name.size()] >> static_cast<unsigned>(name.front() - 'A') & 1U) != 0;
}

constexpr Beginnings ofTellingNames = [] {
    Beginnings letters{};
    for (const TellingName& telling : tellingNames) {
        add(letters, telling.name);
    }
    return letters;
}();

int flagOf(std::string_view name)
{
    if (mayBeOneOf(ofTellingNames, name)) {
        for (const TellingName& telling : tellingNames) {
            if (name == telling.name) {
                return telling.flag;
            }
        }
    }
    for (const char ch : name) {
        if (ch == '#') {
            return anyFlag;
        }
    }
    return 0;
}

/// The most references of one object.
constexpr std::size_t mostReferencesOfOne = 0xFFFFFF;

/// Whether a key, without its slash, is among those of a list, which have theirs.
template <class Keys>
bool isAmong(const Keys& keys, std::string_view key)
{
    return std::any_of(keys.begin(), keys.end(),
                       [&](const char* one) { return key == std::string_view(one).substr(1); });
}

/// Whether the value of /Resources is a dictionary in which no category is a reference.
bool isSelfContained(std::string_view value)
{
    if (value.substr(0, 2) != "<<") {
        return false;
    }
    for (std::size_t at = 2; at < value.size(); ++at) {
        if (value[at] == '#') {
            return false;
        }
        if (value[at] != '/') {
            continue;
        }
        const std::size_t start = at + 1;
        while (at + 1 < value.size() && !isWhiteSpace(value[at + 1]) &&
               !isDelimiter(value[at + 1])) {
            ++at;
            if (value[at] == '#') {
                return false;
            }
        }
        if (isAmong(resourceCategories, value.substr(start, at + 1 - start)) &&
            value.substr(skipSpace(value, at + 1), 2) != "<<") {
            return false;
        }
    }
    return true;
}

/// Those of the keys of which afterEntry() has something to note.
constexpr Beginnings ofKeys = [] {
    Beginnings letters{};
    for (const std::string_view key :
         {"Type",         "Kids",   "Subtype", "Dest", "A",      "AA",
          "PA",           "Length", "FT",      "T",    "Annots", "StructParents",
          "StructParent", "Title",  "Parent",  "D",    "S",      "P",
          "Pg",           "B"}) {
        add(letters, key);
    }
    for (const std::string_view key : inheritableKeys) {
        add(letters, key.substr(1));
    }
    for (const std::string_view key : resourceCategories) {
        add(letters, key.substr(1));
    }
    return letters;
}();

/// A plain number that stands alone; -1 for everything else.
std::int32_t loneNumber(std::string_view value)
{
    const std::optional<std::uint64_t> number = unsignedIn(trimmed(value));
    return number && *number <= 0x7FFFFFFF ? static_cast<std::int32_t>(*number) : -1;
}

/// Whether a value with a number of references is an array that holds nothing else.
bool isArrayOfReferences(std::string_view value, std::uint32_t count)
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

} // namespace

void ObjectNotes::begin()
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
    parentReference_ = noReference;
    pageReference_ = noReference;
    hasStructureType_ = false;
    hasTitle_ = false;
    hasParent_ = false;
    isAction_ = false;
    linkName_.clear();
    flags_ = 0;
}

void ObjectNotes::forget()
{
    index_.references_.resize(referencesBefore_);
    generations_.resize(referencesBefore_);
    index_.kids_.resize(kidsBefore_);
}

void ObjectNotes::name(std::string_view name)
{
    const int flags = flagOf(name);
    flags_ = static_cast<std::uint16_t>(flags_ | flags);
    if (flags == anyFlag || name == "Crypt") {
        index_.mayUseCryptFilters_ = true;
    }
}

void ObjectNotes::afterEntry(std::string_view key, std::string_view value)
{
    if (!mayBeOneOf(ofKeys, key)) {
        return;
    }
    if (key == "Type") {
        type_ = decodedName(trimmed(value));
    } else if (key == "Kids") {
        noteKids(value);
    } else if (key == "Subtype") {
        isLink_ = trimmed(value) == "/Link";
        flags_ |= HasSubtype;
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
        structureKey_ = loneNumber(value);
    } else if (key == "Title") {
        hasTitle_ = mayHoldStrings(value);
    } else if (key == "Parent") {
        hasParent_ = true;
    } else if (key == "D") {
        isAction_ = true;
    } else if (key == "S") {
        isAction_ = true;
        hasStructureType_ = trimmed(value).substr(0, 1) == "/";
    } else if (key == "P") {
        flags_ |= HasPlace;
        parentReference_ = referenceIn(value);
    } else if (key == "Pg") {
        pageReference_ = referenceIn(value);
    } else if (key == "B") {
        flags_ |= HasBeads;
    } else if (isAmong(inheritableKeys, key)) {
        flags_ |= HasInheritable;
        if (key == "Resources") {
            flags_ |= HasResources | (isSelfContained(trimmed(value)) ? HasOwnResources : 0);
        }
    } else if (isAmong(resourceCategories, key) && trimmed(value).substr(0, 2) != "<<") {
        flags_ |= HasLinkedCategory;
    }
}

void ObjectNotes::noteDestination(std::string_view value)
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

/// The position of a value's reference when that is all there is.
std::size_t ObjectNotes::referenceIn(std::string_view value) const
{
    const std::string_view text = trimmed(value);
    const bool one = referencesInValue() == 1 && !text.empty() && text.back() == 'R';
    return one ? valueStart_ : noReference;
}

void ObjectNotes::keepPlainElement(std::uint32_t number)
{
    const bool plain = hasStructureType_ && parentReference_ != noReference &&
                       pageReference_ != noReference && (flags_ & HasSubtype) == 0 &&
                       index_.references_.size() == referencesBefore_ + 2;
    if (plain) {
        index_.plainElements_.push_back({number, static_cast<std::uint32_t>(parentReference_),
                                         static_cast<std::uint32_t>(pageReference_)});
    }
}

void ObjectNotes::keepPlainLink(std::uint32_t number)
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

void ObjectNotes::noteKids(std::string_view value)
{
    hasKids_ = true;
    flags_ |= HasKids;
    const std::uint32_t count = referencesInValue();
    if (isArrayOfReferences(value, count)) {
        index_.kids_.emplace_back();
        index_.kids_.back().firstReference = static_cast<std::uint32_t>(valueStart_);
        index_.kids_.back().count = count;
    }
}

void ObjectNotes::noteAnnotations(std::string_view value)
{
    const std::uint32_t count = referencesInValue();
    annotations_.reset();
    if (isArrayOfReferences(value, count)) {
        annotations_ = AnnotationsOfPage{0, static_cast<std::uint32_t>(valueStart_), count};
    }
}

/// Keeps a node's text; forgets the node when it has strings, which would
/// have to be enciphered anew.
void ObjectNotes::keepNodeText(std::string_view text)
{
    if (index_.kids_.size() == kidsBefore_) {
        return;
    }
    if (mayHoldStrings(text)) {
        index_.kids_.pop_back();
        return;
    }
    index_.kids_.back().text = std::string(text);
}

void ObjectNotes::keepKind(IndexedObject& object, std::uint32_t number)
{
    if (hasKids_ && !isField_) {
        object.kind = Kind::PageNode;
        if (type_ != "/Pages") {
            index_.kids_.resize(kidsBefore_); // readers differ in what they make of such a node
        }
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
        } else if (hasTitle_ && hasParent_ && !isAction_ && (flags_ & HasSubtype) == 0) {
            object.kind = Kind::OutlineEntry;
        }
    }
}

bool ObjectNotes::keep(IndexedObject& object, std::uint32_t number, int flags)
{
    const std::size_t count = index_.references_.size() - referencesBefore_;
    object.firstReference = static_cast<std::uint32_t>(referencesBefore_);
    object.referenceCount = static_cast<std::uint32_t>(count) & mostReferencesOfOne;
    object.flags = static_cast<std::uint16_t>(flags_ | flags);
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
    keepPlainElement(number);
    keepKind(object, number);
    return count <= mostReferencesOfOne && index_.references_.size() <= 0xFFFFFFF0U;
}

/// References that mean null become references to object 0, which no file has.
void ObjectNotes::resolveReferences()
{
    std::vector<std::uint32_t>& all = index_.references_;
    index_.highestNumber_ = index_.size() - 1;
    for (std::size_t i = 0; i < all.size(); ++i) {
        index_.highestNumber_ = std::max(index_.highestNumber_, all[i]);
        all[i] = index_.targetOf({all[i], generations_[i]});
    }
    // These were noted with the places of their references; now it is known what they mean.
    for (PlainElement& element : index_.plainElements_) {
        element.parent = all[element.parent];
        element.page = all[element.page];
    }
    for (ReferenceIndex::PlainLink& link : index_.plainLinks_) {
        link.page = link.nameLength > 0 ? 0 : all[link.page];
    }
    generations_ = std::vector<std::uint16_t>(); // gives its memory back before the others grow
    all.shrink_to_fit();
}

void ObjectNotes::finish()
{
    resolveReferences();
    const auto byObject = [](const auto& a, const auto& b) { return a.object < b.object; };
    std::sort(index_.kids_.begin(), index_.kids_.end(), byObject);
    std::sort(index_.annotations_.begin(), index_.annotations_.end(), byObject);
    std::sort(index_.plainLinks_.begin(), index_.plainLinks_.end(), byObject);
    std::sort(index_.plainElements_.begin(), index_.plainElements_.end(), byObject);
    std::sort(index_.namedDestinations_.begin(), index_.namedDestinations_.end(),
              [](const auto& a, const auto& b) { return a.hash < b.hash; });
}

} // namespace karvel::index
