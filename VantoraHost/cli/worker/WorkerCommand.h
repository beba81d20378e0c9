#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/core/workers/WorkerMessages.h"

namespace vantora::cli {

/// Processes documents for a run that started this process; not for people.
struct WorkerOptions {};

/// Reads stored options by the part for windows, which is loaded when there are any.
StoredReader storedReader(const GuiPartSource& guiPart);

/// Processes documents for the run that started this process, whose orders come on standard input
/// and whose answers go to standard output. Doesn't return: the process ends with its work.
[[noreturn]] int work(const GuiPartSource& guiPart, const Streams& streams);

} // namespace vantora::cli
