#pragma once

#include "VantoraHost/core/workers/FileAccess.h"
#include "VantoraHost/core/workers/SystemCalls.h"

#include <cstddef>
#include <cstdint>

namespace vantora {

/// Lets nobody look into this process's memory but the administrator, and leaves no core dump of
/// it: there may be passwords and documents in it.
void keepMemoryPrivate();

/// Ends this process when its parent ends, lets it not gain privileges, keeps its memory private,
/// and takes the user's terminal from it.
void giveUpPrivileges();

/// What this process is to be limited to, gathered while it may do anything; to be made in the
/// process that it holds for.
class Confinement {
public:
    void allow(const FileAccess& files) { files_.allow(files); }

    /// Limits this process for good: to memory of so many bytes (0 for no limit), to the files that
    /// were allowed, and to the calls of the system that working on documents takes; over others it
    /// is killed. What the system doesn't support is left out. Threads stay.
    void enforce(std::uint64_t memoryLimit);

private:
    FileRules files_;
    SystemCallFilter calls_;
};

/// Limits this process at once, to these files.
void confine(std::uint64_t memoryLimit, const FileAccess& files);

/// The memory of this machine in bytes, or less where this process may only use less.
std::uint64_t availableMemory();

/// What each of so many workers may use; one alone leaves half to others.
std::uint64_t memoryShare(std::size_t workers);

/// The seconds that a document may take unless somebody allows more.
inline constexpr int longestForADocument = 300;

} // namespace vantora
