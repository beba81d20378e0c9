#pragma once

#include "KarvelPDFLibrary/index/ValueScanner.h"
#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/ObjectFile.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <qpdf/QPDF.hh>
#include <string>
#include <string_view>
#include <vector>

namespace karvel::index {

class DecodedStreams;
struct CrossReferences;

/// What an object is, as far as its dictionary's type and telling keys show it.
enum class Kind : std::uint8_t {
    Missing, // not in the file
    Other,
    Page,
    PageNode,     // a node of the page tree: it has /Kids and is no form field
    OutlineEntry, // it has a /Title and a /Parent, but neither /S nor /D nor /Subtype
    ObjectStream,
    CrossReferenceStream,
};

/// Which keys and names an object has that matter for page trees and for the removal of pages.
/// Where "at any depth" is said, a name that is written with "#" counts as well.
enum Flag : std::uint16_t {
    IsDictionary = 1,
    IsStream = 2,
    HasInheritable = 4,       // one of the attributes that pages inherit
    HasAnnotations = 8,       // /Annots
    HasStructure = 16,        // /StructParents or /StructParent
    HasBeads = 32,            // /B
    HasDestination = 64,      // at any depth /Dest, /D, /A or /AA
    HasOptionalParts = 128,   // at any depth /OC, /OCGs or /Properties
    HasKids = 256,            // /Kids
    HasPopup = 512,           // at any depth /Popup
    HasSignature = 1024,      // at any depth /Sig, /DocTimeStamp or /ByteRange
    HasPlace = 2048,          // /P, or at any depth /Pg or /Obj
    HasSubtype = 4096,        // /Subtype
    HasResources = 8192,      // /Resources
    HasOwnResources = 16384,  // /Resources that stands in the object with all its categories
    HasLinkedCategory = 32768 // a reference as the value of a category of resources
};

/// The attributes that pages inherit (ISO 32000-2, 7.7.3.4).
constexpr std::array<const char*, 4> inheritableKeys = {"/Resources", "/MediaBox", "/CropBox",
                                                        "/Rotate"};

/// Categories of resources in which content can be (ISO 32000-2, 7.8.3).
constexpr std::array<const char*, 7> resourceCategories = {
    "/XObject", "/Pattern", "/Shading", "/Properties", "/ExtGState", "/Font", "/ColorSpace"};

/// Where an object stands and what it refers to.
struct IndexedObject {
    IndexedObject() : referenceCount(0), kind(Kind::Missing) {}

    /// In the file; for a member of an object stream, in the stream's decoded data.
    std::uint64_t start = 0;

    /// One past its last byte; in the file, past "endobj" and the white space after it.
    std::uint64_t end = 0;

    /// The references in its text, in order: positions in ReferenceIndex::references(). Packed,
    /// since files have millions of objects.
    std::uint32_t firstReference = 0;
    std::uint32_t referenceCount : 24;
    Kind kind : 8;

    /// The object stream that it is a member of, or 0.
    std::uint32_t container = 0;

    std::uint16_t generation = 0;
    std::uint16_t flags = 0;
};
static_assert(sizeof(IndexedObject) == 32);

/// The key under which an object's structure elements stand in the structure's parent tree: its
/// /StructParents or /StructParent.
struct StructureKey {
    std::uint32_t object = 0;
    std::int32_t key = -1; // -1 when it is not a plain number in the object's text
};

/// A structure element that refers to the element above it and to the page of its content, and to
/// nothing else.
struct PlainElement {
    std::uint32_t object = 0;
    std::uint32_t parent = 0;
    std::uint32_t page = 0;
};

/// The annotations of a page whose /Annots is an array of references and nothing else.
struct AnnotationsOfPage {
    std::uint32_t object = 0;
    std::uint32_t firstReference = 0;
    std::uint32_t count = 0;
};

/// A page tree node whose /Kids is an array of references and nothing else and that holds no
/// strings. Its text is kept, since nodes are what changes when pages go.
struct KidsOfNode {
    std::uint32_t object = 0;
    std::uint32_t firstReference = 0;
    std::uint32_t count = 0;
    std::string text;
};

/// An object stream and its members in order.
struct ObjectStreamMembers {
    std::uint32_t object = 0;
    std::vector<std::uint32_t> members;

