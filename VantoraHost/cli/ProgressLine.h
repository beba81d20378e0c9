#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>

namespace vantora::cli {

/// One line on a terminal that says how far a run is, rewritten in place.
class ProgressLine {
public:
    using Clock = std::chrono::steady_clock;

    /// A line that is not `wanted` never shows.
    ProgressLine(std::ostream& terminal, bool wanted) : terminal(terminal), wanted(wanted) {}
    ~ProgressLine() { clear(); }

    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows the line unless it was shown a moment ago.
    void show(std::size_t finished, std::size_t failed, std::size_t total,
              Clock::time_point now = Clock::now());

    /// Takes the line away, so that other lines can be printed.
    void clear();

private:
    std::ostream& terminal;
    const bool wanted;
    bool visible = false;
    Clock::time_point next{};
};

} // namespace vantora::cli
