#include "VantoraHost/desktop/sequence/InstalledActions.h"

#include "VantoraHost/core/actions/StepStore.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <algorithm>
#include <tuple>

namespace vantora::desktop {

namespace {

tl::unexpected<Error> missing(const StepRequest& request)
{
    return fail(Reason::ActionMissing, request.file,
                "the action \"" + request.action + "\" is not installed");
}

} // namespace

std::vector<InstalledAction> installedActions(const std::vector<std::filesystem::path>& folders)
{
    std::vector<InstalledAction> actions;
    const ActionCatalog catalog = ActionCatalog::of(folders);
    for (const ActionFile& file : catalog.actions()) {
        if (const auto action = ActionCatalog::load(file)) {
            CActionInterface& operations = *action->operations;
            actions.push_back({*action, operations.GetDisplayName(), operations.GetGroupName(),
                               operations.GetActionHelp(),
                               operations.GetDefaultIcon().section('#', 0, 0)});
        }
    }
    std::sort(actions.begin(), actions.end(), [](const auto& one, const auto& other) {
        return std::tie(one.group, one.title) < std::tie(other.group, other.title);
    });
    return actions;
}

const InstalledAction* actionNamed(const std::vector<InstalledAction>& actions,
                                   const std::string& name)
{
    auto found = std::find_if(actions.begin(), actions.end(),
                              [&](const InstalledAction& one) { return one.action.name == name; });
    if (found == actions.end()) {
        found = std::find_if(actions.begin(), actions.end(), [&](const InstalledAction& one) {
            return one.title.toStdString() == name;
        });
    }
    return found == actions.end() ? nullptr : &*found;
}

ListedStep stepOf(const InstalledAction& action)
{
    ListedStep step;
    step.action = action.action.name;
    step.title = action.title;
    step.icon = action.icon;
    return step;
}

Result<ListedSteps> listed(const std::vector<StepRequest>& requests,
                           const std::vector<InstalledAction>& actions)
{
    ListedSteps steps;
    for (const StepRequest& request : requests) {
        const InstalledAction* action = actionNamed(actions, request.action);
        if (action == nullptr) {
            return missing(request);
        }
        ListedStep step = stepOf(*action);
        step.preferences = request.stored;
        for (const auto& [key, value] : request.options) {
            step.preferences.insert(QString::fromStdString(key), QString::fromStdString(value));
        }
        steps.push_back(std::move(step));
    }
    return steps;
}

Outcome saveAsActionList(const std::string& name, const std::string& category, const StepList& list,
                         const QString& range, const std::vector<InstalledAction>& actions)
{
    bool isFirst = true;
    for (const StepRequest& request : list.requests(range)) {
        const InstalledAction* action = actionNamed(actions, request.action);
        if (action == nullptr) {
            continue;
        }
        const Step step = {action->action, request.stored};
        Outcome saved = isFirst ? stepstore::makeActionList(name, step, category)
                                : stepstore::addToActionList(name, step, category);
        if (!saved) {
            return saved;
        }
        isFirst = false;
    }
    return isFirst ? fail(Reason::SavedStepsUnusable, {}, "there is no step to be saved")
                   : Outcome();
}

Outcome saveAsToolSettings(const QString& path, const StepRequest& step,
                           const std::vector<InstalledAction>& actions)
{
    const InstalledAction* action = actionNamed(actions, step.action);
    return action == nullptr
               ? missing(step)
               : stepstore::makeToolSettings(systemPath(path), {action->action, step.stored},
                                             stepstore::Existing::Replace);
}

} // namespace vantora::desktop
