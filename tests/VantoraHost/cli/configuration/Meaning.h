#pragma once

#include "VantoraHost/cli/CommandLine.h"

namespace support {

/// What a command line for a run comes to, as a text that is the same for lines that say the same:
/// all that a configuration may add to, or the mistake.
std::string meaningOf(const tl::expected<vantora::cli::Command, vantora::cli::Ending>& command);

} // namespace support
