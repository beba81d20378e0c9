#include "VantoraHost/cli/run/ProgressLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using vantora::cli::ProgressLine;
using namespace std::chrono_literals;

const ProgressLine::Clock::time_point start{1h};

TEST(Progress, ShowsCountsAndLeavesNothingBehind)
{
    std::ostringstream terminal;
    {
        ProgressLine line(terminal, true, start);
        line.show(1, 0, 1200, start + 1ms);
        line.show(1100, 3, 1200, start + 2s);
        line.show(1101, 3, 1500000, start + 100s);
    }
    EXPECT_EQ(terminal.str(), "\r\033[K1 of 1,200 documents"
                              "\r\033[K1,100 of 1,200 documents, 3 failed, 550 a second, 1 s left"
                              "\r\033[K1,101 of 1,500,000 documents, 3 failed, 11 a second, "
                              "37 h 49 min left"
                              "\r\033[K");
}

TEST(Progress, IsNotRewrittenMoreOftenThanAnEyeFollows)
{
    std::ostringstream terminal;
    ProgressLine line(terminal, true, start);
    line.show(1, 0, 9, start);
    line.show(2, 0, 9, start + 20ms);
    line.show(3, 0, 9, start + 150ms);
    EXPECT_EQ(terminal.str(), "\r\033[K1 of 9 documents\r\033[K3 of 9 documents");
}

TEST(Progress, ComesBackAtOnceAfterOtherLines)
{
    std::ostringstream terminal;
    ProgressLine line(terminal, true, start);
    line.show(1, 0, 9, start);
    line.clear();
    line.show(2, 0, 9, start + 1ms);
    EXPECT_THAT(terminal.str(), testing::EndsWith("2 of 9 documents"));
}

} // namespace
