#include "VantoraHost/cli/run/ProgressLine.h"

#include "VantoraHost/core/Figures.h"

#include <ostream>

namespace vantora::cli {

namespace {

constexpr auto pause = std::chrono::milliseconds(100);
constexpr char eraseLine[] = "\r\033[K";

} // namespace

void ProgressLine::show(std::size_t finished, std::size_t failed, std::size_t total,
                        Clock::time_point now)
{
    if (!wanted_ || now < next_) {
        return;
    }
    next_ = now + pause;
    terminal_ << eraseLine
              << language_.text("%1 of %2 documents",
                                {language_.number(finished), language_.number(total)});
    if (failed > 0) {
        terminal_ << ", " << language_.text("%1 failed", {language_.number(failed)});
    }
    const double seconds = std::chrono::duration<double>(now - started_).count();
    if (seconds >= 1 && finished > 0) {
        const double left = seconds / static_cast<double>(finished);
        const double rest = left * static_cast<double>(total - finished);
        terminal_ << ", "
                  << language_.text("%1 a second, %2 left",
                                    {language_.figures(rateText(finished, seconds)),
                                     language_.figures(durationText(rest))});
    }
    terminal_ << std::flush;
    visible_ = true;
}

void ProgressLine::clear()
{
    if (visible_) {
        terminal_ << eraseLine << std::flush;
        visible_ = false;
        next_ = {};
    }
}

} // namespace vantora::cli
