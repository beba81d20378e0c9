#pragma once

#include "VantoraHost/core/Error.h"

#include <string>

namespace vantora {

/// Writes a text to a file, which is replaced whole if it is there, so that nobody reads half of
/// it.
Outcome writeTextFile(const std::string& path, const std::string& text);

} // namespace vantora
