#pragma once

#include "VantoraHost/core/OutputPlan.h"
#include "VantoraHost/core/Sequence.h"

#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

namespace vantora::cli {

struct RunOptions {
    std::vector<StepRequest> steps;
    std::vector<std::string> inputs;
    std::optional<Destination> destination; ///< none only in a dry run
    std::string passwordFile;               ///< empty: none
    bool overwrite = false;
    bool dryRun = false;
    bool quiet = false;
    bool json = false;
};

struct InfoOptions {
    std::vector<std::string> inputs;
    std::string passwordFile; ///< empty: none
    bool json = false;
};

struct ActionsOptions {
    bool json = false;
};

using Command = std::variant<RunOptions, InfoOptions, ActionsOptions>;

/// A command line that ends here: help or version, to be printed on standard output with status 0,
/// or a mistake, one line for standard error with status 2.
struct Ending {
    int status;
    std::string text;
};

/// Reads the command line, `arguments` without the program's name.
tl::expected<Command, Ending> parse(const std::vector<std::string>& arguments);

} // namespace vantora::cli
