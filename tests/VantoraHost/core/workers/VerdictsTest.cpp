#include "VantoraHost/core/workers/Verdicts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <vector>

namespace {

using namespace vantora;
using namespace std::chrono_literals;

WorkerDeath endedBy(int signal)
{
    return {{signal, 0}};
}

WorkerDeath askedToEnd()
{
    WorkerDeath death;
    death.asked = true;
    return death;
}

WorkerDeath endedItself(int status)
{
    return {{0, status}};
}

WorkerDeath endedForTime()
{
    WorkerDeath death = endedBy(SIGKILL);
    death.timedOut = true;
    return death;
}

TEST(Verdicts, GiveADocumentASecondChanceWhereASignalEndedItsWorker)
{
    const struct {
        const char* title;
        std::vector<WorkerDeath> deaths;
        Reason reason;
        const char* words;
    } rows[] = {
        {"two crashes", {endedBy(SIGSEGV), endedBy(SIGABRT)}, Reason::Crashed, "Aborted"},
        {"killed twice", {endedBy(SIGKILL), endedBy(SIGKILL)}, Reason::Killed, "Killed; so did"},
        {"a crash, then killed", {endedBy(SIGSEGV), endedBy(SIGKILL)}, Reason::Crashed, "fault; "},
        {"asked to end twice", {askedToEnd(), askedToEnd()}, Reason::Killed, "Terminated"},
        {"killed, then too slow", {endedBy(SIGKILL), endedForTime()}, Reason::TimedOut, "2 sec"},
        {"too slow at once", {endedForTime()}, Reason::TimedOut, "it took longer than 2 seconds"},
        {"its own end at once", {endedItself(3)}, Reason::Crashed, "exit status 3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        Verdicts verdicts(2s);
        for (std::size_t i = 0; i + 1 < row.deaths.size(); ++i) {
            EXPECT_FALSE(verdicts.of(7, row.deaths[i]));
        }
        EXPECT_FALSE(verdicts.of(8, endedBy(SIGKILL))) << "another document's chance is its own";
        const auto error = verdicts.of(7, row.deaths.back());
        ASSERT_TRUE(error);
        EXPECT_EQ(error->reason, row.reason);
        EXPECT_THAT(error->sentence, testing::HasSubstr(row.words));
    }
}

} // namespace
