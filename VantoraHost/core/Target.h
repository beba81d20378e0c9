#pragma once

#include <string>

namespace vantora {

/// The name that stands for standard input and standard output.
inline constexpr char standardStream[] = "-";

/// Where one document's result goes.
struct Target {
    std::string name;   ///< as the caller named it, "-" for standard output
    std::string path;   ///< the file to write: the one behind the links when it is replaced
    std::string backup; ///< the file to keep the original as; empty for no backup
    bool standardOutput = false;
    bool replace = false;       ///< whether an existing file may be replaced
    bool replaceBackup = false; ///< whether an older backup may be
    bool number = false;        ///< whether to take a copy name when the file exists by then
};

} // namespace vantora
