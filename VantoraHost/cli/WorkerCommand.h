#pragma once

#include "VantoraHost/cli/GuiPart.h"
#include "VantoraHost/cli/Streams.h"

namespace vantora::cli {

/// Processes documents for the run that started this process, whose orders come on standard input
/// and whose answers go to standard output. Doesn't return: the process ends with its work.
[[noreturn]] int work(const GuiPartSource& guiPart, const Streams& streams);

} // namespace vantora::cli
