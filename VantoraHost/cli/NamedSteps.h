#pragma once

#include "VantoraHost/cli/GuiPart.h"
#include "VantoraHost/cli/Options.h"

#include <vector>

namespace vantora::cli {

/// The steps that the command line names: saved ones read, and values that stand in files, too.
Result<std::vector<StepRequest>> stepsNamed(const std::vector<NamedStep>& named,
                                            const GuiPartSource& guiPart);

} // namespace vantora::cli
