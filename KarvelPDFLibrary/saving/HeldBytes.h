#pragma once

#include "KarvelPDFLibrary/saving/Liveness.h"

#include <cstdint>
#include <string>

namespace karvel::saving {

/// What the bytes of a document that was written are held by, the largest kind first, such as
/// "images 3,200,000 bytes, fonts 120,000, other 9,000". Large streams are looked at one by one;
/// what is left over counts as other.
std::string whatHolds(Document& document, const Liveness& live, std::uint64_t writtenBytes);

} // namespace karvel::saving
