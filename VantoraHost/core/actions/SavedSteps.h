#pragma once

#include "VantoraHost/core/actions/Sequence.h"

#include <string>
#include <vector>

namespace vantora {

/// What users save from options dialogs.
enum class SavedKind {
    ActionList,   ///< several steps, in a file NAME.xqq in the user's folder or anywhere
    Favourite,    ///< one step, in a file in the user's folder
    ToolSettings, ///< one step, in a file anywhere
};

/// Steps that somebody saved. The name of an action list may be that of a file: one that ends in
/// ".xqq". Tool settings are always named by their file.
struct SavedIn {
    SavedKind kind;
    std::string name; ///< as bytes of the file system
};

/// Reads the steps, at least one. A file is not trusted: it may come from anybody, and one that is
/// damaged at any step has none at all.
Result<std::vector<StepRequest>> savedSteps(const SavedIn& saved);

/// A list or a favourite in the user's folders.
struct SavedEntry {
    std::string name;     ///< by which savedSteps finds it
    std::string category; ///< of a list; may be empty
    std::string file;
    std::vector<StepRequest> steps;
};

/// All of them, by the names of their files; those that can't be used as the reason.
std::vector<Result<SavedEntry>> savedActionLists();
std::vector<Result<SavedEntry>> savedFavourites();

} // namespace vantora
