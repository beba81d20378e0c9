#pragma once

#include "VantoraHost/cli/arguments/WorkerOptions.h"
#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"

#include <string>

namespace vantora::cli {

/// What the command line says about showing what documents are.
struct InfoOptions {
    InputNames inputs;
    std::string passwordFile; ///< empty: none
    WorkerChoice workers;
    bool verbose = false; ///< list what the sheet else counts
    bool json = false;
};

/// Shows what documents are; returns the exit status.
int showInfo(const InfoOptions& options, const Installation& installation, const Streams& streams);

} // namespace vantora::cli
