#pragma once

#include "VantoraHost/cli/gui_part/GuiPart.h"

namespace vantora::cli {

/// The part itself, for the module and for tests.
const GuiPart& thisGuiPart();

} // namespace vantora::cli
