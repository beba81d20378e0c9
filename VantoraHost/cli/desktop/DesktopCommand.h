#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// What the command line says about the window.
struct DesktopOptions {
    std::vector<std::string> files; ///< files and folders to open
    bool newWindow = false;         ///< also where there is one
};

/// `vantora desktop`: becomes the program with the window, which is installed beside this one.
int openDesktop(const DesktopOptions& options, const Installation& installation,
                const Streams& streams);

} // namespace vantora::cli
