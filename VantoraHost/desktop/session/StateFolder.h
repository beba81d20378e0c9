#pragma once

#include "VantoraHost/core/Error.h"

#include <string>

namespace vantora::desktop {

/// A folder of the program's in the user's folder for what programs remember: $XDG_STATE_HOME, or
/// ~/.local/state. It need not be there.
std::string stateFolder(const std::string& name);

/// Makes such a folder where it is missing. The error is also that others may look into it.
Outcome makeStateFolder(const std::string& folder);

} // namespace vantora::desktop
