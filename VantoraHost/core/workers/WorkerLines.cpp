#include "VantoraHost/core/workers/WorkerLines.h"

#include "VantoraHost/core/DescriptorText.h"

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
    return writeText(channel_.answers, bytes);
}

} // namespace vantora
