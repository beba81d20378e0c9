#pragma once

#include "KarvelPDFLibrary/io/FileVersion.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <tuple>

namespace vantora {

/// Tells whether two names are the same file, through symbolic and hard links.
struct FileIdentity {
    dev_t device;
    ino_t inode;

    bool operator==(const FileIdentity& other) const
    {
        return device == other.device && inode == other.inode;
    }
    bool operator<(const FileIdentity& other) const
    {
        return std::tie(device, inode) < std::tie(other.device, other.inode);
    }
};

/// The file that a path leads to; none when there is nothing.
std::optional<FileIdentity> identityOf(const std::string& path);

/// Whether two paths lead to the same file; not when there is nothing.
bool isSameFile(const std::string& one, const std::string& other);

/// A file of that status.
FileIdentity identityOf(const struct stat& status);

/// The status of what stands at a path, if only a link; none when nothing does.
std::optional<struct stat> statusAt(const std::string& path);

/// The status of the file that a path leads to; none when there is nothing.
std::optional<struct stat> statusOf(const std::string& path);

/// Whether a path names anything, if only a link to nothing.
bool isThere(const std::string& path);

/// Whether somebody else than this user and the administrator owns a file.
bool isOwnedByOthers(const struct stat& status);

/// Whether others than its owner may write to a file.
bool othersMayWriteTo(const struct stat& status);

/// Whether a path is a folder, and no link to one, that only this user may enter.
bool isPrivateFolder(const std::string& path);

/// An open file.
std::optional<FileIdentity> identityOf(int descriptor);

using karvel::io::FileVersion;

/// The version of what stands at a path, if only a link; none when nothing does.
std::optional<FileVersion> versionAt(const std::string& path);

/// What tells that a file is as it was: its size in bytes, and when its content last changed, in
/// nanoseconds since 1970 as a decimal text.
struct FileState {
    std::uint64_t size;
    std::string changed;
};

/// Whether a file still is as it was then, which must be known.
bool isStill(const std::optional<FileState>& now, const FileState& then);

/// The state of the file that a path leads to; none when there is nothing.
std::optional<FileState> stateOf(const std::string& path);

/// The state of an open file.
std::optional<FileState> stateOf(int descriptor);

/// The state that a version of a file has.
FileState stateOf(const FileVersion& version);

/// A version as a text, which is equal where versions are.
std::string versionText(const FileVersion& version);

struct FileIdentityHash {
    std::size_t operator()(const FileIdentity& identity) const
    {
        return std::hash<std::uint64_t>()(static_cast<std::uint64_t>(identity.inode) * 31 +
                                          static_cast<std::uint64_t>(identity.device));
    }
};

} // namespace vantora
