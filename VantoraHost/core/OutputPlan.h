#pragma once

#include "VantoraHost/core/Error.h"

#include <string>
#include <variant>
#include <vector>

namespace vantora {

/// The name that stands for standard input and standard output.
inline constexpr char standardStream[] = "-";

/// Where the results of a run go.
struct ToFile {
    std::string path;
};
struct ToFolder {
    std::string path;
};
struct InPlace {
    bool backup = false;
};
struct ToStandardOutput {};
using Destination = std::variant<ToFile, ToFolder, InPlace, ToStandardOutput>;

/// Where one document's result goes.
struct Target {
    std::string name;   ///< as the caller named it, "-" for standard output
    std::string path;   ///< the file to write: the one behind the links when it is replaced
    std::string backup; ///< the file to keep the original as; empty for no backup
    bool standardOutput = false;
    bool replace = false;       ///< whether an existing file may be replaced
    bool replaceBackup = false; ///< whether an older backup may be
};

/// The target of each input, or why that input can't be written, in the order of the inputs. It is
/// all decided before anything is written: an output that exists, that is an input of the run, or
/// that a second input would be written to is refused.
/// The error is one that concerns every input: the folder for the outputs isn't there.
Result<std::vector<Result<Target>>> planOutputs(const std::vector<std::string>& inputs,
                                                const Destination& destination, bool overwrite);

/// Removes the temporary files that killed runs left in the folders of the targets; those of runs
/// that are alive stay, on other machines as well.
void removeAbandonedFiles(const std::vector<Result<Target>>& targets);

} // namespace vantora
