#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Opens an action's options dialog and prints what was accepted; returns the exit status. Makes
/// the application when there is none.
int configure(const ConfigureOptions& options, const Installation& installation,
              const Streams& streams);

} // namespace vantora::cli
