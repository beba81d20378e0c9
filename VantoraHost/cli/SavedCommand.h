#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Installation.h"

namespace vantora::cli {

/// Lists, shows and changes the user's action lists, favourites and tool-settings files; returns
/// the exit status. Favourites have icons: for them it makes an application that needs no display
/// when there is none.
int workOnSaved(const SavedOptions& options, const Installation& installation,
                const Streams& streams);

} // namespace vantora::cli
