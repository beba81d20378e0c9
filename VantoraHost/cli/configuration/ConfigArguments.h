#pragma once

#include "VantoraHost/cli/configuration/ConfigCommand.h"

#include <CLI/CLI.hpp>

#include <string>

namespace vantora::cli {

/// What the arguments of the command "config" are read into.
struct ConfigArguments {
    bool example = false;
    ConfigOptions options;
};

/// Declares the command; what it is read into must outlive the parsing.
void declareConfig(CLI::App& program, ConfigArguments& arguments);

/// A configuration file in which every option stands with what it does, as a comment; `run` is the
/// command that explains them.
std::string exampleConfiguration(const CLI::App& run);

} // namespace vantora::cli
