#pragma once

#include <cstdint>
#include <optional>
#include <sys/stat.h>
#include <sys/types.h>

namespace karvel::io {

/// Which file it is, and in which state: two of these are equal when nobody has put another file in
/// its place or written to it meanwhile.
struct FileVersion {
    dev_t device = 0;
    ino_t inode = 0;
    std::int64_t size = 0;     ///< in bytes
    std::int64_t modified = 0; ///< when its content last changed, in nanoseconds since 1970

    bool operator==(const FileVersion& other) const
    {
        return isOf(other) && size == other.size && modified == other.modified;
    }
    bool operator!=(const FileVersion& other) const { return !(*this == other); }

    /// Whether both are the same file, in whatever state.
    bool isOf(const FileVersion& other) const
    {
        return device == other.device && inode == other.inode;
    }
};

/// What messages say of a file that is no longer the version that was to be replaced.
inline constexpr char changedMeanwhile[] =
    "was changed while it was being processed; nothing was replaced";

inline FileVersion versionOf(const struct stat& status)
{
    constexpr std::int64_t second = 1'000'000'000;
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

/// The version of an open file; none when the system can't tell.
inline std::optional<FileVersion> versionOf(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? std::optional(versionOf(status)) : std::nullopt;
}

} // namespace karvel::io
