#include "VantoraHost/core/reports/ReportLines.h"

#include <unistd.h>

#include <cerrno>

namespace vantora {

namespace {

// What toJson begins with; other programs' files hardly do.
constexpr std::string_view beginning = R"({"schema":1,"input":")";
constexpr std::string_view summary = R"({"schema":1,"summary":{)";

// A million removed pages take less.
constexpr std::size_t longestLine = 16 * 1024 * 1024;

} // namespace

bool ReportLines::Line::mayBeOurs() const
{
    const bool whole = text.compare(0, beginning.size(), beginning) == 0;
    const bool torn = !complete && number > 1 && beginning.substr(0, text.size()) == text;
    return whole || torn;
}

bool ReportLines::Line::isSummary() const
{
    return number > 1 && text.compare(0, summary.size(), summary) == 0;
}

std::optional<ReportLines::Line> ReportLines::next()
{
    constexpr std::size_t piece = 256 * 1024;
    std::size_t searched = begin_;
    for (;;) {
        const std::size_t end = buffer_.find('\n', searched);
        if (end != std::string::npos) {
            Line line{buffer_.substr(begin_, end - begin_), ++number_, true};
            begin_ = end + 1;
            return line;
        }
        buffer_.erase(0, begin_);
        begin_ = 0;
        searched = buffer_.size();
        if (buffer_.size() > longestLine) {
            failure_ = EFBIG;
            return std::nullopt;
        }
        buffer_.resize(searched + piece);
        const ssize_t got =
            ::pread(descriptor_, buffer_.data() + searched, piece, static_cast<off_t>(offset_));
        buffer_.resize(searched + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got > 0) {
            offset_ += static_cast<std::size_t>(got);
            continue;
        }
        failure_ = got < 0 ? errno : 0;
        if (failure_ != 0 || buffer_.empty()) {
            return std::nullopt;
        }
        Line line{std::move(buffer_), ++number_, false};
        buffer_.clear();
        return line;
    }
}

} // namespace vantora
