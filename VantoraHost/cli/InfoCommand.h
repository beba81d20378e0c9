#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Shows what documents are; returns the exit status.
int showInfo(const InfoOptions& options, const Installation& installation, const Streams& streams);

} // namespace vantora::cli
