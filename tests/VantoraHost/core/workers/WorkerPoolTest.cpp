#include "VantoraHost/core/workers/WorkerPool.h"

#include "VantoraHost/core/workers/CrewMember.h"
#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>

// How a run takes workers that don't do what they should; fake_worker.cpp stands in for them.
namespace {

namespace fs = std::filesystem;
using namespace vantora;
using namespace std::chrono_literals;
using testing::HasSubstr;

class Listener : public RunObserver {
public:
    void outputsGetNames(const std::vector<DocumentReport>& written) override
    {
        for (const DocumentReport& report : written) {
            EXPECT_FALSE(fs::exists(report.output)) << "it has its name already";
            reportedFirst.push_back(report.input);
        }
    }
    void documentArrived(const DocumentReport&) override {}
    void documentInTurn(const DocumentReport& report) override { reports[report.input] = report; }
    bool cancelled() const override
    {
        if (fs::exists(waiting)) {
            time += 1h;
        }
        return false;
    }

    /// Whether a worker does nothing any more, as a file says that it makes; hours pass then, and
    /// no moment else.
    std::string waiting;
    mutable std::chrono::steady_clock::time_point time{};
    std::map<std::string, DocumentReport> reports;
    std::vector<std::string> reportedFirst;
};

class RunWithABadWorker : public testing::Test {
protected:
    Result<BatchResult> run(const char* how, std::size_t documents = 2)
    {
        ::setenv("FAKE_WORKER", how, 1);
        ::setenv("FAKE_WORKER_WAITS", scratch.path("waits").c_str(), 1);
        listener.waiting = scratch.path("waits");
        WorkerSettings settings;
        settings.program = FAKE_WORKER_PROGRAM;
        settings.timeout = 1min;
        settings.timeToBegin = timeToBegin;
        settings.begin = begin;
        settings.now = [this] { return listener.time; };
        batch.inputs.clear();
        batch.targets.clear();
        // A worker gets a quarter of what is to be done at a time.
        for (std::size_t i = 0; i < documents * 4; ++i) {
            const std::string number = std::to_string(i);
            Target target;
            target.name = target.path = outputOf(i);
            batch.inputs.push_back(scratch.write("in" + number + ".pdf", ""));
            fs::resize_file(batch.inputs.back(), size); // small ones come eight or more at a time
            batch.targets.emplace_back(target);
        }
        return runInWorkers(batch, settings, listener);
    }

    /// The end of a run that goes on whatever its worker does.
    BatchResult endOf(const char* how, std::size_t documents = 2)
    {
        const auto result = run(how, documents);
        EXPECT_TRUE(result) << result.error().sentence;
        return result.value_or(BatchResult());
    }

    void expectAllDoneThough(const char* how, std::size_t documents = 2)
    {
        const BatchResult result = endOf(how, documents);
        EXPECT_EQ(result.finished, batch.inputs.size());
        EXPECT_EQ(result.failed, 0U);
    }

    std::string outputOf(std::size_t number) const
    {
        return scratch.path("out" + std::to_string(number) + ".pdf");
    }

    const DocumentReport& reportOf(std::size_t number)
    {
        return listener.reports[batch.inputs[number]];
    }

    std::uintmax_t size = 3'000'000; ///< of each document
    std::chrono::seconds timeToBegin = std::chrono::hours(1000000);
    std::function<Outcome()> begin = [] { return Outcome(); };
    support::ScratchFolder scratch;
    Batch batch;
    Listener listener;
};

TEST_F(RunWithABadWorker, EndsSoonWhenItNeverBegins)
{
    const char* const late = "worker processes don't begin within 1 second";
    const char* const nonsense = "worker processes answer with what makes no sense";
    const std::pair<const char*, const char*> rows[] = {
        {"sleeps", late},
        {"leaves a process that holds its answers", late},
        {"prints garbage", nonsense},
        {"prints without an end", nonsense},
    };
    timeToBegin = 1s;
    for (const auto& [how, says] : rows) {
        SCOPED_TRACE(how);
        const auto result = run(how);
        fs::remove(listener.waiting);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().sentence, says);
        EXPECT_TRUE(listener.reports.empty());
    }
}

TEST_F(RunWithABadWorker, IsOverBeforeAnyDocumentWhereItCannotBegin)
{
    begin = [] { return Outcome(fail(Reason::ActionFailed, {}, "an action has no time")); };
    const auto result = run("dies after it gave names");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().sentence, "an action has no time");
    EXPECT_TRUE(listener.reports.empty());
    EXPECT_FALSE(fs::exists(outputOf(0)));
}

