#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/watching/WatchedFolder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// What the system tells of a watched folder.
struct FolderEvent {
    enum class Kind {
        Whole,    ///< a file was closed after writing, or moved there
        Appeared, ///< a name is new, such as a file's that is being written, or a hard link
        Removed,  ///< a name is gone; told of folders above only
        Lost,     ///< the folder was removed, moved or unmounted; no more comes of it
        Missed,   ///< more happened in some folder than was told
    };
    Kind kind = Kind::Appeared;
    int folder = -1; ///< what add() returned; -1 for all of them
    std::string name;
};

/// The changes of folders as the system tells of them (inotify(7)).
class FolderEvents {
public:
    /// One that can't tell of anything, where the system has no more of these to give, refuses
    /// every folder.
    FolderEvents();

    /// Begins to tell of a folder; none when the system can't.
    std::optional<int> add(const WatchedFolder& folder);
    void remove(int folder);

    /// Begins to tell of names that come and go in the folder that a watched one is in: while that
    /// is held open, the system doesn't tell of its removal otherwise.
    std::optional<int> addAbove(const std::string& folder);

    /// Readable when there is something to tell; -1 for never.
    int descriptor() const { return inotify_.get(); }

    /// What has happened since, or the first of it; doesn't wait.
    std::vector<FolderEvent> read();

private:
    std::optional<int> watch(const std::string& path, std::uint32_t what);

    karvel::io::FileDescriptor inotify_;
};

} // namespace vantora
