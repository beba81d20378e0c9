#include "VantoraHost/core/workers/ProcessCopy.h"

#include "VantoraHost/core/workers/HugePages.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <string_view>

namespace vantora {

namespace {

// What wakes up an event loop: the loop would write into what takes its number.
bool wakesALoop(int folder, const char* descriptor)
{
    char what[64];
    const ssize_t length = ::readlinkat(folder, descriptor, what, sizeof what);
    return length > 0 &&
           std::string_view(what, static_cast<std::size_t>(length)) == "anon_inode:[eventfd]";
}

void closeAllBut(const std::vector<int>& kept)
{
    std::vector<int> open;
    DIR* const entries = ::opendir("/proc/self/fd");
    if (!entries) {
        return;
    }
    while (const dirent* entry = ::readdir(entries)) {
        const int descriptor = std::atoi(entry->d_name); // 0 for "." and ".."
        if (descriptor > STDERR_FILENO && descriptor != ::dirfd(entries) &&
            std::find(kept.begin(), kept.end(), descriptor) == kept.end() &&
            !wakesALoop(::dirfd(entries), entry->d_name)) {
            open.push_back(descriptor);
        }
    }
    ::closedir(entries);
    for (const int descriptor : open) {
        ::close(descriptor);
    }
}

void blockTerminalSignals()
{
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int number : {SIGINT, SIGHUP, SIGQUIT}) {
        sigaddset(&blocked, number);
    }
    ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
}

} // namespace

pid_t startCopy(const std::vector<int>& kept, const std::function<int()>& work)
{
    const pid_t process = ::fork();
    if (process != 0) {
        return process;
    }
    int status = EXIT_FAILURE;
    try {
        blockTerminalSignals();
        const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::dup2(nothing, STDIN_FILENO);
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        closeAllBut(kept);
        leaveSharedHugePage();
        status = work();
    } catch (const std::exception&) {
        status = EXIT_FAILURE;
    }
    // What the original has buffered is the original's to write.
    std::_Exit(status);
}

} // namespace vantora
