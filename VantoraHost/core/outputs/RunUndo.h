#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// What undoing a run came to for one of its documents.
enum class UndoStatus {
    GivenBack, ///< the original has its name again; in a dry run it would have
    Removed,   ///< the output is gone; in a dry run it would be
    Already,   ///< the original has its name: there was nothing to do
    LeftAlone, ///< nothing was changed; `why` says why
};

/// A short lower-case name such as "given-back".
const char* statusName(UndoStatus status);

struct Undone {
    std::string input; ///< as the report has it
    std::string output;
    UndoStatus status = UndoStatus::LeftAlone;
    std::optional<Error> why;
};

/// Undoes what a run wrote: originals that it kept as backups get their names back, and outputs
/// with names of their own are removed. Only what is as the report says is touched, so that no work
/// of anybody since then is lost, and nothing is done by halves: killed at any moment, it can be
/// begun again.
class RunUndo {
public:
    struct Settings {
        bool removeOutputs = false; ///< else outputs that replaced nothing are left alone
        bool dryRun = false;        ///< only say what would be done
        std::function<bool()> cancelled = [] { return false; };
    };

    /// Reads what runs wrote, by their reports. Since a forged report could have files exchanged or
    /// removed, only this user's own ones are taken.
    static Result<RunUndo> read(const std::vector<std::string>& reports);

    /// How many documents there are to undo.
    std::size_t count() const { return written_.size(); }

    /// Undoes one document after the other, the last one first, and hands on what came of each.
    /// Paths are looked up as they were named, so the working folder has to be the one of the run.
    void undo(const Settings& settings, const std::function<void(const Undone&)>& take) const;

private:
    struct Written {
        std::string input;
        std::string output;
        bool inPlace;
        bool replaced; ///< whether something else had the output's name
        FileState before;
        FileState after;
    };

    static Undone undoneOf(const Written& written, const Settings& settings);
    static Result<UndoStatus> giveBack(const Written& written, bool dryRun);
    static Result<UndoStatus> remove(const Written& written, const Settings& settings);

    std::vector<Written> written_;
};

} // namespace vantora
