#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// What the command line says about showing what documents are.
struct InfoOptions {
    std::vector<std::string> inputs;
    std::string passwordFile; ///< empty: none
    bool json = false;
};

/// Shows what documents are; returns the exit status.
int showInfo(const InfoOptions& options, const Installation& installation, const Streams& streams);

} // namespace vantora::cli
