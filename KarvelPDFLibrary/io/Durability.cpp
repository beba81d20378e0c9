#include "KarvelPDFLibrary/io/Durability.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <linux/magic.h>
#include <map>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace karvel::io {

namespace {

// Below it, waiting for each file is as fast, and asks nothing of anybody else's files.
constexpr std::size_t fewestTogether = 4;

// Waiting for a whole file system includes what others write. When that took so long, this process
// waits for its own files only from then on.
constexpr auto tooLong = std::chrono::milliseconds(500);
std::atomic<bool> othersWriteALot{false};

// Since Linux 5.8 a sync of a file system tells that data was lost (syncfs(2)).
bool syncOfAllTellsFailures()
{
    static const bool tells = [] {
        struct utsname system = {};
        int major = 0;
        int minor = 0;
        return uname(&system) == 0 && std::sscanf(system.release, "%d.%d", &major, &minor) == 2 &&
               (major > 5 || (major == 5 && minor >= 8));
    }();
    return tells;
}

// Those where a sync of the file system is known to be one of every file in it.
bool syncsAsAWhole(int descriptor)
{
    constexpr long xfs = 0x58465342; // not in the header
    constexpr std::array<long, 5> known = {EXT4_SUPER_MAGIC, xfs, BTRFS_SUPER_MAGIC,
                                           F2FS_SUPER_MAGIC, TMPFS_MAGIC};
    struct statfs system = {};
    return fstatfs(descriptor, &system) == 0 &&
           std::find(known.begin(), known.end(), static_cast<long>(system.f_type)) != known.end();
}

bool syncFileSystem(int descriptor)
{
    if (othersWriteALot || !syncOfAllTellsFailures() || !syncsAsAWhole(descriptor)) {
        return false;
    }
    const auto start = std::chrono::steady_clock::now();
    const bool synced = syncfs(descriptor) == 0;
    othersWriteALot = std::chrono::steady_clock::now() - start > tooLong;
    return synced;
}

int syncFile(int descriptor)
{
    return fsync(descriptor) == 0 ? 0 : errno;
}

} // namespace

std::vector<int> syncTogether(const std::vector<int>& descriptors)
{
    std::map<dev_t, std::vector<std::size_t>> filesOn;
    for (std::size_t i = 0; i < descriptors.size(); ++i) {
        struct stat status = {};
        fstat(descriptors[i], &status);
        filesOn[status.st_dev].push_back(i);
    }
    std::vector<int> errors(descriptors.size(), 0);
    for (const auto& [device, files] : filesOn) {
        if (files.size() >= fewestTogether && syncFileSystem(descriptors[files.front()])) {
            continue;
        }
        for (const std::size_t file : files) { // the disk begins with all before any is waited for
            sync_file_range(descriptors[file], 0, 0, SYNC_FILE_RANGE_WRITE);
        }
        for (const std::size_t file : files) {
            errors[file] = syncFile(descriptors[file]);
        }
    }
    return errors;
}

} // namespace karvel::io
