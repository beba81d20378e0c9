#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantora {

/// The lines of an open report, one after the other.
class ReportLines {
public:
    struct Line {
        std::string text;
        std::size_t number = 0; ///< from 1
        bool complete = false;  ///< a machine that stopped leaves at most the last one incomplete

        /// Whether ReportFile may have written it, by how it begins.
        bool mayBeOurs() const;

        /// Whether it is what a run ends with that prints its reports.
        bool isSummary() const;
    };

    /// Reads from the file's beginning; the descriptor stays the caller's.
    explicit ReportLines(int descriptor) : descriptor_(descriptor) {}

    /// The next line; none at the end, when the file can't be read any more, and when the line is
    /// longer than any report.
    std::optional<Line> next();

    /// Whether it ended before the file did: an errno value, EFBIG for a line that is too long.
    int error() const { return failure_; }

private:
    const int descriptor_;
    std::string buffer_;
    std::size_t begin_ = 0; ///< of what hasn't been handed out, in the buffer
    std::size_t offset_ = 0;
    std::size_t number_ = 0;
    int failure_ = 0;
};

} // namespace vantora
