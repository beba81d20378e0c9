#pragma once

#include <cstdint>

namespace vantora {

/// Ends this process when its parent ends, and lets it neither gain privileges nor leave core dumps
/// (which would hold the documents).
void giveUpPrivileges();

/// Takes the network, new processes and what governs the system from this process, for good, and
/// limits its memory to so many bytes (0 for no limit). What the system doesn't support is left
/// out. Threads and files stay.
void confine(std::uint64_t memoryLimit);

/// The memory of this machine in bytes, or less where this process may only use less.
std::uint64_t availableMemory();

} // namespace vantora
