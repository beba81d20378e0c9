#include "VantoraHost/core/watching/Arrivals.h"

#include <algorithm>

namespace vantora {

using namespace std::chrono_literals;

namespace {

// The least time to watch what nobody has said to be closed, where writers can't be seen.
constexpr Arrivals::Duration leastInTheDark = 1s;
// Pauses between looks at a document that is being written; closing it is told of as well.
constexpr Arrivals::Duration shortestPause = 50ms;
constexpr Arrivals::Duration longestPause = 5s;

} // namespace

bool Arrivals::notice(const std::string& name, Noticed how, Time due)
{
    if (const auto known = numbers_.find(name); known != numbers_.end()) {
        Waiting& one = waiting_[known->second];
        one.due = std::min(one.due, due);
        one.how = how == Noticed::Whole ? how : one.how;
        one.pause = how == Noticed::Whole ? Duration(0) : one.pause;
        return true;
    }
    if (waiting_.size() >= mostWaiting) {
        return false;
    }
    Waiting one;
    one.name = name;
    one.how = how;
    one.due = due;
    numbers_.emplace(name, nextNumber_);
    waiting_.emplace(nextNumber_++, std::move(one));
    return true;
}

Arrivals::Verdict Arrivals::judge(Waiting& one, const Eyes& eyes) const
{
    const auto seen = eyes.lookAt(one.name);
    if (!seen || eyes.isDone({one.name, seen->version})) {
        return Verdict::Forget;
    }
    const bool isWritten = seen->writer == Writer::Some;
    if (!one.last || *one.last != seen->version || isWritten) {
        one.grows = isWritten || one.last;
        one.last = seen->version;
        one.since = eyes.now;
    }
    if (isWritten) {
        one.pause = std::clamp(2 * one.pause, shortestPause, longestPause);
        one.due = eyes.now + one.pause;
        return Verdict::Wait;
    }
    const bool inTheDark = seen->writer == Writer::Unknown && one.how == Noticed::Seen;
    const Duration needed = inTheDark ? std::max(settle_, leastInTheDark) : settle_;
    const Duration age = ageTells_ ? std::chrono::nanoseconds(eyes.date - seen->changed) : 0ns;
    const Duration same = std::max(eyes.now - one.since, age);
    one.due = eyes.now + (needed - same);
    return same >= needed ? Verdict::Whole : Verdict::Wait;
}

std::vector<Arrival> Arrivals::take(const Eyes& eyes, std::size_t most)
{
    std::vector<Arrival> taken;
    for (auto at = waiting_.begin(); at != waiting_.end() && taken.size() < most;) {
        Waiting& one = at->second;
        const Verdict verdict = one.due <= eyes.now ? judge(one, eyes) : Verdict::Wait;
        if (verdict == Verdict::Wait) {
            ++at;
            continue;
        }
        numbers_.erase(one.name);
        if (verdict == Verdict::Whole) {
            taken.push_back({std::move(one.name), *one.last});
        }
        at = waiting_.erase(at);
    }
    return taken;
}

std::optional<Arrivals::Time> Arrivals::nextLook() const
{
    const auto first =
        std::min_element(waiting_.begin(), waiting_.end(), [](const auto& one, const auto& other) {
            return one.second.due < other.second.due;
        });
    return first == waiting_.end() ? std::nullopt : std::optional<Time>(first->second.due);
}

bool Arrivals::onlyGrowing() const
{
    return std::all_of(waiting_.begin(), waiting_.end(),
                       [](const auto& one) { return one.second.grows; });
}

void Arrivals::clear()
{
    waiting_.clear();
    numbers_.clear();
}

} // namespace vantora