    /// Where the members' text begins in the decoded data.
    std::uint64_t first = 0;

    /// Whether every object in the stream is a member: none was replaced by a later revision.
    bool allMembersAreCurrent = true;
};

/// What is known of a file before it is read.
enum class FileState : std::uint8_t {
    Whole,   // nothing may be wrong with it
    Damaged, // what libqpdf can be asked about may be
    Rebuilt, // likewise, and libqpdf made the cross-reference table from the objects that it found
};

/// Something in a damaged file that the index can't be sure of by itself. What libqpdf makes of it
/// is asked after, or the index is not used (Document).
struct Doubt {
    enum class Kind : std::uint8_t {
        /// A stream that does not end where its length says. `start` is where its data begin,
        /// `end` where the next object does.
        Length,

        /// An object that libqpdf may read otherwise, or have something to say about.
        Reading,

        /// An entry of the table that leads nowhere. The index does not contain it: it means null.
        Nowhere,

        /// An object whose number another one in the file has as well, or had while the table was
        /// read: libqpdf may know that one. This one lies between `start` and `end`.
        Place,
    };

    std::uint32_t object = 0;
    std::int32_t generation = 0;
    Kind kind = Kind::Reading;
    std::uint64_t start = 0;
    std::uint64_t end = 0;
};

/// Whether a file's highest object number is far above what a file of so many objects needs. Tables
/// by number would take memory that has nothing to do with the file's size. Up to 8388607 any
/// number passes (ISO 32000-1, Annex C).
bool isOutOfProportion(std::uint64_t highestNumber, std::uint64_t objects);

// What the index says, and for how long.
//
// It describes the file as it was loaded and never changes. What was changed since is in Changes:
// whoever asks what an object is or refers to now asks ObjectView, which looks here only for
// objects that Changes does not name. Numbers of the index stay valid, since saving keeps numbers;
// a number that Changes added is not in it.
//
// references() holds numbers, object by object; 0 stands for a reference that means null (nothing
// under that number, or another generation). An object that was replaced in a later revision has
// one entry, the one that counts. Members of object streams have their place in the decoded stream.
//
// Flags are allowed to say too much, never too little: whoever relies on one that is not set builds
// nothing. The same holds for the lists of plain links, plain structure elements and annotations of
// pages: an object that is not in them is looked at as an object.
//
// Rejected: reading leniently (what the index believes must be what libqpdf believes, or a save
// would copy other bytes than a reader sees, so a file with anything unexpected has no index, but
// for damage of which libqpdf can be asked what it makes: doubts());
// keeping texts (they are in the source; only page tree nodes, which change, keep theirs); hash
// maps by number (tables are half the size and are walked in order).

/// Where every object of a file lies and which objects it refers to, found in one pass over the
/// file in its order. Streams are passed over, but for object streams, which are decoded.
/// Nothing is guessed: a file in which anything doesn't read as expected has no index, and is then
/// handled through libqpdf alone, unless all that is wrong with it is damage that can be told
/// exactly.
class ReferenceIndex {
public:
    /// Null, with the reason, when the file is not fit for an index. Throws OutOfProportion for a
    /// file that holds more than one of its size can. Where the cross-reference data were read
    /// already, which they can be of a whole file, libqpdf is not asked for them.
    static std::unique_ptr<ReferenceIndex> build(io::ObjectFile& file, io::ByteSource& source,
                                                 DecodedStreams& streams,
                                                 const CrossReferences* read, FileState state,
                                                 std::string& reason);

    /// What the file was taken for. Of one that is not whole some objects may be lost.
    FileState fileState() const { return fileState_; }

    /// What libqpdf has to be asked about, by object number; nothing of a whole file.
    const std::vector<Doubt>& doubts() const { return doubts_; }

    /// One more than the highest object number.
    std::uint32_t size() const { return static_cast<std::uint32_t>(objects_.size()); }

    /// The highest number of an object or of a reference, to whatever.
    std::uint32_t highestNumber() const { return highestNumber_; }

