#pragma once

#include "VantoraHost/cli/console/Streams.h"

#include <optional>
#include <string>

namespace vantora::cli {

/// What the command line says about showing the configuration.
struct ConfigOptions {
    std::optional<std::string> profile;
    bool json = false;
};

/// Shows what the user's configuration says and in which line; returns the exit status.
int showConfiguration(const ConfigOptions& options, const Streams& streams);

} // namespace vantora::cli
