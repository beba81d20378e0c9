#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/workers/FileAccess.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

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

/// Pieces of work, numbered from 0.
struct ConfinedWork {
    std::size_t count = 0;
    std::function<CallLimits(std::size_t)> limits;
    std::function<std::string(std::size_t)> work;
};

/// Does each piece as callConfined does, up to `atOnce` at a time, and hands the results over in
/// their order, as they come. Returns false when `cancelled` said so; what is not handed over then
/// is given up.
bool callEachConfined(const ConfinedWork& calls, std::size_t atOnce,
                      const std::function<bool()>& cancelled,
                      const std::function<void(std::size_t, Result<std::string>)>& receive);

} // namespace vantora
