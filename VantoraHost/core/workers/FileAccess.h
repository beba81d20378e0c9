#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/documents/Batch.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vantora {

/// The files and folders that a worker may use. A folder stands for all that is in it.
struct FileAccess {
    std::vector<std::string> readable;
    std::vector<std::string> writable; ///< folders, in which files may be made and removed

    bool operator==(const FileAccess& other) const
    {
        return readable == other.readable && writable == other.writable;
    }
};

/// What reading these inputs takes. Where there are thousands, their folders stand for them.
std::vector<std::string> readableFor(const std::vector<std::string>& inputs);

/// The folders that the outputs of a run are written to.
std::vector<std::string> writableFor(const Batch& batch);

/// What programs take, whatever they work on: the system's libraries, fonts and tables, and these
/// folders, such as that of the program's own parts.
std::vector<std::string> programFiles(std::vector<std::filesystem::path> folders);

/// Rules for the files that this process may use; they hold once it is told so.
class FileRules {
public:
    FileRules();

    void allow(const FileAccess& access);

    /// Takes everything else from this process, for good: no other file can be opened, made,
    /// renamed or removed, no other process be looked into, no network address be used. Returns
    /// false where the system has no Landlock, and nothing happened.
    bool enforce() const;

private:
    std::uint64_t known_ = 0; ///< the kinds of access that the system has rules for
    karvel::io::FileDescriptor rules_;
};

} // namespace vantora
