#pragma once

#include "VantoraHost/cli/actions/ActionsCommand.h"

#include <CLI/CLI.hpp>

namespace vantora::cli {

/// Declares the command; what it is read into must outlive the parsing.
void declareActions(CLI::App& program, ActionsOptions& actions);

} // namespace vantora::cli
