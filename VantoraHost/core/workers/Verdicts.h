#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>

namespace vantora {

/// How a worker ended that was at a document.
struct WorkerDeath {
    ProcessEnd end;
    bool timedOut = false;  ///< the document took too long
    bool senseless = false; ///< it said what is no answer
    bool asked = false;     ///< it obeyed a signal that somebody sent it
};

/// Says what the deaths of workers mean for the documents that they were at.
class Verdicts {
public:
    /// `timeout` is the longest that a document may take; `secondChance`, whether one may be tried
    /// once more.
    explicit Verdicts(std::chrono::seconds timeout, bool secondChance = true)
        : timeout_(timeout), secondChance_(secondChance)
    {
    }

    /// Why the document failed. None when it is to be tried once more, alone: its worker was ended
    /// by a signal for the first time, be it a crash or somebody's doing.
    std::optional<Error> of(std::size_t document, const WorkerDeath& death);

private:
    const std::chrono::seconds timeout_;
    const bool secondChance_;
    std::map<std::size_t, ProcessEnd> firstEnds_; ///< by document
};

/// That a document needs more than these bytes.
std::string memorySentence(std::uint64_t limit);

/// Such as "1 second".
std::string secondsText(std::chrono::seconds time);

} // namespace vantora
