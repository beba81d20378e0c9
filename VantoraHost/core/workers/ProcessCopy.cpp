#include "VantoraHost/core/workers/ProcessCopy.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>

namespace vantora {

namespace {

bool isAFile(int descriptor)
{
    struct stat status = {};
    // What wakes up an event loop has no type; the loop would write into what takes its number.
    return ::fstat(descriptor, &status) == 0 && (status.st_mode & S_IFMT) != 0;
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
        if (descriptor > STDERR_FILENO && descriptor != ::dirfd(entries)) {
            open.push_back(descriptor);
        }
    }
    ::closedir(entries);
    for (const int descriptor : open) {
        if (std::find(kept.begin(), kept.end(), descriptor) == kept.end() && isAFile(descriptor)) {
            ::close(descriptor);
        }
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
        status = work();
    } catch (const std::exception&) {
        status = EXIT_FAILURE;
    }
    // What the original has buffered is the original's to write.
    std::_Exit(status);
}

} // namespace vantora
