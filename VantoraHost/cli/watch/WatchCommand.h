#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/cli/watch/WatchOptions.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Runs actions over documents as they arrive in folders, until it is asked to stop; returns the
/// exit status. `guiPart` is asked only for saved steps.
int watch(const WatchOptions& options, const Installation& installation,
          const GuiPartSource& guiPart, const Streams& streams);

} // namespace vantora::cli