TEST_F(RunWithABadWorker, KnowsWhichOutputsAreFinishedWhenItDiesOverItsReport)
{
    expectAllDoneThough("dies after it gave names");
    for (std::size_t i = 0; i < batch.inputs.size(); ++i) {
        EXPECT_EQ(reportOf(i).status, DocumentStatus::Done);
        EXPECT_EQ(reportOf(i).pagesAfter, 1);
        EXPECT_EQ(support::readFile(outputOf(i)), "the output of " + batch.inputs[i]);
    }
}

TEST_F(RunWithABadWorker, KnowsItAlsoWhenItHasToEndIt)
{
    expectAllDoneThough("hangs after it gave names", 1);
    EXPECT_EQ(reportOf(0).status, DocumentStatus::Done);
}

TEST_F(RunWithABadWorker, TakesAnOldFileForNoOutput)
{
    scratch.write("out0.pdf", "an older file");
    const BatchResult result = endOf("dies before it gives names", 1);
    EXPECT_EQ(result.failed, batch.inputs.size());
    ASSERT_TRUE(reportOf(0).error);
    EXPECT_EQ(reportOf(0).error->reason, Reason::Killed);
    EXPECT_EQ(
        reportOf(0).error->sentence,
        "the worker process that was at it ended: Killed; so did a fresh one that had nothing "
        "else: Killed");
    EXPECT_EQ(support::readFile(outputOf(0)), "an older file");
}

TEST_F(RunWithABadWorker, DoesWhatWasLeftWhenItDiesBetweenTwoOutputs)
{
    expectAllDoneThough("dies between two names");
}

TEST_F(RunWithABadWorker, GoesOnWhenSomeAreKilledBeforeTheyAreReady)
{
    ::setenv("FAKE_WORKER_STARTS", scratch.path("starts").c_str(), 1);
    expectAllDoneThough("dies after its first document and while it begins");
    EXPECT_EQ(support::readFile(scratch.path("starts")).size(), 8U);
}

TEST_F(RunWithABadWorker, GoesOnWithWhatItHadGotAhead)
{
    ::setenv("FAKE_WORKER_STARTS", scratch.path("starts").c_str(), 1);
    size = 1;
    expectAllDoneThough("dies after its first document and while it begins", 100);
    EXPECT_EQ(support::readFile(scratch.path("starts")).size(), 8U);
}

TEST(Workers, AreAtADocumentOfTheirNextGroupWhenTheOneBeforeHasItsNames)
{
    CrewMember member;
    const auto write = [&](std::size_t document) {
        ASSERT_TRUE(member.isAt(document));
        member.documents.pop_front();
        member.written.emplace(document, WorkerWritten());
        member.noteEndOfGroup();
    };
    member.give({1, 2});
    member.give({3, 4});
    EXPECT_EQ(member.current(), 1U);
    write(1);
    EXPECT_EQ(member.current(), 2U);
    write(2);
    EXPECT_EQ(member.current(), 1U) << "gets its name";
    EXPECT_THAT(member.lost(), testing::ElementsAre(1, 2, 3, 4));
    member.written.clear();
    EXPECT_EQ(member.current(), std::nullopt) << "they have their names, and it hasn't said so";
    EXPECT_THAT(member.lost(), testing::ElementsAre(3, 4));
    member.noteEndOfGroup();
    EXPECT_EQ(member.current(), 3U);
}

TEST_F(RunWithABadWorker, HearsOfOutputsBeforeTheyGetTheirNames)
{
    batch.settings.reportFirst = true;
    expectAllDoneThough("asks for leave to give names");
    EXPECT_THAT(listener.reportedFirst, testing::UnorderedElementsAreArray(batch.inputs));
}

TEST_F(RunWithABadWorker, GivesNoLeaveThatNobodyNeeds)
{
    const BatchResult result = endOf("asks for leave to give names", 1);
    EXPECT_EQ(result.failed, batch.inputs.size());
    EXPECT_TRUE(listener.reportedFirst.empty());
}

TEST_F(RunWithABadWorker, BelievesNoReportOfADocumentThatItWasNotGiven)
{
    // The output of the first is there, so that it is done, whatever else was said.
    expectAllDoneThough("names what it was not given", 1);
}

} // namespace
