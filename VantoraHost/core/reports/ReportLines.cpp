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
    std::size_t searched = begin;
    for (;;) {
        const std::size_t end = buffer.find('\n', searched);
        if (end != std::string::npos) {
            Line line{buffer.substr(begin, end - begin), ++number, true};
            begin = end + 1;
            return line;
        }
        buffer.erase(0, begin);
        begin = 0;
        searched = buffer.size();
        if (buffer.size() > longestLine) {
            failure = EFBIG;
            return std::nullopt;
        }
        buffer.resize(searched + piece);
        const ssize_t got =
            ::pread(descriptor, buffer.data() + searched, piece, static_cast<off_t>(offset));
        buffer.resize(searched + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got > 0) {
            offset += static_cast<std::size_t>(got);
            continue;
        }
        failure = got < 0 ? errno : 0;
        if (failure != 0 || buffer.empty()) {
            return std::nullopt;
        }
        Line line{std::move(buffer), ++number, false};
        buffer.clear();
        return line;
    }
}

} // namespace vantora
