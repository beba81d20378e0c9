#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/looking/Looking.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// What the command line says about showing what documents are.
struct InfoOptions : LookOptions {
    bool verbose = false; ///< list what the sheet else counts
    bool json = false;
};

/// Shows what documents are; returns the exit status.
int showInfo(const InfoOptions& options, const Installation& installation, const Streams& streams);

} // namespace vantora::cli
