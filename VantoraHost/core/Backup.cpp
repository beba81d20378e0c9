#include "VantoraHost/core/Backup.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace vantora {

namespace fs = std::filesystem;

namespace {

// Some file systems have no hard links, and the system may refuse one to somebody else's file.
bool linksAreRefused(int errorNumber)
{
    return errorNumber == EPERM || errorNumber == EOPNOTSUPP || errorNumber == ENOSYS ||
           errorNumber == EMLINK;
}

int copyDurably(const std::string& file, const std::string& copy)
{
    std::error_code failed;
    if (!fs::copy_file(file, copy, fs::copy_options::none, failed)) {
        if (failed != std::errc::file_exists) {
            ::unlink(copy.c_str());
        }
        return failed.value();
    }
    const int descriptor = ::open(copy.c_str(), O_RDONLY | O_CLOEXEC);
    const int result = descriptor >= 0 && ::fsync(descriptor) == 0 ? 0 : errno;
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    if (result != 0) {
        ::unlink(copy.c_str());
    }
    return result;
}

// Returns 0 or an errno value; never replaces anything.
int giveSecondName(const std::string& file, const std::string& second)
{
    if (::link(file.c_str(), second.c_str()) == 0) {
        return 0;
    }
    const int refused = errno;
    return linksAreRefused(refused) ? copyDurably(file, second) : refused;
}

} // namespace

Result<Backup> Backup::of(const std::string& file, const std::string& backup, bool replace)
{
    std::error_code failed;
    const bool older = fs::exists(fs::symlink_status(backup, failed));
    const std::string held =
        replace && older ? backup + ".vantora-" + std::to_string(::getpid()) : backup;
    if (const int errorNumber = giveSecondName(file, held); errorNumber != 0) {
        return fail(errorNumber == EEXIST ? Reason::BackupExists : Reason::OutputNotWritable, file,
                    errorNumber == EEXIST
                        ? "the backup " + held + " exists already"
                        : "the backup " + held + " can't be made: " + systemMessage(errorNumber));
    }
    return Backup(held, backup);
}

Backup::Backup(Backup&& other) noexcept : held(std::move(other.held)), name(std::move(other.name))
{
    other.held.clear();
}

Backup::~Backup()
{
    if (!held.empty()) {
        ::unlink(held.c_str());
    }
}

Outcome Backup::keep()
{
    const std::string original = std::move(held);
    held.clear();
    if (original == name) {
        return {};
    }
    if (::rename(original.c_str(), name.c_str()) != 0) {
        return fail(Reason::OutputNotWritable, name,
                    "the original is kept as " + original + ", because the backup " + name +
                        " can't be replaced: " + systemMessage(errno));
    }
    // Renaming does nothing when the older backup is a link to the original, too.
    ::unlink(original.c_str());
    return {};
}

} // namespace vantora
