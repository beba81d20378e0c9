#pragma once

#include "KarvelPDFLibrary/io/Folder.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantora {

/// Whether some process has a file open to write to it.
enum class Writer {
    None,
    Some,
    Unknown, ///< it is another user's, or on a file system that doesn't tell
};

/// A document in a watched folder as it was looked at.
struct Sighting {
    FileVersion version;
    std::int64_t changed = 0; ///< when anything of the file last changed (stat's st_ctim), in
                              ///< nanoseconds since 1970 by the clock of the file system
    Writer writer = Writer::Unknown;
};

/// Whether a file of that name is taken for a document: PDF files that are neither hidden nor
/// named as other programs name what isn't whole yet.
bool isDocumentName(std::string_view name);

/// A folder that documents arrive in, held open: names mean files of this very folder. What is in
/// it is other people's: links are never followed, and only regular files count.
class WatchedFolder {
public:
    /// The error is that it isn't there, is no folder or can't be listed.
    static Result<WatchedFolder> open(const std::string& path);

    const std::string& path() const { return path_; }
    const karvel::io::Folder& folder() const { return *folder_; }
    FileIdentity identity() const { return identity_; }

    /// Whether others may change it without this system being told (statfs(2)).
    bool isShared() const { return shared_; }

    /// Whether its path still leads to it.
    bool isThere() const { return identityOf(path_) == identity_; }

    /// A document as it is now; none when there is none of that name.
    std::optional<Sighting> lookAt(const std::string& name) const;

    /// Hands on the names of documents in it until `take` returns false; returns 0 or an errno
    /// value.
    int list(const std::function<bool(const std::string& name, const FileVersion&)>& take) const;

private:
    WatchedFolder(std::string path, karvel::io::Folder::Pointer folder, FileIdentity identity,
                  bool shared)
        : path_(std::move(path)), folder_(std::move(folder)), identity_(identity), shared_(shared)
    {
    }

    std::string path_;
    karvel::io::Folder::Pointer folder_;
    FileIdentity identity_;
    bool shared_;
};

/// Whether a folder is one of these or lies somewhere below it, whatever its path looks like.
bool isInside(const std::string& folder, FileIdentity outer);

} // namespace vantora
