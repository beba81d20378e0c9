#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace karvel::io {

namespace {

constexpr std::string_view temporaryPrefix = ".karvel-save-";
constexpr std::string_view temporarySuffix = ".tmp";

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

// A lock goes away with its process, and is seen from other process namespaces and machines, where
// the numbers of processes mean nothing.
bool lock(int descriptor)
{
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}

// A file system without locks leaves only the number, and a name that is a day old to be safe.
bool looksForgotten(int process, const struct stat& status)
{
    constexpr time_t day = 24 * 60 * 60;
    return kill(process, 0) != 0 && errno == ESRCH && time(nullptr) - status.st_mtime > day;
}

bool removeIfAbandoned(int folder, const char* name, int process)
{
    const FileDescriptor file(
        openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    const bool abandoned =
        lock(file.get()) || (errno != EWOULDBLOCK && looksForgotten(process, status));
    return abandoned && unlinkat(folder, name, 0) == 0;
}

} // namespace

std::string temporaryName()
{
    static thread_local std::mt19937_64 random{std::random_device{}()};
    char name[64];
    std::snprintf(name, sizeof name, ".karvel-save-%d-%016llx.tmp", static_cast<int>(getpid()),
                  static_cast<unsigned long long>(random()));
    return name;
}

bool isTemporaryName(std::string_view fileName, int& process)
{
    if (fileName.size() <= temporaryPrefix.size() + temporarySuffix.size() ||
        fileName.substr(0, temporaryPrefix.size()) != temporaryPrefix ||
        fileName.substr(fileName.size() - temporarySuffix.size()) != temporarySuffix) {
        return false;
    }
    const std::string_view rest = fileName.substr(temporaryPrefix.size());
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), process);
    return error == std::errc() && end != rest.data() && *end == '-';
}

bool claimTemporary(int descriptor)
{
    if (!lock(descriptor) && errno == EWOULDBLOCK) {
        return false;
    }
    struct stat status = {};
    return fstat(descriptor, &status) != 0 || status.st_nlink > 0;
}

std::size_t removeAbandoned(const std::string& folder)
{
    const std::unique_ptr<DIR, CloseFolder> entries(opendir(folder.c_str()));
    if (!entries) {
        return 0;
    }
    std::size_t removed = 0;
    while (const dirent* entry = readdir(entries.get())) {
        int process = 0;
        if (isTemporaryName(entry->d_name, process)) {
            removed += removeIfAbandoned(dirfd(entries.get()), entry->d_name, process) ? 1 : 0;
        }
    }
    return removed;
}

} // namespace karvel::io
