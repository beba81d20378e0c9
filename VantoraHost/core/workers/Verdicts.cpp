#include "VantoraHost/core/workers/Verdicts.h"

#include <csignal>

namespace vantora {

std::optional<Error> Verdicts::of(std::size_t document, const WorkerDeath& death)
{
    const std::string at = "the worker process that was at it ";
    if (death.timedOut) {
        return Error{Reason::TimedOut, {}, "it took longer than " + secondsText(timeout_)};
    }
    if (death.senseless) {
        return Error{Reason::Crashed, {}, at + "gave an answer that makes no sense"};
    }
    if (death.end.signal == 0 && !death.asked) {
        return Error{Reason::Crashed, {}, at + "ended: " + death.end.text()};
    }
    const ProcessEnd end = death.asked ? ProcessEnd{SIGTERM, 0} : death.end;
    if (!secondChance_) {
        return Error{
            end.isCrash() ? Reason::Crashed : Reason::Killed, {}, at + "ended: " + end.text()};
    }
    const auto [earlier, isFirst] = firstEnds_.emplace(document, end);
    if (isFirst) {
        return std::nullopt;
    }
    const bool crash = earlier->second.isCrash() || end.isCrash();
    return Error{crash ? Reason::Crashed : Reason::Killed,
                 {},
                 at + "ended: " + earlier->second.text() +
                     "; so did a fresh one that had nothing else: " + end.text()};
}

std::string memorySentence(std::uint64_t limit)
{
    return "it needs more memory than its worker may use, " + std::to_string(limit / 1000000) +
           " MB";
}

std::string secondsText(std::chrono::seconds time)
{
    return std::to_string(time.count()) + (time.count() == 1 ? " second" : " seconds");
}

} // namespace vantora
