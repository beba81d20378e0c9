#pragma once

#include "VantoraHost/core/actions/Sequence.h"

#include <string>
#include <vector>

namespace vantora {

/// What is the same for two runs of the same actions with the same options and choices in the same
/// order, and for no others: a SHA-256 in hexadecimal digits.
std::string stepsDigest(const std::vector<Step>& steps);

/// The same of steps that are asked for by saved options alone, as in a window.
std::string stepsDigest(const std::vector<StepRequest>& steps);

/// The steps as one JSON array on one line, ASCII only: their actions and options.
std::string stepsJson(const std::vector<Step>& steps);

} // namespace vantora
