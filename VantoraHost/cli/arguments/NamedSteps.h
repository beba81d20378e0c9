#pragma once

#include "VantoraHost/cli/arguments/NamedStep.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"

#include <vector>

namespace vantora::cli {

/// The steps that the command line names: saved ones read, and values that stand in files, too.
Result<std::vector<StepRequest>> stepsNamed(const std::vector<NamedStep>& named,
                                            const GuiPartSource& guiPart);

} // namespace vantora::cli
