#pragma once

#include "VantoraHost/cli/info/InfoCommand.h"

#include <CLI/CLI.hpp>

#include <cstddef>

namespace vantora::cli {

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declareInfo(CLI::App& program, InfoOptions& info, std::size_t arguments);

} // namespace vantora::cli
