#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/configure/ConfigureCommand.h"

#include <CLI/CLI.hpp>

#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace vantora::cli {

/// What the arguments of the command "configure" are read into.
struct ConfigureArguments {
    std::string action;
    std::vector<std::string> settings;
    std::string place;
    ConfigureOptions options;
};

/// Declares the command; what it is read into must outlive the parsing.
void declareConfigure(CLI::App& program, ConfigureArguments& configure);

/// The options that the arguments say, or the mistake in them.
tl::expected<ConfigureOptions, Ending> finished(ConfigureArguments& configure);

} // namespace vantora::cli
