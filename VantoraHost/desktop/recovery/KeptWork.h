#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/desktop/run/RunSettings.h"
#include "VantoraHost/desktop/sequence/StepList.h"

#include <QtCore/QString>

#include <optional>
#include <string>
#include <vector>

namespace vantora::desktop {

/// A document of a list, as it is kept.
struct KeptDocument {
    Input input;                  ///< its path is absolute
    std::optional<QString> range; ///< its own; none where that for all documents holds

    /// Where a run has done it: the file as it was read afterwards, or with nothing in `changed`
    /// when it had not been read yet.
    std::optional<FileState> done;
};

/// A step, without what the installed action says of itself.
struct KeptStep {
    std::string action;
    PreferencesMap preferences;
    bool isOn = true;
};

/// All that somebody works on, as a window keeps it for the case that it is cut off. No password is
/// in it.
struct KeptWork {
    std::vector<KeptDocument> documents;
    QString range; ///< for all documents
    std::vector<KeptStep> steps;
    RunSettings settings;
    std::string report;     ///< of the run whose results are shown, by its name; empty for none
    bool isRunning = false; ///< whether that run is going on

    /// Whether there is anything in it that somebody would miss.
    bool isWorthKeeping() const { return !documents.empty() || !range.isEmpty(); }
};

/// The most that is kept and read, in bytes.
inline constexpr std::size_t mostKept = 32 * 1024 * 1024;

/// One JSON object, ASCII only.
std::string toJson(const KeptWork& work);

/// What toJson wrote. Whatever else the text may be is an error that says so of `file`.
Result<KeptWork> keptWorkOf(const std::string& text, const std::string& file);

} // namespace vantora::desktop
