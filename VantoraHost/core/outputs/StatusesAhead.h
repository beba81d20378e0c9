#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

enum class Links { Follow, Keep };

/// A path, and the status of what stands there; none when nothing does.
struct LookedAt {
    std::string path;
    std::optional<struct stat> status;
};

LookedAt lookAt(std::string path, Links links);

/// The statuses of what stands at many paths, one after the other: some thousands of them are asked
/// for at a time, by as many threads as the machine has processors, since each takes the system's
/// time rather than this process's. No thread is left between calls.
class StatusesAhead {
public:
    /// `pathOf` names each path by its number, on several threads at a time.
    StatusesAhead(std::size_t count, std::function<std::string(std::size_t)> pathOf, Links links)
        : count_(count), pathOf_(std::move(pathOf)), links_(links)
    {
    }

    /// The next one, of which there must be one.
    LookedAt next();

private:
    void look(std::size_t begin, std::size_t end);
    void lookAhead();

    const std::size_t count_;
    const std::function<std::string(std::size_t)> pathOf_;
    const Links links_;
    std::size_t next_ = 0;  ///< the number of the next one
    std::size_t first_ = 0; ///< the number of the first of those that are known
    std::vector<LookedAt> known_;
};

} // namespace vantora
