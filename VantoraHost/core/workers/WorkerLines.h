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

/// A worker's side of its channel: lines that come, and bytes that go. Both wait.
class WorkerLines {
public:
    explicit WorkerLines(const WorkerChannel& channel) : channel_(channel) {}

    /// The next line, without its end; none at the end of the orders.
    std::optional<std::string> next();

    /// Whether the bytes went through.
    bool write(std::string_view bytes) const;

private:
    const WorkerChannel channel_;
    std::string buffer_;
    std::size_t searched_ = 0;
};

} // namespace vantora
