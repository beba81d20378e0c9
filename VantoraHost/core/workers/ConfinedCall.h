#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/workers/FileAccess.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vantora {

/// What a confined call may use.
struct CallLimits {
    FileAccess files;             ///< beside what programs take always (programFiles)
    std::uint64_t memory = 0;     ///< bytes; 0 for no limit
    std::chrono::seconds time{0}; ///< 0 for no limit
};

/// Does `work` in a confined copy of this process and returns the text that it returned there. The
/// errors are that the copy couldn't be started, that it crashed, that it took too long, that it
/// needed more memory (as far as it throws std::bad_alloc), and that `cancelled` said so, which is
/// asked some times a second and after every signal.
Result<std::string> callConfined(const CallLimits& limits, const std::function<bool()>& cancelled,
                                 const std::function<std::string()>& work);

/// Pieces of work, numbered from 0. Each has parts, numbered from 0 as well: the first one, and as
/// many further ones as its answer turns out to need.
struct ConfinedWork {
    std::size_t count = 0;
    CallLimits limits; ///< of each copy; the time is for each part

    /// The documents that a piece reads as well. Without it, there are none.
    std::function<std::vector<std::string>(std::size_t piece)> documents;
    std::function<std::string(std::size_t piece, std::size_t part)> work;

    /// Asked in this process, before any further part begins. Without it, none has further parts.
    std::function<std::size_t(std::size_t piece, const std::string& first)> furtherParts;

    /// How many pieces, from this one on, one copy may do the first parts of, one after the other:
    /// starting a copy takes as long as some ten small documents. Without it, each has its own.
    std::function<std::size_t(std::size_t piece)> together;
};

/// The answers of all parts of a piece in their order, or the error of one that failed.
using PieceAnswers = Result<std::vector<std::string>>;

/// The answer of a piece that has no further parts.
Result<std::string> onlyAnswer(PieceAnswers answers);

/// Does each part as callConfined does, up to `atOnce` at a time, and hands the pieces over in
/// their order, as they come; a piece is given up over the first part of it that fails. One at
/// which a copy ends that has others to do as well is tried once more, in a copy of its own.
/// Returns false when `cancelled` said so; what is not handed over then is given up.
bool callEachConfined(const ConfinedWork& calls, std::size_t atOnce,
                      const std::function<bool()>& cancelled,
                      const std::function<void(std::size_t, PieceAnswers)>& receive);

} // namespace vantora
