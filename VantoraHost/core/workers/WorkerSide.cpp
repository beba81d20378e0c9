#include "VantoraHost/core/workers/WorkerSide.h"

#include "VantoraHost/core/DescriptorText.h"
#include "VantoraHost/core/workers/MessageFrames.h"

#include <unistd.h>

#include <cerrno>

namespace vantora {

// Waits for more; false at the end.
bool WorkerSide::readMore()
{
    char piece[65536];
    for (;;) {
        const ssize_t got = ::read(channel_.orders, piece, sizeof piece);
        if (got > 0) {
            buffer_.append(piece, static_cast<std::size_t>(got));
            return true;
        }
        if (got == 0 || errno != EINTR) {
            return false;
        }
    }
}

std::optional<std::string> WorkerSide::nextLine()
{
    std::size_t end = 0;
    while ((end = buffer_.find('\n', searched_)) == std::string::npos) {
        searched_ = buffer_.size();
        if (!readMore()) {
            return std::nullopt;
        }
    }
    std::string line = buffer_.substr(0, end);
    buffer_.erase(0, end + 1);
    searched_ = 0;
    return line;
}

std::optional<std::string> WorkerSide::nextMessage()
{
    for (;;) {
        std::string_view received = buffer_;
        if (auto message = takeMessage(received)) {
            buffer_.erase(0, buffer_.size() - received.size());
            return message;
        }
        if (!readMore()) {
            return std::nullopt;
        }
    }
}

bool WorkerSide::write(std::string_view bytes) const
{
    return writeText(channel_.answers, bytes);
}

} // namespace vantora
