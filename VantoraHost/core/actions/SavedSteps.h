#pragma once

#include "VantoraHost/core/actions/Sequence.h"

#include <QtCore/QString>

#include <cstddef>
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

/// What somebody saved.
struct SavedEntry {
    std::string name;     ///< by which savedEntry finds it
    std::string category; ///< of a list; may be empty
    std::string file;
    std::vector<StepRequest> steps;
    std::vector<int> numbers; ///< those of a list's steps in its file, ascending, from 0
};

/// The most steps of a list. A file with more comes from nobody who saved them one by one.
inline constexpr std::size_t mostSteps = 1000;

Result<SavedEntry> savedEntry(const SavedIn& saved);

/// The file that it is in, whatever that holds.
Result<std::string> savedFile(const SavedIn& saved);

/// A sentence for a message box as one that follows a file's name and a colon.
std::string asClause(QString sentence);

/// All in the user's folders, by the names of their files; those that can't be used as the reason.
std::vector<Result<SavedEntry>> savedActionLists();
std::vector<Result<SavedEntry>> savedFavourites();

} // namespace vantora
