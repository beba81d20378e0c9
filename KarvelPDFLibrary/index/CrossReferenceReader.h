#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace karvel::index {

/// What a file's cross-reference data say of one number. Packed, since files have millions.
struct CrossReference {
    enum class Kind : std::uint8_t {
        None, // nothing is said of it, or that it is free
        InFile,
        InObjectStream,
    };

    /// Offset in the file; for a member of an object stream, the stream's number in the upper half
    /// and the place among its members in the lower one.
    std::uint64_t place = 0;
    std::uint16_t generation = 0;
    Kind kind = Kind::None;

    /// Whether an entry says that the number is free, which hides what older ones say of it.
    bool isFreed = false;
};
static_assert(sizeof(CrossReference) == 16);

/// The cross-reference data of a file.
struct CrossReferences {
    std::vector<CrossReference> entries; // by object number
    std::uint64_t count = 0;             // of the entries that stand for objects

    /// The text of the newest trailer, or of the dictionary of the cross-reference stream, and
    /// something after it, as a ValueScanner needs it.
    std::string trailer;

    /// The version in the header, such as "1.7".
    std::string version;
};

/// Reads the cross-reference data of a file without libqpdf: tables, streams, tables with streams
/// beside them, and the older ones that they name (ISO 32000-2, 7.5.4 to 7.5.8). Nothing where
/// anything is not as it should be, so that libqpdf, which mends much, reads them and says what is
/// wrong; nor of an encrypted file, and where there is more than a file of its size can need. What
/// it gives is what libqpdf reads without a warning.
std::optional<CrossReferences> readCrossReferences(io::ByteSource& source);

} // namespace karvel::index
