#include "KarvelPDFLibrary/io/Folder.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace karvel::io {

namespace {

int resultOf(int returned)
{
    return returned == 0 ? 0 : errno;
}

// A name that leads out of a folder, or is none.
bool isStep(const std::string& name)
{
    return !name.empty() && name != "." && name != "..";
}

} // namespace

tl::expected<Folder::Pointer, int> Folder::open(const std::string& path)
{
    // Only a place to look names up in, so that a folder will do that can't be listed.
    FileDescriptor descriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor) {
        return tl::unexpected<int>(errno);
    }
    return Pointer(new Folder(std::move(descriptor)));
}

tl::expected<Folder::Pointer, int> Folder::below(const std::string& path, Missing missing) const
{
    FileDescriptor reached(fcntl(descriptor_.get(), F_DUPFD_CLOEXEC, 0));
    if (!reached) {
        return tl::unexpected<int>(errno);
    }
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        const std::string step = path.substr(start, end - start);
        start = end + 1;
        if (step.empty() || step == ".") {
            continue;
        }
        if (!isStep(step)) {
            return tl::unexpected<int>(ELOOP);
        }
        if (missing == Missing::Make && mkdirat(reached.get(), step.c_str(), 0777) != 0 &&
            errno != EEXIST) {
            return tl::unexpected<int>(errno);
        }
        FileDescriptor next(
            openat(reached.get(), step.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!next) {
            const int why = errno;
            struct stat status = {};
            const bool isLink =
                fstatat(reached.get(), step.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                S_ISLNK(status.st_mode);
            return tl::unexpected<int>(isLink ? ELOOP : why);
        }
        reached = std::move(next);
    }
    return Pointer(new Folder(std::move(reached)));
}

std::optional<struct stat> Folder::statusOf(const std::string& name) const
{
    struct stat status = {};
    return fstatat(descriptor_.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0
               ? std::optional(status)
               : std::nullopt;
}

std::optional<FileVersion> Folder::versionAt(const std::string& name) const
{
    const auto status = statusOf(name);
    return status ? std::optional(versionOf(*status)) : std::nullopt;
}

tl::expected<FileDescriptor, int> Folder::openFile(const std::string& name, int flags,
                                                   mode_t mode) const
{
    FileDescriptor file(
        openat(descriptor_.get(), name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file) {
        return tl::unexpected<int>(errno);
    }
    return file;
}

int Folder::link(const std::string& name, const std::string& second) const
{
    return resultOf(linkat(descriptor_.get(), name.c_str(), descriptor_.get(), second.c_str(), 0));
}

int Folder::renameToFree(const std::string& from, const std::string& to) const
{
    return moveToFree(from, *this, to);
}

int Folder::moveToFree(const std::string& from, const Folder& folder, const std::string& to) const
{
    const int other = folder.descriptor_.get();
    int result =
        resultOf(renameat2(descriptor_.get(), from.c_str(), other, to.c_str(), RENAME_NOREPLACE));
    if (result == EINVAL || result == ENOSYS) {
        // A file system without that flag: a hard link refuses an existing name just as well.
        result = resultOf(linkat(descriptor_.get(), from.c_str(), other, to.c_str(), 0));
        if (result == 0) {
            unlinkat(descriptor_.get(), from.c_str(), 0);
        }
    }
    return result;
}

int Folder::renameOver(const std::string& from, const std::string& to) const
{
    return resultOf(renameat(descriptor_.get(), from.c_str(), descriptor_.get(), to.c_str()));
}

int Folder::exchange(const std::string& one, const std::string& other) const
{
    const int result = resultOf(renameat2(descriptor_.get(), one.c_str(), descriptor_.get(),
                                          other.c_str(), RENAME_EXCHANGE));
    return result == EINVAL || result == ENOSYS || result == EOPNOTSUPP ? ENOTSUP : result;
}

int Folder::removeName(const std::string& name) const
{
    return resultOf(unlinkat(descriptor_.get(), name.c_str(), 0));
}

int Folder::remove(const std::string& name, const FileVersion& file) const
{
    const auto there = versionAt(name);
    if (!there) {
        return errno;
    }
    return there->isOf(file) ? removeName(name) : ESTALE;
}

void Folder::sync() const
{
    if (const FileDescriptor descriptor = readable()) {
        fsync(descriptor.get());
    }
}

FileDescriptor Folder::readable() const
{
    return FileDescriptor(openat(descriptor_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameIn(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

} // namespace karvel::io
