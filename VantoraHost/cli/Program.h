#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/core/Installation.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// The whole program: reads the command line (without the program's name), carries the command
/// out and returns the exit status.
int runProgram(const std::vector<std::string>& arguments, const Installation& installation,
               const GuiPartSource& guiPart, const Streams& streams);

} // namespace vantora::cli
