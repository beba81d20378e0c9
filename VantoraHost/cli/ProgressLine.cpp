#include "VantoraHost/cli/ProgressLine.h"

#include "VantoraHost/cli/Messages.h"

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
