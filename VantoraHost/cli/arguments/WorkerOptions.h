#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace vantora::cli {

/// What the command line says about worker processes.
struct WorkerChoice {
    std::optional<std::size_t> jobs;          ///< how many; 0 for none
    std::optional<int> timeout;               ///< seconds for one document; 0 for no limit
    std::optional<std::uint64_t> memoryLimit; ///< bytes for one worker; 0 for no limit

    /// Whether anything is said that takes some.
    bool areAskedFor() const { return jobs.value_or(0) > 0 || timeout || memoryLimit; }
};

} // namespace vantora::cli
