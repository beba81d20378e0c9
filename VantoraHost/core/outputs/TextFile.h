#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/outputs/TargetFolder.h"

#include <string>

namespace vantora {

/// What becomes of a file that has the name already.
enum class ExistingText { Refuse, Replace };

/// Writes a text to a file, which is replaced whole if it is there, so that nobody reads half of
/// it.
Outcome writeTextFile(const std::string& path, const std::string& text);

/// The same for a text that shows what documents hold: its owner alone may read it.
Outcome writePrivateText(const std::string& path, const std::string& text, ExistingText existing);

/// The same for any bytes at a target of a run, which is replaced where the target says so.
Outcome writePrivateFile(const Target& target, TargetFolders& folders, const std::string& bytes);

} // namespace vantora
