#include "VantoraHost/core/workers/ConfinedCall.h"

#include "tests/support/Inspect.h"

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace vantora;
using namespace std::chrono_literals;
using testing::HasSubstr;

bool never()
{
    return false;
}

std::string forEver()
{
    for (;;) {
        ::pause();
    }
}

TEST(ConfinedCall, AnswersWithWhatWasFoundOut)
{
    const support::ScratchFolder scratch;
    const std::string input = scratch.write("in", "what the file holds");
    CallLimits limits;
    limits.files.readable = {input};
    const std::string longText(300000, 'x'); // more than a pipe holds
    const auto answer =
        callConfined(limits, never, [&] { return support::readFile(input) + longText; });
    ASSERT_TRUE(answer) << answer.error().sentence;
    EXPECT_EQ(*answer, "what the file holds" + longText);
}

TEST(ConfinedCall, ChangesNothingOutside)
{
    const support::ScratchFolder scratch;
    const std::string input = scratch.write("in", "as it was");
    const int open = ::open(input.c_str(), O_RDWR | O_CLOEXEC);
    CallLimits limits;
    limits.files.readable = {input};
    int variable = 1;
    const auto answer = callConfined(limits, never, [&] {
        variable = 2;
        std::string reached;
        reached += ::write(open, "!", 1) == 1 ? " the run's open file" : "";
        reached += ::open(input.c_str(), O_WRONLY) >= 0 ? " its input" : "";
        reached +=
            ::open(scratch.path("new").c_str(), O_WRONLY | O_CREAT, 0666) >= 0 ? " a new file" : "";
        return "reached:" + reached;
    });
    ::close(open);
    ASSERT_TRUE(answer) << answer.error().sentence;
    EXPECT_EQ(*answer, "reached:");
    EXPECT_EQ(variable, 1);
    EXPECT_EQ(support::readFile(input), "as it was");
}

TEST(ConfinedCall, CostsNoMoreThanItsDocument)
{
    const struct {
        const char* name;
        std::function<std::string()> work;
        std::chrono::seconds time;
        Reason reason;
        const char* says;
    } rows[] = {
        {"it crashes",
         [] {
             std::abort();
             return std::string();
         },
         0s, Reason::Crashed, "ended: Aborted"},
        {"it leaves",
         [] {
             std::_Exit(7);
             return std::string();
         },
         0s, Reason::Crashed, "ended: exit status 7"},
        {"it takes too long", forEver, 1s, Reason::TimedOut, "it took longer than 1 second"},
#ifndef VANTORA_SANITIZED // with which a copy of the process is refused, and memory not bounded
        {"it starts a process", [] { return std::to_string(::fork()); }, 0s, Reason::Crashed,
         "ended: Bad system call"},
        {"it eats memory",
         [] {
             std::vector<std::vector<char>> eaten;
             for (;;) {
                 eaten.emplace_back(1 << 20, 'x');
             }
             return std::string();
         },
         0s, Reason::OutOfMemory, "it needs more memory than its worker may use, 200 MB"},
#endif
    };
    for (const auto& row : rows) {
        CallLimits limits;
        limits.time = row.time;
        limits.memory = 200'000'000;
        const auto answer = callConfined(limits, never, row.work);
        ASSERT_FALSE(answer) << row.name;
        EXPECT_EQ(answer.error().reason, row.reason) << row.name;
        EXPECT_THAT(answer.error().sentence, HasSubstr(row.says)) << row.name;
    }
}

TEST(ConfinedCall, EndsWhenItIsCancelled)
{
    int asked = 0;
    const auto answer = callConfined(
        {}, [&] { return ++asked == 2; }, forEver);
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error().reason, Reason::Interrupted);
}

TEST(ConfinedCalls, AreHandedOverInTheirOrderWhicheverEndsFirst)
{
    const support::ScratchFolder scratch;
    constexpr std::size_t count = 9;
    const std::string flag = scratch.path("flag");
    ConfinedWork calls;
    calls.count = count;
    calls.limits.files = {{scratch.path("")}, {scratch.path("")}};
    // The first one ends after the second one only, and one of them never does.
    calls.work = [&](std::size_t i, std::size_t) -> std::string {
        if (i == 1) {
            ::close(::open(flag.c_str(), O_WRONLY | O_CREAT, 0600));
        }
        while (i == 0 && ::access(flag.c_str(), F_OK) != 0) {
            ::usleep(1000);
        }
        if (i == 4) {
            std::abort();
        }
        return std::to_string(i);
    };
    std::string received;
    EXPECT_TRUE(callEachConfined(calls, 2, never, [&](std::size_t i, PieceAnswers answers) {
        EXPECT_EQ(answers.has_value(), i != 4) << i;
        received += std::to_string(i) + (answers ? answers->at(0) : "!");
    }));
    EXPECT_EQ(received, "001122334!55667788");
}

