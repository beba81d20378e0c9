#pragma once

#include "VantoraHost/cli/completion/CompletionCommand.h"
#include "VantoraHost/core/language/Language.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace vantora::cli {

/// What the last of some words may become, which follow the program's name on a command line that
/// is being typed; `program` has all commands declared. Descriptions are in the language given.
CompletionOptions completionOf(const CLI::App& program, const std::vector<std::string>& words,
                               const Language& language = {});

} // namespace vantora::cli
