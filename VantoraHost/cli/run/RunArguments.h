#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/arguments/InputArguments.h"
#include "VantoraHost/cli/arguments/StepArguments.h"
#include "VantoraHost/cli/arguments/WorkerArguments.h"
#include "VantoraHost/cli/run/RunOptions.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace vantora::cli {

/// What the arguments of the command "run" are read into.
struct RunArguments : StepArguments {
    InputArguments inputs;
    CLI::Option* rangesOption = nullptr;
    CLI::Option* outputOption = nullptr;
    CLI::Option* folderOption = nullptr;
    CLI::Option* nameOption = nullptr;
    CLI::Option* shardOption = nullptr;
    CLI::Option* reportOption = nullptr;
    CLI::Option* resumeOption = nullptr;
    CLI::Option* ifEmptyOption = nullptr;
    CLI::Option* metricsOption = nullptr;
    CLI::Option* certificateOption = nullptr;
    CLI::Option* checksumsOption = nullptr;
    std::string ifEmpty;
    std::vector<std::string> acceptedFailures;
    WorkerArguments workers;
    std::string output;
    std::string folder;
    std::string name;
    std::string certificate;
    std::string shard;
    bool overwrite = false;
    bool rename = false;
    bool inPlace = false;
    bool backup = false;
    RunOptions options;
};

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declareRun(CLI::App& program, RunArguments& run, std::size_t arguments);

/// The options that the arguments say, or the mistake in them.
tl::expected<RunOptions, Ending> finished(RunArguments& run);

/// Parts of it that other commands have as well. What counts as done, and as a failure:
void declareJudgement(CLI::App& command, RunArguments& run);
std::optional<std::string> readJudgement(RunArguments& run);

/// What is told of documents: --json, -q, -v; and the mistake in it.
void declareTelling(CLI::App& command, RunOptions& options);
std::optional<std::string> tellingMistake(const RunOptions& options);

/// Reads where the results go, of options that exclude each other as they should; returns the
/// mistake.
std::optional<std::string> readDestination(RunArguments& run);

} // namespace vantora::cli
