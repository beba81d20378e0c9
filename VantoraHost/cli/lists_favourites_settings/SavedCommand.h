#pragma once

#include "VantoraHost/cli/arguments/NamedStep.h"
#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/core/Installation.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantora::cli {

/// What is done with what somebody saved.
enum class SavedVerb { List, Show, Add, Change, Remove };

/// What the command line says about something saved.
struct SavedOptions {
    SavedKind kind = SavedKind::ActionList;
    SavedVerb verb = SavedVerb::List;
    std::string name;                    ///< of all verbs but List; a file's for tool settings
    std::vector<NamedStep> steps;        ///< to add, at least one
    std::optional<std::size_t> position; ///< the step that is meant, from 1
    std::vector<std::pair<std::string, std::string>> changes;
    std::optional<std::string> category;
    bool overwrite = false;
    bool json = false;
};

/// Lists, shows and changes the user's action lists, favourites and tool-settings files; returns
/// the exit status. Favourites have icons: for them it makes an application that needs no display
/// when there is none.
int workOnSaved(const SavedOptions& options, const Installation& installation,
                const GuiPartSource& guiPart, const Streams& streams);

} // namespace vantora::cli
