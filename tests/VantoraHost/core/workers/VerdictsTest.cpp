#include "VantoraHost/core/workers/Verdicts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <vector>

namespace {

using namespace vantora;
using namespace std::chrono_literals;

const WorkerDeath crashed{{SIGSEGV, 0}};
const WorkerDeath aborted{{SIGABRT, 0}};
const WorkerDeath killed{{SIGKILL, 0}};
const WorkerDeath tooSlow{{SIGKILL, 0}, true};
const WorkerDeath askedToEnd{{}, false, false, true};
const WorkerDeath exitStatus3{{0, 3}};

TEST(Verdicts, GiveADocumentASecondChanceWhereASignalEndedItsWorker)
{
    const struct {
        const char* title;
        std::vector<WorkerDeath> deaths;
        Reason reason;
        const char* words;
    } rows[] = {
        {"two crashes", {crashed, aborted}, Reason::Crashed, "Aborted"},
        {"killed twice", {killed, killed}, Reason::Killed, "Killed; so did"},
        {"a crash, then killed", {crashed, killed}, Reason::Crashed, "fault; "},
        {"asked to end twice", {askedToEnd, askedToEnd}, Reason::Killed, "Terminated"},
        {"killed, then too slow", {killed, tooSlow}, Reason::TimedOut, "2 sec"},
        {"too slow at once", {tooSlow}, Reason::TimedOut, "it took longer than 2 seconds"},
        {"its own end at once", {exitStatus3}, Reason::Crashed, "exit status 3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        Verdicts verdicts(2s);
        for (std::size_t i = 0; i + 1 < row.deaths.size(); ++i) {
            EXPECT_FALSE(verdicts.of(7, row.deaths[i]));
        }
        EXPECT_FALSE(verdicts.of(8, killed)) << "another document's chance is its own";
        const auto error = verdicts.of(7, row.deaths.back());
        ASSERT_TRUE(error);
        EXPECT_EQ(error->reason, row.reason);
        EXPECT_THAT(error->sentence, testing::HasSubstr(row.words));
    }
}

TEST(Verdicts, AreFinalWhereThereIsNoSecondChance)
{
    Verdicts verdicts(2s, false);
    EXPECT_EQ(verdicts.of(7, crashed)->reason, Reason::Crashed);
    EXPECT_EQ(verdicts.of(8, killed)->reason, Reason::Killed);
}

} // namespace
