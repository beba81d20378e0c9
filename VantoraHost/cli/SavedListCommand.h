#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/Streams.h"

namespace vantora::cli {

/// Lists the user's action lists or favourites; returns the exit status.
int listSaved(const SavedListOptions& options, const Streams& streams);

} // namespace vantora::cli
