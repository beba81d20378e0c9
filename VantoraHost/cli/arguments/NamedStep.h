#pragma once

#include "VantoraHost/core/actions/SavedSteps.h"
#include "VantoraHost/core/actions/Sequence.h"

#include <optional>

namespace vantora::cli {

/// A step as the command line names it: spelled out, or, with no action, in what somebody saved;
/// the options given then count before the saved ones.
struct NamedStep : StepRequest {
    std::optional<SavedIn> saved = {};
};

} // namespace vantora::cli
