#pragma once

namespace vantora::cli {

/// Whether an application with windows can be started. Where it can't be, Qt ends the process, so a
/// child process tries it; to be asked while this process has one thread and no application.
bool displayIsReachable();

} // namespace vantora::cli
