#pragma once

#include "KarvelPDFLibrary/index/ReferenceIndex.h"

namespace karvel::index {

/// The object with whose flags it is noted what is true of a file as a whole. No file has it.
constexpr std::uint32_t wholeFile = 0;

/// A flag of that object: something in the file bears the name of the filter by which a stream
/// names how it is enciphered (ISO 32000-2, 7.4.10).
constexpr int NamesCryptFilter = 1;

inline bool mayUseCryptFilters(const ReferenceIndex& index)
{
    return (index.object(wholeFile).flags & NamesCryptFilter) != 0;
}

} // namespace karvel::index
