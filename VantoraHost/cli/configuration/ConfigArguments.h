#pragma once

#include "VantoraHost/cli/configuration/ConfigCommand.h"
#include "VantoraHost/core/language/Language.h"

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
/// command that explains them. Names and values are the same in every language.
std::string exampleConfiguration(const CLI::App& run, const Language& language);

} // namespace vantora::cli
