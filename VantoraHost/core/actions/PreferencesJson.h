#pragma once

#include "VantoraApp/interface/ActionInterface.h"

#include <string>

namespace vantora {

/// The options as one JSON object on one line, in the order of their keys, ASCII only. What JSON
/// has no form for, such as a date, becomes a text.
std::string preferencesJson(const PreferencesMap& preferences);

} // namespace vantora
