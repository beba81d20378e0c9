#pragma once

#include "VantoraHost/cli/undo/UndoCommand.h"

#include <CLI/CLI.hpp>

#include <cstddef>

namespace vantora::cli {

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declareUndo(CLI::App& program, UndoOptions& undo, std::size_t arguments);

} // namespace vantora::cli
