#pragma once

#include "VantoraHost/cli/Options.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vantora::cli {

/// What the arguments that name steps are read into.
struct StepArguments {
    CLI::App* command = nullptr;
    std::vector<std::string> pages;
    std::vector<std::string> choose;
    std::vector<std::string> keep;
    std::vector<std::string> except;
    std::vector<std::string> actions;
    std::vector<std::string> lists;
    std::vector<std::string> favourites;
    std::vector<std::string> toolSettings;
    std::vector<std::string> settings;
    CLI::Option* pagesOption = nullptr;
    CLI::Option* actionOption = nullptr;
    CLI::Option* listOption = nullptr;
    CLI::Option* favouriteOption = nullptr;
    CLI::Option* toolSettingsOption = nullptr;
    CLI::Option* setOption = nullptr;
};

/// What the arguments of the command "run" are read into.
struct RunArguments : StepArguments {
    CLI::Option* filesFromOption = nullptr;
    CLI::Option* outputOption = nullptr;
    CLI::Option* folderOption = nullptr;
    CLI::Option* nameOption = nullptr;
    CLI::Option* shardOption = nullptr;
    CLI::Option* reportOption = nullptr;
    CLI::Option* resumeOption = nullptr;
    CLI::Option* jobsOption = nullptr;
    CLI::Option* timeoutOption = nullptr;
    CLI::Option* memoryOption = nullptr;
    CLI::Option* ifEmptyOption = nullptr;
    CLI::Option* metricsOption = nullptr;
    std::string ifEmpty;
    std::vector<std::string> acceptedFailures;
    std::string jobs;
    std::string timeout;
    std::string memory;
    std::string output;
    std::string folder;
    std::string name;
    std::string shard;
    bool overwrite = false;
    bool rename = false;
    bool inPlace = false;
    bool backup = false;
    RunOptions options;
};

/// Declares the arguments that name steps; what they are read into must outlive the parsing.
void declareSteps(CLI::App& command, StepArguments& steps);

/// The steps in the order of the command line, at least one, or the mistake in them.
tl::expected<std::vector<NamedStep>, std::string> stepsOf(const StepArguments& arguments);

/// Declares the command; `arguments` is the number of arguments on the command line. What it is
/// read into must outlive the parsing.
void declareRun(CLI::App& program, RunArguments& run, std::size_t arguments);

/// The options that the arguments say, or the mistake in them.
tl::expected<Command, Ending> finished(RunArguments& run);

} // namespace vantora::cli
