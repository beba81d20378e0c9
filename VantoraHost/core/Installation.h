#pragma once

#include <filesystem>
#include <vector>

namespace vantora {

/// Where the parts lie that are loaded at run time.
struct Installation {
    std::filesystem::path library;                    ///< the PDF library's file
    std::vector<std::filesystem::path> actionFolders; ///< searched in this order
    std::filesystem::path guiPart;                    ///< the program's own module for windows
    std::filesystem::path desktop;                    ///< the program with the window
    std::filesystem::path program = "/proc/self/exe"; ///< for workers: this one, also when its file
                                                      ///< has been replaced since
    std::filesystem::path verifier;                   ///< the module that verifies removals
};

/// The parts that belong to a program file: the build tree and an installation have the same
/// layout, so both are found by the same relative paths. `actionFolders`, a list separated by
/// colons, takes the place of the program's own folder of actions unless it is null or empty.
Installation installationOf(const std::filesystem::path& program, const char* actionFolders);

/// The file of the running program.
std::filesystem::path thisProgram();

} // namespace vantora
