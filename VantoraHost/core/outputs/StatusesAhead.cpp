#include "VantoraHost/core/outputs/StatusesAhead.h"

#include "VantoraHost/core/FileIdentity.h"

#include <algorithm>
#include <future>
#include <system_error>
#include <thread>

namespace vantora {

namespace {

constexpr std::size_t atATime = 4096;
constexpr std::size_t worthAThread = 256;

} // namespace

LookedAt lookAt(std::string path, Links links)
{
    auto status = links == Links::Follow ? statusOf(path) : statusAt(path);
    return {std::move(path), std::move(status)};
}

LookedAt StatusesAhead::next()
{
    if (next_ == first_ + known_.size()) {
        first_ = next_;
        lookAhead();
    }
    return std::move(known_[next_++ - first_]);
}

void StatusesAhead::look(std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        known_[i] = lookAt(pathOf_(first_ + i), links_);
    }
}

void StatusesAhead::lookAhead()
{
    const std::size_t count = std::min(atATime, count_ - first_);
    known_.assign(count, LookedAt());
    const std::size_t threads = std::clamp<std::size_t>(
        count / worthAThread, 1, std::max(1U, std::thread::hardware_concurrency()));
    const std::size_t share = (count + threads - 1) / threads;
    std::vector<std::future<void>> others; // waited for at their end
    std::size_t begin = 0;
    try {
        for (; begin + share < count; begin += share) {
            others.push_back(std::async(std::launch::async,
                                        [this, begin, share] { look(begin, begin + share); }));
        }
    } catch (const std::system_error&) {
        // No thread is to be had: the rest is looked at here.
    }
    look(begin, count);
    for (std::future<void>& other : others) {
        other.get();
    }
}

} // namespace vantora
