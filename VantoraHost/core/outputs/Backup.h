#pragma once

#include "KarvelPDFLibrary/io/FileVersion.h"
#include "KarvelPDFLibrary/io/Folder.h"
#include "VantoraHost/core/Error.h"

#include <string>

namespace vantora {

/// The original of a file that is about to be replaced, under the name of its backup. From before
/// the replacement on, the original has that name, so that nothing is left to do when the process
/// is killed; when the replacement fails the name goes away again. What has the name already is
/// never replaced.
class Backup {
public:
    using Folder = karvel::io::Folder;
    using FileVersion = karvel::io::FileVersion;

    /// Gives the file at `path` in the folder the second name `backup`, by a hard link, or copies
    /// it where the file system has none. A backup that holds the original already will do, as a
    /// killed run leaves one. Fails when there is another one, and when the file isn't that version
    /// any more.
    static Result<Backup> of(Folder::Pointer folder, const std::string& path,
                             const std::string& backup, const FileVersion& version);

    Backup(Backup&& other) noexcept = default;
    Backup& operator=(Backup&&) = delete;
    ~Backup();

    /// The file has been replaced: the backup stays.
    void keep() { folder_.reset(); }

private:
    Backup(Folder::Pointer folder, std::string name, FileVersion made)
        : folder_(std::move(folder)), name_(std::move(name)), made_(made)
    {
    }

    Folder::Pointer folder_; ///< none when there is nothing to undo
    std::string name_;
    FileVersion made_;
};

/// The name, or path, of the backup of a file with that name or path.
std::string backupOf(const std::string& file);

/// Whether a backup that is there holds what the file holds now.
bool holdsOriginal(const karvel::io::Folder& folder, const std::string& name,
                   const std::string& backup);

} // namespace vantora
