#pragma once

#include <string>

namespace vantora {

/// What of a page is missing in an output, since damage made it unreadable in the input.
struct PageLoss {
    int page = 0;     ///< its number in the input
    std::string what; ///< fit to follow "lost of page N: "
};

} // namespace vantora