TEST(ConfinedCalls, AreSharedInAsManyPartsAsTheFirstOneAsksFor)
{
    const struct {
        const char* first; ///< answers of the first parts, which say how many parts follow
        std::size_t atOnce;
        std::optional<std::pair<std::size_t, std::size_t>> failing; ///< piece and part
        const char* received;
    } rows[] = {
        {"03", 1, {}, "0:0; 1:3,1.1,1.2,1.3; "},     {"31", 2, {}, "0:3,0.1,0.2,0.3; 1:1,1.1; "},
        {"31", 5, {}, "0:3,0.1,0.2,0.3; 1:1,1.1; "}, {"31", 2, {{0, 0}}, "0!; 1:1,1.1; "},
        {"31", 2, {{0, 2}}, "0!; 1:1,1.1; "},        {"31", 5, {{1, 1}}, "0:3,0.1,0.2,0.3; 1!; "},
    };
    for (const auto& row : rows) {
        ConfinedWork calls;
        calls.count = 2;
        calls.work = [&](std::size_t piece, std::size_t part) {
            if (row.failing == std::pair(piece, part)) {
                std::abort();
            }
            return part == 0 ? std::string(1, row.first[piece])
                             : std::to_string(piece) + "." + std::to_string(part);
        };
        calls.furtherParts = [](std::size_t, const std::string& first) {
            return static_cast<std::size_t>(std::stoul(first));
        };
        std::string received;
        EXPECT_TRUE(
            callEachConfined(calls, row.atOnce, never, [&](std::size_t i, PieceAnswers answers) {
                received += std::to_string(i) + (answers ? ":" : "!");
                for (std::size_t part = 0; answers && part < answers->size(); ++part) {
                    received += (part > 0 ? "," : "") + (*answers)[part];
                }
                received += "; ";
            }));
        EXPECT_EQ(received, row.received);
    }
}

TEST(ConfinedCalls, ThatShareACopyLoseNoneOfTheirAnswersWithIt)
{
    const struct {
        const char* name;
        std::size_t failing; ///< a piece, which ends its copy
        bool onlyAtFirst;    ///< whether it does the second time what it should
        const char* received;
    } rows[] = {
        {"none fails", 7, false, "0123456"},
        {"the first of a copy", 3, false, "012!456"},
        {"one in the middle", 1, false, "0!23456"},
        {"the last of a copy", 5, false, "01234!6"},
        {"one alone in its copy", 6, false, "012345!"},
        {"one that does it the second time", 4, true, "0123456"},
    };
    for (const auto& row : rows) {
        const support::ScratchFolder scratch;
        const std::string flag = scratch.path("flag");
        ConfinedWork calls;
        calls.count = 7;
        calls.limits.files = {{scratch.path("")}, {scratch.path("")}};
        calls.together = [](std::size_t) { return 3; };
        calls.work = [&](std::size_t i, std::size_t) {
            const bool first = i != row.failing || ::access(flag.c_str(), F_OK) != 0;
            if (i == row.failing && (first || !row.onlyAtFirst)) {
                ::close(::open(flag.c_str(), O_WRONLY | O_CREAT, 0600));
                std::abort();
            }
            return std::to_string(i) + " " + std::to_string(::getpid());
        };
        std::string received;
        std::set<std::string> copies;
        EXPECT_TRUE(callEachConfined(calls, 2, never, [&](std::size_t, PieceAnswers answers) {
            received += answers ? answers->at(0).substr(0, 1) : "!";
            copies.insert(answers ? answers->at(0).substr(2) : "");
        }));
        EXPECT_EQ(received, row.received) << row.name;
        if (row.failing == calls.count) {
            EXPECT_EQ(copies.size(), 3U) << row.name;
        }
    }
}

TEST(ConfinedCalls, AreGivenUpWhenThePersonDoesNotWantToWait)
{
    ConfinedWork calls;
    calls.count = 5;
    calls.work = [](std::size_t i, std::size_t) {
        return i == 0 ? std::string("first") : forEver();
    };
    std::size_t received = 0;
    EXPECT_FALSE(callEachConfined(
        calls, 2, [&] { return received > 0; },
        [&](std::size_t, const PieceAnswers&) { ++received; }));
    EXPECT_EQ(received, 1U);
}

} // namespace
