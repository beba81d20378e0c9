#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// What the command line says about listing the actions.
struct ActionsOptions {
    bool json = false;
};

/// Lists the installed actions; returns the exit status.
int listActions(const ActionsOptions& options, const Installation& installation,
                const Streams& streams);

} // namespace vantora::cli
