#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Runs actions over documents; returns the exit status.
int run(const RunOptions& options, const Installation& installation, const Streams& streams);

} // namespace vantora::cli
