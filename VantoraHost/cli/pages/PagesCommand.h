#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/looking/Looking.h"
#include "VantoraHost/core/Installation.h"

#include <string>
#include <utility>
#include <vector>

namespace vantora::cli {

/// What the command line says about showing which pages choices name.
struct PagesOptions : LookOptions {
    std::vector<std::pair<std::string, std::string>> choices; ///< as options of a step
    std::string sheetPath;                                    ///< empty: none
    std::string reportPath;                                   ///< empty: none
    bool overwrite = false;                                   ///< sheets and reports
    bool json = false;
};

/// Shows which pages of each document choices name; returns the exit status.
int showPages(const PagesOptions& options, const Installation& installation,
              const Streams& streams);

} // namespace vantora::cli
