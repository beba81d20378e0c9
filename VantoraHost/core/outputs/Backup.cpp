#include "VantoraHost/core/outputs/Backup.h"

#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/OutputFile.h"
#include "KarvelPDFLibrary/io/Permissions.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

namespace vantora {

using karvel::io::FileDescriptor;
using karvel::io::nameIn;
using karvel::io::OutputFile;

namespace {

// Some file systems have no hard links, and the system may refuse one to somebody else's file.
bool linksAreRefused(int errorNumber)
{
    return errorNumber == EPERM || errorNumber == EOPNOTSUPP || errorNumber == ENOSYS ||
           errorNumber == EMLINK;
}

constexpr int forReading = O_RDONLY | O_NONBLOCK | O_NOCTTY;

// The bytes of an open file up to a size, piece by piece; false when they can't be had.
template <class Take>
bool readAll(int file, std::int64_t size, const Take& take)
{
    std::array<char, 65536> piece = {};
    for (std::int64_t offset = 0; offset < size;) {
        const ssize_t got = ::pread(file, piece.data(), piece.size(), offset);
        if (got <= 0 || !take(piece.data(), static_cast<std::size_t>(got), offset)) {
            return false;
        }
        offset += got;
    }
    return true;
}

bool haveSameContent(int one, int other, std::int64_t size)
{
    std::array<char, 65536> piece = {};
    return readAll(one, size, [&](const char* bytes, std::size_t length, std::int64_t offset) {
        return ::pread(other, piece.data(), length, offset) == static_cast<ssize_t>(length) &&
               std::memcmp(bytes, piece.data(), length) == 0;
    });
}

// Gives the copy what the file has beside its content. Its time tells nobody that it is new.
void likeness(int from, const std::string& name, const Backup::Folder& folder)
{
    struct stat status = {};
    struct stat made = {};
    const auto copy = folder.openFile(name, forReading);
    karvel::io::HandedOn done = karvel::io::HandedOn::All;
    if (copy && ::fstat(from, &status) == 0 && ::fstat(copy->get(), &made) == 0) {
        karvel::io::handOnPermissions({from, status}, {copy->get(), made}, 0777, done);
        const struct timespec times[] = {status.st_atim, status.st_mtim};
        ::futimens(copy->get(), times);
    }
}

// The copy appears whole or not at all.
karvel::Outcome copy(const Backup::Folder::Pointer& folder, int file, std::int64_t size,
                     const std::string& backup)
{
    auto output = OutputFile::create(folder, backup, karvel::io::Existing::Refuse);
    if (!output) {
        return tl::unexpected<karvel::Error>(output.error());
    }
    output->allowAtMost(karvel::io::modeOf(file));
    try {
        const bool read = readAll(file, size, [&](const char* bytes, std::size_t length, auto) {
            output->write(bytes, length);
            return true;
        });
        if (!read) {
            return karvel::fail(karvel::ErrorCode::FileNotReadable,
                                backup + ": the original can't be read");
        }
    } catch (const std::exception& failed) {
        return karvel::fail(karvel::ErrorCode::FileNotWritable, backup + ": " + failed.what());
    }
    const karvel::Outcome committed = output->commit();
    if (committed) {
        likeness(file, nameIn(backup), *folder);
    }
    return committed;
}

tl::unexpected<Error> changed()
{
    return fail(Reason::ChangedMeanwhile, {}, karvel::io::changedMeanwhile);
}

tl::unexpected<Error> notMade(const std::string& backup, const std::string& why)
{
    return fail(Reason::OutputNotWritable, {}, "the backup " + backup + " can't be made: " + why);
}

} // namespace

std::string backupOf(const std::string& file)
{
    return file + ".bak";
}

bool holdsOriginal(const karvel::io::Folder& folder, const std::string& name,
                   const std::string& backup)
{
    const auto file = folder.openFile(name, forReading);
    const auto held = folder.openFile(backup, forReading);
    const auto version = file ? karvel::io::versionOf(file->get()) : std::nullopt;
    const auto heldVersion = held ? karvel::io::versionOf(held->get()) : std::nullopt;
    if (!version || !heldVersion) {
        return false;
    }
    return version->isOf(*heldVersion) ||
           (version->size == heldVersion->size &&
            haveSameContent(file->get(), held->get(), version->size));
}

Result<Backup> Backup::of(Folder::Pointer folder, const std::string& path,
                          const std::string& backup, const FileVersion& version)
{
    const std::string file = nameIn(path);
    const std::string name = nameIn(backup);
    int failed = folder->link(file, name);
    if (failed == EEXIST) {
        return holdsOriginal(*folder, file, name)
                   ? Result<Backup>(Backup({}, name, version))
                   : fail(Reason::BackupExists, {}, "the backup " + backup + " exists already");
    }
    if (linksAreRefused(failed)) {
        const auto original = folder->openFile(file, forReading);
        if (!original) {
            return notMade(backup, systemMessage(original.error()));
        }
        if (karvel::io::versionOf(original->get()) != std::optional(version)) {
            return changed();
        }
        if (const auto copied = copy(folder, original->get(), version.size, backup); !copied) {
            return notMade(backup, copied.error().text.substr(backup.size() + 2));
        }
        const auto made = folder->versionAt(name);
        return Backup(std::move(folder), name, made.value_or(version));
    }
    if (failed != 0) {
        return failed == ENOENT && !folder->versionAt(file)
                   ? Result<Backup>(changed())
                   : notMade(backup, systemMessage(failed));
    }
    // What has been linked is what was there, which need not be what is going to be replaced.
    const auto made = folder->versionAt(name);
    Backup linked(std::move(folder), name, made.value_or(version));
    if (made != std::optional(version)) {
        return changed();
    }
    return linked;
}

Backup::~Backup()
{
    if (folder_) {
        folder_->remove(name_, made_);
    }
}

} // namespace vantora
