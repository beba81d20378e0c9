#pragma once

#include "VantoraApp/ActionInterface.h"
#include "VantoraHost/core/Error.h"

#include <QtCore/QString>

#include <string>
#include <vector>

/// What the host itself knows of the action that deletes pages: how to check its range before a
/// run, and which pages it is going to take, so that a report can name them.
namespace vantora::deletepages {

inline constexpr char actionName[] = "Delete Pages";
inline constexpr char rangeKey[] = "byPageRangeTextEdit";

/// Whether the options hold a range as the options dialog would accept it.
Outcome check(const PreferencesMap& preferences);

/// The pages, ascending, that the range takes from a document of `pageCount` pages.
std::vector<int> pagesTaken(const PreferencesMap& preferences, int pageCount);

/// The highest page that a checked range names.
int highestPageNamed(const PreferencesMap& preferences);

/// The range as it was given, its end left away when it is too long for a message.
std::string shownRange(const PreferencesMap& preferences);

} // namespace vantora::deletepages
