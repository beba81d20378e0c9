#include "VantoraHost/core/FileIdentity.h"

#include <sys/stat.h>

namespace vantora {

namespace {

std::optional<struct stat> statusOf(const std::string& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional<struct stat>(status) : std::nullopt;
}

} // namespace

std::optional<FileIdentity> identityOf(const std::string& path)
{
    const auto status = statusOf(path);
    return status ? std::optional<FileIdentity>({status->st_dev, status->st_ino}) : std::nullopt;
}

std::optional<FileOwnership> ownershipOf(const std::string& path)
{
    const auto status = statusOf(path);
    return status ? std::optional<FileOwnership>({status->st_uid, status->st_gid, status->st_mode})
                  : std::nullopt;
}

std::optional<FileState> stateOf(const std::string& path)
{
    const auto status = statusOf(path);
    if (!status) {
        return std::nullopt;
    }
    constexpr std::int64_t nanosecondsASecond = 1'000'000'000;
    return FileState{
        static_cast<std::uint64_t>(status->st_size),
        std::to_string(status->st_mtim.tv_sec * nanosecondsASecond + status->st_mtim.tv_nsec)};
}

} // namespace vantora
