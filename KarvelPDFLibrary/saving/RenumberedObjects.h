#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/saving/Cipher.h"
#include "KarvelPDFLibrary/saving/LinearOrder.h"

#include <cstdint>
#include <optional>
#include <string>

namespace karvel::saving {

/// An object as it is written, from its number to the line end after "endobj": a text, or, where
/// data is large, a text, a part of the source and a line end.
struct WrittenObject {
    std::string text;
    std::uint64_t from = 0; // in the source
    std::uint64_t copied = 0;

    /// Where the object lies in the source, if it was not changed.
    std::uint64_t start = 0;
    std::uint64_t end = 0;

    std::uint64_t length() const { return text.size() + copied + (copied > 0 ? 1 : 0); }
};

/// Writes objects under other numbers. Values are copied as they stand but for their references;
/// they are built only where they were changed, or are enciphered by a key that goes by the number.
class RenumberedObjects {
public:
    RenumberedObjects(Document& document, const LinearOrder& order);

    /// An object or object stream that stands in the file by itself, by the number that it had.
    /// Each call gives the same, but for what is random in ciphers.
    WrittenObject written(std::uint32_t object);

    /// A stream that the document does not have, enciphered like its own.
    std::string stream(std::uint32_t number, const std::string& entries, std::string data) const;

private:
    bool isToBeBuilt(std::uint32_t object) const;
    std::string value(std::uint32_t object, bool enciphered);
    std::optional<WrittenObject> copied(std::uint32_t object);
    std::string packed(const PackedStream& stream);

    Document& document_;
    const index::ReferenceIndex& index_;
    const LinearOrder& order_;
    std::optional<Cipher> cipher_;
    std::uint32_t encryption_ = 0; // the encryption dictionary, never enciphered itself
    index::FileText text_;
    ObjectView objects_;
};

} // namespace karvel::saving
