#pragma once

#include "VantoraHost/desktop/sequence/StepList.h"

#include <filesystem>
#include <vector>

namespace vantora::desktop {

/// An action that is installed, with what it says of itself.
struct InstalledAction {
    Action action;
    QString title; ///< the name that people see
    QString group;
    QString help; ///< the name of its help page
    QString icon; ///< the file of its picture among the resources
};

/// The actions in these folders, by group and title; those that can't be loaded are left out.
std::vector<InstalledAction> installedActions(const std::vector<std::filesystem::path>& folders);

/// The action that a name or title names; null when it isn't installed.
const InstalledAction* actionNamed(const std::vector<InstalledAction>& actions,
                                   const std::string& name);

/// A new step of an action.
ListedStep stepOf(const InstalledAction& action);

/// Saved steps as steps of the sequence. The error is that an action isn't installed.
Result<ListedSteps> listed(const std::vector<StepRequest>& requests,
                           const std::vector<InstalledAction>& actions);

/// Saves steps as an action list of the user's. `range` is that of the marks.
Outcome saveAsActionList(const std::string& name, const std::string& category, const StepList& list,
                         const QString& range, const std::vector<InstalledAction>& actions);

/// Saves a step as tool settings. A file that exists is replaced when it holds such.
Outcome saveAsToolSettings(const QString& path, const StepRequest& step,
                           const std::vector<InstalledAction>& actions);

} // namespace vantora::desktop
