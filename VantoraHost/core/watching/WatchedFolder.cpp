#include "VantoraHost/core/watching/WatchedFolder.h"

#include "VantoraHost/core/Inputs.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

namespace vantora {

using karvel::io::FileDescriptor;
using karvel::io::Folder;

namespace {

// f_type of statfs(2), of file systems that several machines or programs of the user's share.
constexpr std::array<std::uint32_t, 14> sharedFileSystems = {
    0x6969,     // NFS
    0x517B,     // SMB
    0xFF534D42, // CIFS
    0xFE534D42, // SMB 2
    0x65735546, // FUSE
    0x01021997, // 9P
    0x00C36400, // Ceph
    0x0BD00BD0, // Lustre
    0x5346414F, // AFS
    0x6B414653, // AFS of the kernel
    0x73757245, // Coda
    0x564C,     // NCP
    0x7461636F, // OCFS2
    0x01161970, // GFS2
};

bool isSharedFileSystem(int folder)
{
    struct statfs about = {};
    if (::fstatfs(folder, &about) != 0) {
        return true; // then nothing can be taken for granted
    }
    return std::find(sharedFileSystems.begin(), sharedFileSystems.end(),
                     static_cast<std::uint32_t>(about.f_type)) != sharedFileSystems.end();
}

// A lease for reading is given where nobody has the file open for writing, and to its owner only
// (fcntl(2)). It is given back at once; should somebody want to write meanwhile, a signal that
// does nothing says so.
Writer writerOf(int file)
{
    ::fcntl(file, F_SETSIG, SIGURG);
    if (::fcntl(file, F_SETLEASE, F_RDLCK) == 0) {
        ::fcntl(file, F_SETLEASE, F_UNLCK);
        return Writer::None;
    }
    return errno == EAGAIN ? Writer::Some : Writer::Unknown;
}

tl::unexpected<Error> unusable(const std::string& path, int why)
{
    return why == ENOENT    ? fail(Reason::InputMissing, path, "there is no such folder")
           : why == ENOTDIR ? fail(Reason::InputNotAFile, path, "is not a folder")
                            : fail(Reason::InputUnreadable, path,
                                   "the folder can't be read: " + systemMessage(why));
}

} // namespace

bool isDocumentName(std::string_view name)
{
    constexpr std::string_view extension = ".pdf";
    if (name.size() <= extension.size() || name.front() == '.' || name.front() == '~') {
        return false;
    }
    const std::string_view end = name.substr(name.size() - extension.size());
    return std::equal(end.begin(), end.end(), extension.begin(), [](char one, char other) {
        return one == other || (one >= 'A' && one <= 'Z' && one - 'A' + 'a' == other);
    });
}

Result<WatchedFolder> WatchedFolder::open(const std::string& path)
{
    auto folder = Folder::open(path);
    if (!folder) {
        return unusable(path, folder.error());
    }
    const auto version = (*folder)->version();
    if (!version || !(*folder)->readable()) {
        return unusable(path, errno);
    }
    const int descriptor = (*folder)->descriptor();
    return WatchedFolder(path, std::move(*folder), {version->device, version->inode},
                         isSharedFileSystem(descriptor));
}

std::optional<Sighting> WatchedFolder::lookAt(const std::string& name) const
{
    // First only a place in the file system: opening a device or a pipe may do something.
    const auto place = folder_->openFile(name, O_PATH);
    struct stat status = {};
    if (!place || ::fstat(place->get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    constexpr std::int64_t second = 1'000'000'000;
    Sighting seen;
    seen.version = karvel::io::versionOf(status);
    seen.changed = status.st_ctim.tv_sec * second + status.st_ctim.tv_nsec;
    if (!shared_) {
        const FileDescriptor file(::open(karvel::io::pathOf(place->get()).c_str(),
                                         O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        seen.writer = file ? writerOf(file.get()) : Writer::Unknown;
    }
    return seen;
}

int WatchedFolder::list(
    const std::function<bool(const std::string&, const FileVersion&)>& take) const
{
    FileDescriptor descriptor = folder_->readable();
    const auto close = [](DIR* stream) { ::closedir(stream); };
    const std::unique_ptr<DIR, decltype(close)> stream(
        descriptor ? ::fdopendir(descriptor.get()) : nullptr, close);
    if (!stream) {
        return errno;
    }
    descriptor.release();
    errno = 0;
    while (const dirent* const entry = ::readdir(stream.get())) {
        const std::string name = entry->d_name;
        const auto status = isDocumentName(name) ? folder_->statusOf(name) : std::nullopt;
        if (status && S_ISREG(status->st_mode) && !take(name, karvel::io::versionOf(*status))) {
            return 0;
        }
        errno = 0;
    }
    return errno;
}

bool isInside(const std::string& folder, FileIdentity outer)
{
    FileDescriptor at(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    while (at) {
        const auto here = identityOf(at.get());
        if (!here || *here == outer) {
            return here.has_value();
        }
        FileDescriptor above(::openat(at.get(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (above && identityOf(above.get()) == here) {
            return false; // the root
        }
        at = std::move(above);
    }
    return false;
}

} // namespace vantora
