#pragma once

#include "VantoraHost/cli/arguments/WorkerOptions.h"
#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"

#include <string>

namespace vantora::cli {

/// What the command line says about verifying what became of documents. Exactly one of `range`,
/// `rangesPath` and `reportPath` is there.
struct VerifyOptions {
    std::string before; ///< a file or a folder; empty with a report
    std::string after;
    std::string range; ///< the pages that went
    std::string rangesPath;
    std::string reportPath;
    std::string passwordFile; ///< empty: none
    WorkerChoice workers;
    bool json = false;
};

/// Verifies that what was removed from documents is gone and the rest is there; returns the exit
/// status.
int verifyRemovals(const VerifyOptions& options, const Installation& installation,
                   const Streams& streams);

} // namespace vantora::cli
