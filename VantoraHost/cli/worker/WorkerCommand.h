#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/core/workers/WorkerMessages.h"

namespace vantora::cli {

/// Works for the program that started this process; not for people.
struct WorkerOptions {
    enum class Work { Documents, Pictures, Certificates };
    Work work = Work::Documents;
};

/// Reads stored options by the part for windows, which is loaded when there are any.
StoredReader storedReader(const GuiPartSource& guiPart);

/// Works for the program that started this process; its orders come on standard input and the
/// answers go to standard output. Doesn't return: the process ends with its work.
[[noreturn]] int work(const WorkerOptions& options, const GuiPartSource& guiPart,
                      const Streams& streams);

} // namespace vantora::cli
