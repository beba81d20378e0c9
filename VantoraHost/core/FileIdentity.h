#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vantora {

/// Tells whether two names are the same file, through symbolic and hard links.
struct FileIdentity {
    dev_t device;
    ino_t inode;

    bool operator==(const FileIdentity& other) const
    {
        return device == other.device && inode == other.inode;
    }
};

/// The file that a path leads to; none when there is nothing.
std::optional<FileIdentity> identityOf(const std::string& path);

struct FileIdentityHash {
    std::size_t operator()(const FileIdentity& identity) const
    {
        return std::hash<std::uint64_t>()(static_cast<std::uint64_t>(identity.inode) * 31 +
                                          static_cast<std::uint64_t>(identity.device));
    }
};

} // namespace vantora
