#pragma once

#include "VantoraHost/verification/Verification.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vantora {

/// What was found out about an output in which verification found nothing.
struct VerifiedOutput {
    std::uint64_t lookedFor = 0;      ///< things of removed pages
    std::vector<std::string> notTold; ///< what can't be told, as sentences
    verification::Amounts amounts;
    std::vector<verification::LabelledPages> labels; ///< none where the document has no labels
};

} // namespace vantora
