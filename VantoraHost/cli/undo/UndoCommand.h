#pragma once

#include "VantoraHost/cli/console/Streams.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// What the command line says about undoing a run.
struct UndoOptions {
    std::vector<std::string> reports;
    bool removeOutputs = false;
    bool dryRun = false;
    bool json = false;
    bool quiet = false;
};

/// Undoes what runs wrote, by their reports; returns the exit status.
int undoRun(const UndoOptions& options, const Streams& streams);

} // namespace vantora::cli
