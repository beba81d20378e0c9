#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
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
constexpr std::size_t digits = 8; // of each of the two numbers behind the process

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

// What stands behind the process's number and a random one in the name, so that a name that
// somebody has given a file of his own is hardly ever taken for one of these. FNV-1a.
std::uint32_t checkOf(int process, std::uint32_t random)
{
    std::uint32_t hash = 0x811c9dc5U;
    for (const std::uint32_t number : {static_cast<std::uint32_t>(process), random}) {
        for (unsigned int shift = 0; shift < 32; shift += 8) {
            hash = (hash ^ ((number >> shift) & 0xffU)) * 0x01000193U;
        }
    }
    return hash;
}

std::string nameOf(int process, std::uint32_t random)
{
    char name[64];
    std::snprintf(name, sizeof name, ".karvel-save-%d-%08x%08x.tmp", process, random,
                  checkOf(process, random));
    return name;
}

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

// The superuser's outputs may belong to others by now, whose files they replace.
bool mayBeOurs(const struct stat& status)
{
    return S_ISREG(status.st_mode) && (status.st_uid == geteuid() || geteuid() == 0);
}

bool removeIfAbandoned(const Folder& folder, const char* name, int process)
{
    const auto file = folder.openFile(name, O_RDWR | O_NONBLOCK | O_NOCTTY);
    struct stat status = {};
    if (!file || fstat(file->get(), &status) != 0 || !mayBeOurs(status)) {
        return false;
    }
    const bool abandoned =
        lock(file->get()) || (errno != EWOULDBLOCK && looksForgotten(process, status));
    return abandoned && folder.remove(name, versionOf(status)) == 0;
}

} // namespace

std::string temporaryName()
{
    static thread_local std::mt19937_64 random{std::random_device{}()};
    return nameOf(static_cast<int>(getpid()), static_cast<std::uint32_t>(random()));
}

bool isTemporaryName(std::string_view fileName, int& process)
{
    if (fileName.substr(0, temporaryPrefix.size()) != temporaryPrefix) {
        return false;
    }
    const char* const end = fileName.data() + fileName.size();
    const auto number = std::from_chars(fileName.data() + temporaryPrefix.size(), end, process);
    if (number.ec != std::errc() || process <= 0 ||
        static_cast<std::size_t>(end - number.ptr) != 1 + 2 * digits + temporarySuffix.size()) {
        return false;
    }
    std::uint32_t random = 0;
    std::from_chars(number.ptr + 1, number.ptr + 1 + digits, random, 16);
    return fileName == nameOf(process, random);
}

std::optional<struct stat> claimTemporary(int descriptor)
{
    if (!lock(descriptor) && errno == EWOULDBLOCK) {
        return std::nullopt;
    }
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) {
        return status; // no file's, so that nothing is going to be taken for it
    }
    return status.st_nlink > 0 ? std::optional(status) : std::nullopt;
}

void claimForAMoment(int descriptor)
{
    lock(descriptor);
}

std::size_t removeAbandoned(const Folder& folder)
{
    FileDescriptor listed = folder.readable();
    const std::unique_ptr<DIR, CloseFolder> entries(listed ? fdopendir(listed.get()) : nullptr);
    if (!entries) {
        return 0;
    }
    listed.release();
    std::size_t removed = 0;
    while (const dirent* entry = readdir(entries.get())) {
        int process = 0;
        if (isTemporaryName(entry->d_name, process)) {
            removed += removeIfAbandoned(folder, entry->d_name, process) ? 1 : 0;
        }
    }
    return removed;
}

} // namespace karvel::io
