#pragma once

#include "VantoraHost/core/Error.h"

#include <filesystem>
#include <optional>
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
    std::optional<Error> leftOut; ///< why the user's own folder of actions isn't among them
};

/// The parts that belong to a program file: the build tree and an installation have the same
/// layout, so both are found by the same relative paths. `actionFolders`, a list separated by
/// colons, takes the place of the program's own folder of actions unless it is null or empty.
Installation installationOf(const std::filesystem::path& program, const char* actionFolders);

/// Where a user's own actions lie: "vantora/actions" below `dataHome`, or below "~/.local/share"
/// where that is null or no whole path. Empty where there is no `home` either.
std::filesystem::path ownActionFolder(const char* dataHome, const char* home);

/// Adds a user's own folder of actions, behind the others. What lies in it runs with the user's
/// rights, so it counts as a whole and only when nobody but the user and the administrator can
/// change any of it; else `leftOut` says what others may change. One that isn't there is none.
void addOwnActions(Installation& installation, const std::filesystem::path& folder);

/// The file of the running program.
std::filesystem::path thisProgram();

/// The installation that the running program belongs to: with the folders of actions that the
/// variable VANTORA_ACTIONS_PATH names, else with its own and the user's.
Installation thisInstallation();

} // namespace vantora
