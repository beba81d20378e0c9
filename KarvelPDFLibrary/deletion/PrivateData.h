#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// Private data are what a program keeps in a document for itself: below /PieceInfo (ISO 32000-2,
/// 14.5) and below keys of the catalog, of pages and of the trailer that the standard doesn't have.
/// Nobody knows what they mean. Where they refer to a removed page, what stands in the same
/// innermost dictionary as the reference is taken to be about that page and goes.
class PrivateData {
public:
    explicit PrivateData(Removal& removal);

    /// Takes the private data in an object that lead to removed pages out. What else the object
    /// has, and an object that is known by other ways too, stays as it is.
    void take(int object);

    /// The same for the trailer.
    void takeFromTrailer();

private:
    void takeFrom(QPDFObjectHandle object);
    void takeFromKeys(const QPDFObjectHandle& owner, QPDFObjectHandle dictionary);
    void takeFromValue(const QPDFObjectHandle& owner, QPDFObjectHandle dictionary,
                       const std::string& key, bool isContainer);
    bool empty(const QPDFObjectHandle& owner, const QPDFObjectHandle& value);
    bool isPrivateKey(int object, const std::string& key);
    bool leadsBelow(const QPDFObjectHandle& value) const;
    bool leads(const QPDFObjectHandle& reference) const;
    bool hasKeysOfItsOwn(const QPDFObjectHandle& object);
    bool isPrivate(int object);
    bool isKnown(int object);
    bool isHeldPrivately(int holder, int object);

    Removal& removal_;
    NumberSet public_;
    NumberSet private_;
    NumberSet emptied_;     // arrays that led to removed pages
    std::vector<int> open_; // what refers to those
    std::size_t steps_ = 0;
};

} // namespace karvel::deletion
