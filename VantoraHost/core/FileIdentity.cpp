#include "VantoraHost/core/FileIdentity.h"

#include <sys/stat.h>
#include <unistd.h>

namespace vantora {

namespace {

std::optional<struct stat> statusOf(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 ? std::optional(status) : std::nullopt;
}

std::optional<FileIdentity> identityIn(const std::optional<struct stat>& status)
{
    return status ? std::optional(identityOf(*status)) : std::nullopt;
}

std::optional<FileState> stateIn(const std::optional<struct stat>& status)
{
    if (!status) {
        return std::nullopt;
    }
    return stateOf(karvel::io::versionOf(*status));
}

} // namespace

std::optional<struct stat> statusAt(const std::string& path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::optional<struct stat> statusOf(const std::string& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

FileIdentity identityOf(const struct stat& status)
{
    return {status.st_dev, status.st_ino};
}

std::optional<FileIdentity> identityOf(const std::string& path)
{
    return identityIn(statusOf(path));
}

bool isSameFile(const std::string& one, const std::string& other)
{
    const auto identity = identityOf(one);
    return identity && identity == identityOf(other);
}

bool isThere(const std::string& path)
{
    return statusAt(path).has_value();
}

bool isOwnedByOthers(const struct stat& status)
{
    return status.st_uid != ::geteuid() && status.st_uid != 0;
}

bool othersMayWriteTo(const struct stat& status)
{
    return (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

bool isPrivateFolder(const std::string& path)
{
    constexpr mode_t ofOthers = S_IRWXG | S_IRWXO;
    const auto status = statusAt(path);
    return status && S_ISDIR(status->st_mode) && status->st_uid == ::geteuid() &&
           (status->st_mode & ofOthers) == 0;
}

std::optional<FileIdentity> identityOf(int descriptor)
{
    return identityIn(statusOf(descriptor));
}

std::optional<FileVersion> versionAt(const std::string& path)
{
    const auto status = statusAt(path);
    return status ? std::optional(karvel::io::versionOf(*status)) : std::nullopt;
}

bool isStill(const std::optional<FileState>& now, const FileState& then)
{
    return now && !then.changed.empty() && now->size == then.size && now->changed == then.changed;
}

FileState stateOf(const FileVersion& version)
{
    return {static_cast<std::uint64_t>(version.size), std::to_string(version.modified)};
}

std::optional<FileState> stateOf(const std::string& path)
{
    return stateIn(statusOf(path));
}

std::optional<FileState> stateOf(int descriptor)
{
    return stateIn(statusOf(descriptor));
}

std::string versionText(const FileVersion& version)
{
    return std::to_string(version.device) + ' ' + std::to_string(version.inode) + ' ' +
           std::to_string(version.size) + ' ' + std::to_string(version.modified);
}

} // namespace vantora
