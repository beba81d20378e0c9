#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Lists the installed actions; returns the exit status.
int listActions(const ActionsOptions& options, const Installation& installation,
                const Streams& streams);

} // namespace vantora::cli
