#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/configuration/Configuration.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace vantora::cli {

/// The group of options that the help has no lines for.
constexpr char notInHelp[] = "not in the help";

/// Declares --profile and --no-config, and for each flag of the command that a configuration may
/// switch on one that switches it off; to be called when all others are declared.
void declareConfiguration(CLI::App& command);

/// Whether a command was declared so.
bool takesConfiguration(const CLI::App& command);

/// A command line with what the configuration adds to it.
struct ConfiguredArguments {
    struct Added {
        std::vector<std::string> names; ///< the option's, with their dashes
        std::size_t line;
    };

    std::vector<std::string> arguments;
    std::string path; ///< of the file
    std::vector<Added> added;

    /// The end of that command line, with the line of the file that is to blame, if one is.
    Ending explained(Ending ending) const;
};

/// Adds to arguments, which `command` has read, what the user's configuration says about it.
tl::expected<ConfiguredArguments, Ending>
withConfiguration(const std::vector<std::string>& arguments, const CLI::App& command);

} // namespace vantora::cli
