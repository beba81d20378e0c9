#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"

#include <cstdint>
#include <stdexcept>

namespace karvel::index {

/// The most that a file of a size in bytes can need, with much room: entries in its cross-reference
/// data that stand for objects, bytes of its decoded object streams, references between objects. A
/// file with more was made to cost time and memory.
std::uint64_t mostEntries(std::int64_t fileSize);
std::uint64_t mostDecodedBytes(std::int64_t fileSize);
std::uint64_t mostReferences(std::int64_t fileSize);

/// Thrown for a file that has more.
class OutOfProportion : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whether a file's cross-reference data have more entries than a file of its size can need. They
/// are gone through as libqpdf does (ISO 32000-2, 7.5.8), which makes its table of them before it
/// can be asked how large that would be; a stream is decoded only as far as the limit. False for
/// data that libqpdf will not read either.
bool hasExcessiveCrossReferences(io::ByteSource& source);

} // namespace karvel::index
