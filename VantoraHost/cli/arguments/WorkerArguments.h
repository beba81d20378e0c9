#pragma once

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/arguments/WorkerOptions.h"

#include <string>
#include <tl/expected.hpp>

namespace vantora::cli {

/// What the arguments about worker processes are read into.
struct WorkerArguments {
    CLI::Option* jobsOption = nullptr;
    CLI::Option* timeoutOption = nullptr;
    CLI::Option* memoryOption = nullptr;
    std::string jobs;
    std::string timeout;
    std::string memory;
};

/// Declares -j, --timeout and --memory-limit.
void declareWorkers(CLI::App& command, WorkerArguments& workers);

/// What they say, or the mistake in it.
tl::expected<WorkerChoice, std::string> readWorkers(const WorkerArguments& workers);

} // namespace vantora::cli
