#pragma once

#include "VantoraHost/cli/run/RunArguments.h"
#include "VantoraHost/cli/watch/WatchOptions.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <string>
#include <tl/expected.hpp>

namespace vantora::cli {

/// What the arguments of the command "watch" are read into.
struct WatchArguments {
    RunArguments run;
    WatchOptions options;
    CLI::Option* failedOption = nullptr;
    CLI::Option* doneOption = nullptr;
    CLI::Option* settleOption = nullptr;
    CLI::Option* pollOption = nullptr;
    std::string settle;
    std::string poll;
};

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declareWatch(CLI::App& program, WatchArguments& watch, std::size_t arguments);

/// The options that the arguments say, or the mistake in them.
tl::expected<WatchOptions, Ending> finished(WatchArguments& watch);

} // namespace vantora::cli
