#pragma once

#include "VantoraHost/cli/desktop/DesktopCommand.h"

#include <CLI/CLI.hpp>

#include <cstddef>

namespace vantora::cli {

/// Declares the command; what it is read into must outlive the parsing.
void declareDesktop(CLI::App& program, DesktopOptions& options, std::size_t arguments);

} // namespace vantora::cli
