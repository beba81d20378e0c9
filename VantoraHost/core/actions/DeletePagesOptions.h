#pragma once

#include "VantoraHost/core/actions/KnownAction.h"

#include <string>

/// What the host knows of the action that deletes pages.
namespace vantora::deletepages {

inline constexpr char actionName[] = "Delete Pages";
inline constexpr char rangeKey[] = "byPageRangeTextEdit";

const KnownAction& description();

/// The range as it was given, its end left away when it is too long for a message.
std::string shownRange(const PreferencesMap& preferences);

} // namespace vantora::deletepages
