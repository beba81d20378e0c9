#pragma once

#include "VantoraHost/core/documents/Batch.h"

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

/// What the documents of a run take: reading the inputs, writing into the outputs' folders. Where
/// a run has thousands of inputs, their folders stand for them.
FileAccess fileAccessOf(const Batch& batch);

/// What programs take, whatever they work on: the system's libraries, fonts and tables, and these
/// folders, such as that of the program's own parts.
std::vector<std::string> programFiles(std::vector<std::filesystem::path> folders);

/// Takes everything else from this process, for good: no other file can be opened, made, renamed
/// or removed, no other process be looked into, no network address be used. Returns false where
/// the system has no Landlock, and nothing happened.
bool restrictFiles(const FileAccess& access);

} // namespace vantora
