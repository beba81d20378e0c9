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

const LookedAt& StatusesAhead::of(std::size_t number)
{
    if (number >= first_ + known_.size()) {
        first_ = number;
        lookAhead();
    }
    return known_[number - first_];
}

void StatusesAhead::look(std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        LookedAt& one = known_[i];
        one.path = pathOf_(first_ + i);
        if (!one.path.empty()) {
            one.status = links_ == Links::Follow ? statusOf(one.path) : statusAt(one.path);
        }
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
