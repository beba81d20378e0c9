#include "VantoraHost/cli/arguments/NamedSteps.h"

#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/core/actions/KnownAction.h"

namespace vantora::cli {

namespace {

Result<std::vector<StepRequest>> withSavedSteps(const std::vector<NamedStep>& named,
                                                const GuiPartSource& guiPart)
{
    std::vector<StepRequest> steps;
    for (const NamedStep& step : named) {
        if (!step.saved) {
            steps.push_back(step);
            continue;
        }
        const auto part = guiPart();
        if (!part) {
            return tl::unexpected<Error>(part.error());
        }
        const auto saved = (*part)->steps(*step.saved);
        if (!saved) {
            return tl::unexpected<Error>(saved.error());
        }
        for (const StepRequest& one : *saved) {
            steps.push_back(one);
            steps.back().options = step.options;
        }
    }
    return steps;
}

Result<std::vector<StepRequest>> withFileContents(std::vector<StepRequest> steps)
{
    for (StepRequest& step : steps) {
        const KnownAction* known = knownAction(step.action);
        for (auto& [key, value] : step.options) {
            const KnownOption* option = known ? known->option(key) : nullptr;
            if (option && option->mayStandInFile) {
                Result<std::string> range = valueOrFileContent(value);
                if (!range) {
                    return tl::unexpected<Error>(std::move(range.error()));
                }
                value = std::move(*range);
            }
        }
    }
    return steps;
}

} // namespace

Result<std::vector<StepRequest>> stepsNamed(const std::vector<NamedStep>& named,
                                            const GuiPartSource& guiPart)
{
    return withSavedSteps(named, guiPart).and_then(withFileContents);
}

} // namespace vantora::cli
