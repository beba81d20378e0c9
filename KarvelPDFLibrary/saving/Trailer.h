#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/Renumbering.h"

#include <cstdint>
#include <memory>
#include <string>

namespace karvel::saving {

/// The trailer entries of the document that go on to hold in another file, each after a space.
/// References keep their numbers where no others are given.
std::string trailerEntries(Document& document, const Renumbering* numbers = nullptr);

/// The identifier of a file that is written: its permanent half stays, the changing half is new
/// (ISO 32000-2, 14.4), at random or by what was written.
class FileIdentifier {
public:
    explicit FileIdentifier(bool deterministic);
    ~FileIdentifier();
    FileIdentifier(const FileIdentifier&) = delete;
    FileIdentifier& operator=(const FileIdentifier&) = delete;

    /// Takes note of what is written, and of what is copied: where bytes lie in a file says enough
    /// for one of this size.
    void written(const std::string& text);
    void copied(std::uint64_t start, std::uint64_t end);

    /// The trailer entry /ID.
    std::string entry(Document& document) const;

private:
    struct Digest;
    std::unique_ptr<Digest> digest_; // null for one at random
};

} // namespace karvel::saving
