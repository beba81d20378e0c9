#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/arguments/InputArguments.h"
#include "VantoraHost/cli/arguments/StepArguments.h"
#include "VantoraHost/cli/arguments/WorkerArguments.h"
#include "VantoraHost/cli/pages/PagesCommand.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <tl/expected.hpp>

namespace vantora::cli {

/// What the arguments of the command "pages" are read into.
struct PagesArguments {
    InputArguments inputs;
    ChoiceArguments choices;
    WorkerArguments workers;
    CLI::Option* sheetOption = nullptr;
    CLI::Option* reportOption = nullptr;
    PagesOptions options;
};

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declarePages(CLI::App& program, PagesArguments& pages, std::size_t arguments);

/// The options that the arguments say, or the mistake in them.
tl::expected<PagesOptions, Ending> finished(PagesArguments& pages);

} // namespace vantora::cli
