#pragma once

#include "KarvelPDFLibrary/saving/Liveness.h"

#include <cstdint>
#include <string>

namespace karvel::saving {

/// What only pages that were cut showed, and something else in the document still holds.
struct HeldBytes {
    std::uint64_t bytes = 0;
    std::string kinds; ///< the largest first, such as "images 3,200,000 bytes, fonts 120,000"
};

/// Looks at streams, as they were stored; each is what its dictionary says. Nothing is found in a
/// document without an index.
HeldBytes heldThoughCut(Document& document, const Liveness& live);

} // namespace karvel::saving
