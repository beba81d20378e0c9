#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "KarvelPDFLibrary/io/Folder.h"
#include "VantoraHost/core/Error.h"

#include <string>
#include <vector>

namespace vantora::desktop {

/// A file in which a window keeps what is worked on, with the lock that tells whether somebody is
/// at it. The lock is this object's as long as it lives, also for other machines that share the
/// folder; the file stays unless it is removed.
class WorkFile {
public:
    /// Its path; the lock is a file beside it.
    const std::string& path() const { return path_; }

    /// Puts a text in the place of what it holds; only the user may read it.
    Outcome write(const std::string& text) const;

    /// What it holds, up to mostKept.
    Result<std::string> read() const;

    /// Removes what it holds; the lock stays.
    void clear() const;

    /// Removes it and its lock; it must not be used any more.
    void remove();

private:
    friend class WorkStore;
    WorkFile(std::string path, karvel::io::FileDescriptor lock)
        : path_(std::move(path)), lock_(std::move(lock))
    {
    }

    std::string path_;
    karvel::io::FileDescriptor lock_;
};

/// The files of all windows of a user, in a folder that nobody else may look into.
class WorkStore {
public:
    /// The most that are kept of windows that are gone; the oldest go.
    static constexpr std::size_t most = 8;

    WorkStore();
    explicit WorkStore(std::string folder) : folder_(std::move(folder)) {}

    /// A file of a window's own, which doesn't hold anything yet. Makes the folder.
    Result<WorkFile> begin() const;

    /// Those that windows have left behind, the latest first. Whoever has them has them alone.
    std::vector<WorkFile> leftBehind() const;

private:
    std::string folder_;
};

} // namespace vantora::desktop
