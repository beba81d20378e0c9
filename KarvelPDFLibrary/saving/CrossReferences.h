#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace karvel::saving {

/// One entry of a cross-reference section (ISO 32000-2, 7.5.4 and 7.5.8).
struct CrossReference {
    enum class Kind : std::uint8_t { Free = 0, InFile = 1, InObjectStream = 2 };
    Kind kind = Kind::Free;

    /// The generation of an object in the file; the index of one in an object stream.
    std::uint32_t second = 0;

    /// The offset of an object in the file; the object stream's number.
    std::uint64_t first = 0;
};

/// Gives `put` a cross-reference table for entries numbered from 0, in parts, with the word "xref"
/// but no trailer. Free entries are linked. Objects in object streams have no place in it.
void putCrossReferenceTable(const std::vector<CrossReference>& entries,
                            const std::function<void(const std::string& part)>& put);

/// The data of a cross-reference stream for entries numbered from 0, compressed, and the dictionary
/// entries that say how to read it (/W, /Filter, /DecodeParms; neither /Size nor /Length).
struct CrossReferenceStream {
    std::string dictionaryEntries;
    std::string data;
};
CrossReferenceStream crossReferenceStream(const std::vector<CrossReference>& entries);

/// Data compressed for /FlateDecode.
std::string deflated(const std::string& data);

} // namespace karvel::saving
