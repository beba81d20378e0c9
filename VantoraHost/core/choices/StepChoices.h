#pragma once

#include "VantoraApp/interface/ActionInterface.h"
#include "VantoraHost/core/choices/ChosenPages.h"

#include <optional>
#include <string>

namespace vantora {

/// The host's own keys among the options of a step, which actions leave alone: choices of pages,
/// one a line. Saved steps have them, too.
inline constexpr char chooseKey[] = "HostChoosePages";
inline constexpr char keepKey[] = "HostKeepPages";
inline constexpr char exceptKey[] = "HostExceptPages";

/// Another one, with any value: each document comes with a range of its own.
inline constexpr char ownRangesKey[] = "HostRangesOfDocuments";

/// Whether it is one of these.
bool isChoiceKey(const std::string& key);

/// The choices in a step's options; nothing where it has none. The error says which is wrong.
Result<std::optional<ChoiceSet>> choicesIn(const PreferencesMap& preferences);

} // namespace vantora
