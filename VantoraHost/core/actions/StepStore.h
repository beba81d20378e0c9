#pragma once

#include "VantoraHost/core/actions/SavedSteps.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class QIcon;

/// Writes what users save, by the operations that the options dialogs write it with. Those report
/// nothing, so each file is read again: what is not in it afterwards is a failure here.
namespace vantora::stepstore {

/// What becomes of something that has the name already.
enum class Existing { Refuse, Replace };

/// Adds a step to a list of the user's, which is made where there is none, in the category
/// "Default" unless another is given.
Outcome addToActionList(const std::string& name, const Step& step,
                        const std::optional<std::string>& category);

/// Makes a list of the user's from its first step, in the place of any of that name.
Outcome makeActionList(const std::string& name, const Step& step,
                       const std::optional<std::string>& category);

/// Makes a favourite; an application that can draw must be there for its icon.
Outcome makeFavourite(const std::string& name, const Step& step, QIcon icon, Existing existing);

/// Makes a tool-settings file; only such a file is replaced.
Outcome makeToolSettings(const std::string& file, const Step& step, Existing existing);

/// Puts other options in the place of those of a step, counted from 0.
Outcome changeStep(const SavedIn& saved, std::size_t position, const PreferencesMap& options);

Outcome changeCategory(const SavedIn& list, const std::string& category);

/// Takes a step, counted from 0, out of a list, which must keep another.
Outcome removeStep(const SavedIn& list, std::size_t position);

/// Removes the file; one that is named as a file only when it is of its kind. Returns its name.
Result<std::string> remove(const SavedIn& saved);

} // namespace vantora::stepstore
