#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "KarvelPDFLibrary/io/FileVersion.h"

#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <tl/expected.hpp>

namespace karvel::io {

enum class Missing { Refuse, Make };

/// A folder that is held open. Names in it mean files of this very folder, whatever is moved or
/// linked to its path meanwhile. All that creates, renames and removes outputs goes through here,
/// never following a link in the place of a name. Where an int is returned it is 0 or an errno
/// value.
class Folder {
public:
    using Pointer = std::shared_ptr<const Folder>;

    /// Follows links on the way, as the path is somebody's word for the folder. The error is an
    /// errno value.
    static tl::expected<Pointer, int> open(const std::string& path);

    /// The folder at a path below this one. No link is followed on the way, so that nothing leads
    /// out; ELOOP says that there is one. What is made gets the usual mode.
    tl::expected<Pointer, int> below(const std::string& path, Missing missing) const;

    int descriptor() const { return descriptor_.get(); }
    std::optional<FileVersion> version() const { return versionOf(descriptor_.get()); }

    /// What stands under a name, if only a link; none when nothing does.
    std::optional<struct stat> statusOf(const std::string& name) const;
    std::optional<FileVersion> versionAt(const std::string& name) const;

    /// Opens a file with flags of open(2); a link is refused with ELOOP.
    tl::expected<FileDescriptor, int> openFile(const std::string& name, int flags,
                                               mode_t mode = 0) const;

    /// Gives a file a second name; EEXIST when that is taken.
    int link(const std::string& name, const std::string& second) const;

    /// Renames to a name that is free; EEXIST when it isn't.
    int renameToFree(const std::string& from, const std::string& to) const;

    /// The same into another folder of the file system; EXDEV when that is of another one.
    int moveToFree(const std::string& from, const Folder& folder, const std::string& to) const;

    /// Renames over what has the name.
    int renameOver(const std::string& from, const std::string& to) const;

    /// Lets two files have each other's name; ENOTSUP where the file system can't.
    int exchange(const std::string& one, const std::string& other) const;

    /// Removes a name, whatever file has it.
    int removeName(const std::string& name) const;

    /// Removes a name, if it still is this file's.
    int remove(const std::string& name, const FileVersion& file) const;

    /// Waits until the disk has the names in it. One that cannot be synced (on some network file
    /// systems, or without the right to list it) is no failure.
    void sync() const;

    /// Another descriptor, to list it with; none without the right to.
    FileDescriptor readable() const;

private:
    explicit Folder(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    FileDescriptor descriptor_;
};

/// The folder that a path names a file in, and the file's name in it.
std::string folderOf(const std::string& path);
std::string nameIn(const std::string& path);

} // namespace karvel::io
