#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/cli/run/RunOptions.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Runs actions over documents; returns the exit status. `guiPart` is asked only for saved steps.
int run(const RunOptions& options, const Installation& installation, const GuiPartSource& guiPart,
        const Streams& streams);

} // namespace vantora::cli
