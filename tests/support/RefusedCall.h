#pragma once

#include <functional>

namespace support {

/// From now on the system answers this process with an error (an errno value) to a system call, as
/// older ones and other file systems do.
void refuseCall(int call, int error);

/// Does something in a process of its own, which has failed checks of it fail the test here.
void inAnotherProcess(const std::function<void()>& work);

} // namespace support
