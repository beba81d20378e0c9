#include "KarvelPDFLibrary/index/ObjectNotes.h"

#include "KarvelPDFLibrary/index/KnownWords.h"

#include <algorithm>

namespace karvel::index {

namespace {

/// Beside the flags of objects: the file may use crypt filters.
constexpr std::uint32_t mayBeCryptFilter = 1U << 16;

/// What names say of an object wherever they stand in it.
constexpr KnownWords<std::uint32_t, 14> tellingNames({{
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
    {"Crypt", mayBeCryptFilter},
    {"ByteRange", HasSignature},
    {"Properties", HasOptionalParts},
    {"DocTimeStamp", HasSignature},
}});

/// Of a name that is written in an unusual way and is looked at later.
constexpr std::uint32_t anyFlag =
    HasDestination | HasOptionalParts | HasPopup | HasSignature | HasPlace | mayBeCryptFilter;

std::uint32_t flagsOf(std::string_view name)
{
    if (const std::uint32_t* flags = tellingNames.find(name)) {
        return *flags;
    }
    for (const char ch : name) {
        if (ch == '#') {
            return anyFlag;
        }
    }
    return 0;
}

/// What keys tell of the entries that afterEntry() notes.
enum class Noted {
    Type,
    Kids,
    Subtype,
    Destination,
    Actions,
    Length,
    OfField,
    Annotations,
    StructureKey,
    Title,
    Parent,
    OfAction,
    StructureType,
    StructureParent,
    StructurePage,
    Beads,
    Resources,
    Inheritable,
    ResourceCategory
};

constexpr KnownWords<Noted, 31> notedKeys({{
    {"Type", Noted::Type},
    {"Kids", Noted::Kids},
    {"Subtype", Noted::Subtype},
    {"Dest", Noted::Destination},
    {"A", Noted::Actions},
    {"AA", Noted::Actions},
    {"PA", Noted::Actions},
    {"Length", Noted::Length},
    {"FT", Noted::OfField},
    {"T", Noted::OfField},
    {"Annots", Noted::Annotations},
    {"StructParents", Noted::StructureKey},
    {"StructParent", Noted::StructureKey},
    {"Title", Noted::Title},
    {"Parent", Noted::Parent},
    {"D", Noted::OfAction},
    {"S", Noted::StructureType},
    {"P", Noted::StructureParent},
    {"Pg", Noted::StructurePage},
    {"B", Noted::Beads},
    {"Resources", Noted::Resources},
    {"MediaBox", Noted::Inheritable},
    {"CropBox", Noted::Inheritable},
    {"Rotate", Noted::Inheritable},
    {"XObject", Noted::ResourceCategory},
    {"Pattern", Noted::ResourceCategory},
    {"Shading", Noted::ResourceCategory},
    {"Properties", Noted::ResourceCategory},
    {"ExtGState", Noted::ResourceCategory},
    {"Font", Noted::ResourceCategory},
    {"ColorSpace", Noted::ResourceCategory},
}});

constexpr bool isResourceCategory(std::string_view key)
{
    const Noted* noted = notedKeys.find(key);
    return noted != nullptr && *noted == Noted::ResourceCategory;
}

/// Whether all of some keys, with their slashes, are noted.
template <class Keys>
constexpr bool areNoted(const Keys& keys)
{
    for (const std::string_view key : keys) {
        if (notedKeys.find(key.substr(1)) == nullptr) {
            return false;
        }
    }
    return true;
}
static_assert(areNoted(inheritableKeys) && areNoted(resourceCategories));

/// The most references of one object.
constexpr std::size_t mostReferencesOfOne = 0xFFFFFF;

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
        if (isResourceCategory(value.substr(start, at + 1 - start)) &&
            value.substr(skipSpace(value, at + 1), 2) != "<<") {
            return false;
        }
    }
    return true;
}

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
    const std::uint32_t flags = flagsOf(name);
    flags_ = static_cast<std::uint16_t>(flags_ | flags);
    if ((flags & mayBeCryptFilter) != 0) {
        index_.mayUseCryptFilters_ = true;
    }
}

void ObjectNotes::afterEntry(std::string_view key, std::string_view value)
{
    const Noted* noted = notedKeys.find(key);
    if (noted == nullptr) {
        return;
    }
    switch (*noted) {
    case Noted::Type:
        type_ = decodedName(trimmed(value));
        break;
    case Noted::Kids:
        noteKids(value);
        break;
    case Noted::Subtype:
        isLink_ = trimmed(value) == "/Link";
        flags_ |= HasSubtype;
        break;
    case Noted::Destination:
        noteDestination(trimmed(value));
        break;
    case Noted::Actions:
        hasActions_ = true;
        break;
    case Noted::Length:
        length_ = std::string(trimmed(value));
        break;
    case Noted::OfField:
        isField_ = true;
        break;
    case Noted::Annotations:
        flags_ |= HasAnnotations;
        noteAnnotations(value);
        break;
    case Noted::StructureKey:
        flags_ |= HasStructure;
        structureKey_ = loneNumber(value);
        break;
    case Noted::Title:
        hasTitle_ = mayHoldStrings(value);
        break;
    case Noted::Parent:
        hasParent_ = true;
        break;
    case Noted::OfAction:
        isAction_ = true;
        break;
    case Noted::StructureType:
        isAction_ = true;
        hasStructureType_ = trimmed(value).substr(0, 1) == "/";
        break;
    case Noted::StructureParent:
        flags_ |= HasPlace;
        parentReference_ = referenceIn(value);
        break;
    case Noted::StructurePage:
        pageReference_ = referenceIn(value);
        break;
    case Noted::Beads:
        flags_ |= HasBeads;
        break;
    case Noted::Resources:
        flags_ |= HasInheritable | HasResources;
        flags_ |= isSelfContained(trimmed(value)) ? HasOwnResources : 0;
        break;
    case Noted::Inheritable:
        flags_ |= HasInheritable;
        break;
    case Noted::ResourceCategory:
        flags_ |= trimmed(value).substr(0, 2) == "<<" ? 0 : HasLinkedCategory;
        break;
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
    if (all.size() < all.capacity() / 8 * 7) {
        std::vector<std::uint32_t> fitting;
        reserveLarge(fitting, all.size());
        fitting.assign(all.begin(), all.end());
        all = std::move(fitting);
    }
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
