#include "VantoraHost/cli/run/ProgressLine.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/run/RunSummary.h"

#include <ostream>

namespace vantora::cli {

namespace {

constexpr auto pause = std::chrono::milliseconds(100);
constexpr char eraseLine[] = "\r\033[K";

} // namespace

void ProgressLine::show(std::size_t finished, std::size_t failed, std::size_t total,
                        Clock::time_point now)
{
    if (!wanted || now < next) {
        return;
    }
    next = now + pause;
    terminal << eraseLine << grouped(finished) << " of " << grouped(total) << " documents";
    if (failed > 0) {
        terminal << ", " << grouped(failed) << " failed";
    }
    const double seconds = std::chrono::duration<double>(now - started).count();
    if (seconds >= 1 && finished > 0) {
        const double left = seconds / static_cast<double>(finished);
        terminal << ", " << rateText(finished, seconds) << " a second, "
                 << durationText(left * static_cast<double>(total - finished)) << " left";
    }
    terminal << std::flush;
    visible = true;
}

void ProgressLine::clear()
{
    if (visible) {
        terminal << eraseLine << std::flush;
        visible = false;
        next = {};
    }
}

} // namespace vantora::cli
