#pragma once

#include "KarvelPDFLibrary/base/LargeVectors.h"
#include "KarvelPDFLibrary/index/ReferenceIndex.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <optional>

namespace karvel::index {

/// Takes notes of one object after the other while they are scanned, and enters them into an index.
class ObjectNotes final : public ScanSink {
public:
    explicit ObjectNotes(ReferenceIndex& index) : index_(index) {}

    /// Before an object is scanned.
    void begin();

    /// Forgets what was noted since begin(), for an object that is scanned again.
    void forget();

    /// When an object's value was scanned, with its text, which is still there.
    void valueEnds(std::string_view text) { keepNodeText(text); }

    /// The text of the value of /Length.
    const std::string& length() const { return length_; }

    /// Enters the notes. False when the index can't hold so many references.
    bool keep(IndexedObject& object, std::uint32_t number, int flags);

    /// When all objects are known: says which references mean something, and sorts the lists.
    void finish();

    void reference(std::uint32_t object, std::uint32_t generation) override
    {
        appendLarge(index_.references_, object);
        appendLarge(generations_, static_cast<std::uint16_t>(generation));
    }

    void name(std::string_view name) override;

    void destinationName(std::string_view written) override
    {
        destinations_.push_back(destinationHash(decodedString(written)));
    }

    void numberedDestination() override { hasNumberedDestination_ = true; }

    void beforeEntry(std::string_view) override { valueStart_ = index_.references_.size(); }

    void afterEntry(std::string_view key, std::string_view value) override;

private:
    std::uint32_t referencesInValue() const
    {
        return static_cast<std::uint32_t>(index_.references_.size() - valueStart_);
    }
    void noteKids(std::string_view value);
    void noteAnnotations(std::string_view value);
    void keepNodeText(std::string_view text);
    void noteDestination(std::string_view value);
    void keepPlainLink(std::uint32_t number);
    void keepPlainElement(std::uint32_t number);
    std::size_t referenceIn(std::string_view value) const;
    void keepKind(IndexedObject& object, std::uint32_t number);
    void resolveReferences();

    ReferenceIndex& index_;

    /// Generations beside index_.references_, needed until all objects are known.
    std::vector<std::uint16_t> generations_;

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
    std::size_t linkReference_ = noReference; // positions in index_.references_
    std::size_t parentReference_ = noReference;
    std::size_t pageReference_ = noReference;
    bool hasStructureType_ = false;
    bool hasTitle_ = false;
    bool hasParent_ = false;
    bool isAction_ = false; // or a destination, or a structure element
    std::string linkName_;
    std::vector<std::uint64_t> destinations_;
    std::optional<AnnotationsOfPage> annotations_;
    std::uint16_t flags_ = 0;
    std::int32_t structureKey_ = -1; // when there is one
};

} // namespace karvel::index
