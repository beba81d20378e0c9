#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantora {

/// Where a worker's orders come from and its answers go to: open file descriptors.
struct WorkerChannel {
    int orders;
    int answers;
};

/// A worker's side of its channel: what comes, in lines or in messages (MessageFrames), and bytes
/// that go. Both wait.
class WorkerSide {
public:
    explicit WorkerSide(const WorkerChannel& channel) : channel_(channel) {}

    /// The next line, without its end; none at the end of the orders.
    std::optional<std::string> nextLine();

    /// The next message, however long, as the run is trusted; none at the end of the orders.
    std::optional<std::string> nextMessage();

    /// Whether the bytes went through.
    bool write(std::string_view bytes) const;

private:
    bool readMore();

    const WorkerChannel channel_;
    std::string buffer_;
    std::size_t searched_ = 0;
};

} // namespace vantora
