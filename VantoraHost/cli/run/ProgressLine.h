#pragma once

#include "VantoraHost/core/language/Language.h"

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <utility>

namespace vantora::cli {

/// One line on a terminal that says how far a run is, rewritten in place.
class ProgressLine {
public:
    using Clock = std::chrono::steady_clock;

    /// A line that is not `wanted` never shows.
    ProgressLine(std::ostream& terminal, bool wanted, Clock::time_point started = Clock::now(),
                 Language language = {})
        : terminal_(terminal), wanted_(wanted), started_(started), language_(std::move(language))
    {
    }
    ~ProgressLine() { clear(); }

    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows the line unless it was shown a moment ago. After the first second it says how fast the
    /// run is and what time is left at that rate.
    void show(std::size_t finished, std::size_t failed, std::size_t total,
              Clock::time_point now = Clock::now());

    /// Takes the line away, so that other lines can be printed.
    void clear();

private:
    std::ostream& terminal_;
    const bool wanted_;
    const Clock::time_point started_;
    const Language language_;
    bool visible_ = false;
    Clock::time_point next_{};
};

} // namespace vantora::cli
