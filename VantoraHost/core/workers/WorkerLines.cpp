#include "VantoraHost/core/workers/WorkerLines.h"

#include <unistd.h>

#include <cerrno>

namespace vantora {

std::optional<std::string> WorkerLines::next()
{
    std::size_t end = 0;
    while ((end = buffer_.find('\n', searched_)) == std::string::npos) {
        searched_ = buffer_.size();
        char piece[65536];
        const ssize_t got = ::read(channel_.orders, piece, sizeof piece);
        if (got > 0) {
            buffer_.append(piece, static_cast<std::size_t>(got));
        } else if (got == 0 || errno != EINTR) {
            return std::nullopt;
        }
    }
    std::string line = buffer_.substr(0, end);
    buffer_.erase(0, end + 1);
    searched_ = 0;
    return line;
}

bool WorkerLines::write(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(channel_.answers, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

} // namespace vantora
