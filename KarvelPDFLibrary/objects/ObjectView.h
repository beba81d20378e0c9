#pragma once

#include "KarvelPDFLibrary/index/ReferenceIndex.h"
#include "KarvelPDFLibrary/index/ValueTexts.h"
#include "KarvelPDFLibrary/objects/Changes.h"

#include <cstdint>
#include <optional>
#include <qpdf/QPDF.hh>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace karvel {

/// What the objects of a document are now, in whatever form:
///
///   unchanged         the index has its references, the file its text
///   changed by text   the text is the truth, and its references are those of the object
///   built             libqpdf's object is the truth: one that was added or changed otherwise, and
///                     every one of a file that has no index
///   removed           it refers to nothing, has no text and is null
///
/// Objects are named by their numbers. A view is cheap to make and reads ahead in the file, so that
/// whoever goes through objects in their order has one of his own.
class ObjectView {
public:
    /// `index`, and the source and object streams that it is of, are null for a file that is not
    /// fit for an index.
    ObjectView(io::ObjectFile& file, Changes& changes, const index::ReferenceIndex* index,
               io::ByteSource* source, index::DecodedStreams* streams);

    /// What the index knows of an object; null when that is nothing, or of a former value.
    const index::IndexedObject* unchanged(int number) const
    {
        const bool known = index_ != nullptr && number >= 0 &&
                           index_->contains(static_cast<std::uint32_t>(number)) &&
                           !changes_.kind(number);
        return known ? &index_->object(static_cast<std::uint32_t>(number)) : nullptr;
    }

    /// The text of an object that was changed by it, as it is to be written; null for others.
    const std::string* changedText(int number) const { return changes_.text(number); }

    /// An object's number with the generation under which it is in use. Without an index that is
    /// the one under which note() or a reference named it last.
    QPDFObjGen idOf(int number) const;

    /// Without an index: tells under which generation an object is in use.
    void note(QPDFObjGen id);

    /// Some numbers of objects, each once or more; valid until the next call of a view's member.
    struct Numbers {
        const std::uint32_t* first = nullptr;
        const std::uint32_t* last = nullptr;
        const std::uint32_t* begin() const { return first; }
        const std::uint32_t* end() const { return last; }
    };

    /// The objects that an object refers to, in the order of its text where that is known. A
    /// reference that means null, since its object is in use under another generation, is a 0.
    Numbers references(int number);

    /// The same for an unchanged object, valid as long as the index; nothing for others.
    std::optional<Numbers> indexedReferences(int number) const
    {
        const index::IndexedObject* object = unchanged(number);
        return object == nullptr ? std::nullopt : std::optional<Numbers>(indexed(*object));
    }

    /// The objects to which a value refers outside of what it refers to itself.
    Numbers referencesIn(const QPDFObjectHandle& value);

    /// A text that begins with an object's value and goes on after it, as a ValueScanner needs it;
    /// valid until the next call. In an encrypted file its strings may be enciphered. Empty for an
    /// object that is built or removed, or that the source does not give any more.
    std::string_view text(int number);

    /// An object for reading; null for a removed one. For changing it, see edit() and Changes.
    QPDFObjectHandle object(int number);

    /// An entry of a dictionary: its key without the slash, and the text of its new value; an empty
    /// one takes the entry out.
    struct Entry {
        std::string_view key;
        std::string value;
        bool onlyWhereNull = false; // an entry that has a value keeps it
    };

    /// Gives a dictionary other entries. An unchanged one gets a new text, with the rest as it is
    /// written, where that tells all that has to be known; all others are changed as objects.
    void edit(QPDFObjGen id, const std::vector<Entry>& entries);

    /// The same for what had to be built in any case.
    void editObject(QPDFObjGen id, const std::vector<Entry>& entries);

private:
    std::optional<std::string> editedText(int number, const std::vector<Entry>& entries);
    bool mayBeNull(std::string_view value) const;
    Numbers indexed(const index::IndexedObject& object) const
    {
        const std::uint32_t* first = index_->references().data() + object.firstReference;
        return {first, first + object.referenceCount};
    }
    Numbers found() const { return {found_.data(), found_.data() + found_.size()}; }
    void add(QPDFObjGen reference);

    io::ObjectFile& file_;
    Changes& changes_;
    const index::ReferenceIndex* index_;
    std::optional<index::ValueTexts> texts_;
    std::vector<std::uint32_t> found_; // what references() gives for what is not unchanged
    std::string keptText_;             // what text() gives where it is not read from the file
    std::unordered_map<int, int> otherThanZero_; // generations, without an index
};

} // namespace karvel