    const IndexedObject& object(std::uint32_t number) const { return objects_[number]; }

    bool contains(std::uint32_t number) const
    {
        return number < objects_.size() && objects_[number].kind != Kind::Missing;
    }

    /// The number of the object that a reference leads to; 0 when that is not in the file, or has
    /// another generation there, which means null.
    std::uint32_t targetOf(Reference reference) const
    {
        const bool isThere = contains(reference.object) &&
                             objects_[reference.object].generation == reference.generation;
        return isThere ? reference.object : 0;
    }

    /// Object numbers of all references, object by object. One that means null stands here as 0.
    const std::vector<std::uint32_t>& references() const { return references_; }

    /// A page tree node's kids; null when its /Kids is not an array of references only.
    const KidsOfNode* kidsOf(std::uint32_t node) const;

    /// A page's annotations; null when its /Annots is not an array of references only.
    const AnnotationsOfPage* annotationsOf(std::uint32_t page) const;

    const std::vector<ObjectStreamMembers>& objectStreams() const { return objectStreams_; }

    /// The objects that are not in object streams, in the order in which they lie in the file.
    const std::vector<std::uint32_t>& fileOrder() const { return fileOrder_; }

    /// The objects in which a page is named by its number as the target of a destination.
    const std::vector<std::uint32_t>& withNumberedDestinations() const
    {
        return withNumberedDestinations_;
    }

    /// The objects, in ascending order of the hash, that name destinations: hashes by
    /// destinationHash() of the names, in the form in which name trees have them.
    struct NamedDestination {
        std::uint64_t hash;
        std::uint32_t object;
    };
    const std::vector<NamedDestination>& namedDestinations() const { return namedDestinations_; }

    /// A link annotation whose only action is a destination, in a form that can be judged from
    /// here: an array that begins with a reference, or a name.
    struct PlainLink {
        std::uint32_t object;
        std::uint32_t page; // the first reference of the array; 0 for a name
        std::uint32_t nameStart;
        std::uint32_t nameLength;
    };

    /// The plain link with an object number; null when the object is something else.
    const PlainLink* plainLink(std::uint32_t object) const;

    /// A plain link's name: a string's bytes, or a name with its slash.
    std::string_view nameOf(const PlainLink& link) const
    {
        return std::string_view(linkNames_).substr(link.nameStart, link.nameLength);
    }

    /// The plain structure element with an object number; null when the object is something else.
    const PlainElement* plainElement(std::uint32_t object) const;

    /// All keys into the structure's parent tree, in no order.
    const std::vector<StructureKey>& structureKeys() const { return structureKeys_; }

    /// Whether anything in the file may bear the name of the filter by which a stream names how it
    /// is enciphered (ISO 32000-2, 7.4.10).
    bool mayUseCryptFilters() const { return mayUseCryptFilters_; }

    /// Whether the newest cross-reference section is a stream.
    bool usesCrossReferenceStream() const { return usesCrossReferenceStream_; }

private:
    friend class IndexBuilder;
    friend class ObjectNotes;

    FileState fileState_ = FileState::Whole;
    std::vector<Doubt> doubts_;
    std::uint32_t highestNumber_ = 0;
    std::vector<IndexedObject> objects_;
    std::vector<std::uint32_t> references_;
    std::vector<KidsOfNode> kids_;               // by object number
    std::vector<AnnotationsOfPage> annotations_; // likewise
    std::vector<std::uint32_t> fileOrder_;
    std::vector<std::uint32_t> withNumberedDestinations_;
    std::vector<NamedDestination> namedDestinations_;
    std::vector<PlainLink> plainLinks_; // by object number
    std::string linkNames_;
    std::vector<StructureKey> structureKeys_;
    std::vector<PlainElement> plainElements_; // by object number
    std::vector<ObjectStreamMembers> objectStreams_;
    bool mayUseCryptFilters_ = false;
    bool usesCrossReferenceStream_ = false;
};

/// The hash of a destination's name: a string's bytes, or a name with its slash.
std::uint64_t destinationHash(std::string_view name);

} // namespace karvel::index
