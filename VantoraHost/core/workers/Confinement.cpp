#include "VantoraHost/core/workers/Confinement.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/workers/HugePages.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace vantora {

namespace {

// Private memory, as a heap is: documents that are mapped from their files don't count.
void limitMemory([[maybe_unused]] std::uint64_t bytes)
{
#ifndef VANTORA_SANITIZED // which reserves terabytes
    const struct rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_DATA, &limit);
#endif
}

// A terminal could be read, which is what the user types, and written to with sequences that do
// more than show text. What a library says to nobody in particular goes to nobody then.
void leaveTerminal()
{
    const karvel::io::FileDescriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
    for (int descriptor = STDIN_FILENO; nothing && descriptor <= STDERR_FILENO; ++descriptor) {
        if (isatty(descriptor) == 1) {
            dup2(nothing.get(), descriptor);
        }
    }
}

std::uint64_t numberIn(const char* file)
{
    std::uint64_t number = 0;
    std::ifstream(file) >> number; // stays 0 for "max", which is no number
    return number;
}

} // namespace

void keepMemoryPrivate()
{
    const struct rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    prctl(PR_SET_DUMPABLE, 0);
}

void giveUpPrivileges()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    keepMemoryPrivate();
    leaveTerminal();
}

void Confinement::enforce(std::uint64_t memoryLimit)
{
    if (memoryLimit > 0) {
        giveRoomBackFor(memoryLimit);
        limitMemory(memoryLimit);
    }
    files_.enforce();
    calls_.enforce();
}

void confine(std::uint64_t memoryLimit, const FileAccess& files)
{
    Confinement confinement;
    confinement.allow(files);
    confinement.enforce(memoryLimit);
}

std::uint64_t availableMemory()
{
    const std::uint64_t machine = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
                                  static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    std::uint64_t least = machine;
    // What a container may use, in the two versions of control groups.
    for (const char* file :
         {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"}) {
        if (const std::uint64_t bytes = numberIn(file); bytes > 0) {
            least = std::min(least, bytes);
        }
    }
    return least;
}

std::uint64_t memoryShare(std::size_t workers)
{
    return availableMemory() / std::max<std::size_t>(workers, 2);
}

} // namespace vantora
