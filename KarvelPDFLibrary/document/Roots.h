#pragma once

#include "KarvelPDFLibrary/index/CrossReferenceReader.h"
#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include <optional>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <vector>

namespace karvel {

/// What a document's trailer and catalog say, as far as it is told by their texts: most documents
/// have little in them, and need not be opened by libqpdf to tell that.
class Roots {
public:
    /// Nothing when the catalog does not lie in the file by itself, the page tree has no number,
    /// or anything in the texts is odd: libqpdf then says what they mean.
    static std::optional<Roots> read(const index::CrossReferences& read,
                                     const index::ReferenceIndex& index, io::ByteSource& source);

    QPDFObjGen catalog() const { return catalog_; }
    QPDFObjGen pages() const { return pages_; }

    /// Whether the catalog has an entry. The key is without its slash.
    bool catalogHas(std::string_view key) const;

    /// An entry of the trailer: its key with the slash, and its value, which either is a reference
    /// or has none in it.
    struct Entry {
        std::string key;
        std::optional<QPDFObjGen> reference;
        QPDFObjectHandle direct; // where it is none
    };

    /// Those of the trailer, in the order of their keys.
    const std::vector<Entry>& trailer() const { return trailer_; }

    /// An entry of it; null when there is none. The key is with its slash.
    const Entry* inTrailer(std::string_view key) const;
    bool trailerHas(std::string_view key) const { return inTrailer(key) != nullptr; }

    /// The version in the header, such as "1.7".
    const std::string& version() const { return version_; }

private:
    bool readTrailer(const std::string& text);
    bool readCatalog(const index::ReferenceIndex& index, io::ByteSource& source);

    std::vector<Entry> trailer_;
    std::vector<std::string> catalogKeys_; // sorted
    QPDFObjGen catalog_;
    QPDFObjGen pages_;
    std::string version_;
};

} // namespace karvel
