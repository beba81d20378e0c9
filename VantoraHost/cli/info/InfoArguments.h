#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/arguments/InputArguments.h"
#include "VantoraHost/cli/arguments/WorkerArguments.h"
#include "VantoraHost/cli/info/InfoCommand.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <tl/expected.hpp>

namespace vantora::cli {

/// What the arguments of the command "info" are read into.
struct InfoArguments {
    InputArguments inputs;
    WorkerArguments workers;
    InfoOptions options;
};

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declareInfo(CLI::App& program, InfoArguments& info, std::size_t arguments);

/// The options that the arguments say, or the mistake in them.
tl::expected<InfoOptions, Ending> finished(InfoArguments& info);

} // namespace vantora::cli
