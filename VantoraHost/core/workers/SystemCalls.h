#pragma once

namespace vantora {

/// Lets this process call the system only for what working on documents takes, for good; it is
/// killed over anything else (SIGSYS). The calls that act on files stay, but those that change
/// a file by its path without opening it; so do threads. Where the system has no such filters,
/// nothing happens.
void filterSystemCalls();

} // namespace vantora
