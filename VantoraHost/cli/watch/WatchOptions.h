#pragma once

#include "VantoraHost/cli/run/RunOptions.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace vantora::cli {

/// What the command line says about a watch.
struct WatchOptions {
    RunOptions run; ///< what is done to each document; its inputs are those that arrive
    std::vector<std::string> folders;
    std::string outputs;                      ///< the folder that results go to
    std::string failed;                       ///< the folder for documents that fail; empty: none
    std::string done;                         ///< the one for documents that are done; empty: none
    std::chrono::seconds settle{2};           ///< how long a document must stay the same
    std::optional<std::chrono::seconds> poll; ///< how often folders are listed; none: as suits them
    bool once = false;                        ///< do what is there, and end
};

} // namespace vantora::cli
