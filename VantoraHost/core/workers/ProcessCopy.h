#pragma once

#include <sys/types.h>

#include <functional>
#include <vector>

namespace vantora {

/// Starts a copy of this process that does `work` and ends with what that returns as its status.
/// Returns the copy's number, or -1 with errno set. The copy has, of all files that are open here,
/// standard error and those of `kept` only; what it prints goes to standard error. It does not hear
/// the signals that a terminal sends to a run. To be called while this process has one thread.
pid_t startCopy(const std::vector<int>& kept, const std::function<int()>& work);

} // namespace vantora
