#include "VantoraHost/core/reports/ReportFile.h"
#include "VantoraHost/core/reports/EarlierReports.h"

#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

// What one run writes for the next one.
namespace {

namespace fs = std::filesystem;
using namespace vantora;
using testing::HasSubstr;

class Reports : public testing::Test {
protected:
    DocumentReport doneReport(const std::string& input, const std::string& content) const
    {
        DocumentReport report;
        report.input = input;
        report.output = scratch.write("out-" + input, content);
        report.status = DocumentStatus::Done;
        report.bytesAfter = content.size();
        report.outputModified = stateOf(report.output)->changed;
        return report;
    }

    DocumentReport failedReport(const std::string& input) const
    {
        DocumentReport report;
        report.input = input;
        report.error = Error{Reason::NotPdf, input, "no PDF"};
        return report;
    }

    Outcome write(const std::vector<DocumentReport>& reports, ExistingReport existing) const
    {
        auto file = ReportFile::open(path, existing);
        if (!file) {
            return tl::unexpected<Error>(file.error());
        }
        for (const DocumentReport& report : reports) {
            file->add(report);
        }
        return file->sync();
    }

    /// Which of the inputs a to e are still done, by the report.
    std::string stillDone() const
    {
        const auto earlier = EarlierReports::read({path});
        if (!earlier) {
            return earlier.error().sentence;
        }
        std::string done;
        for (const char* input : {"a", "b", "c", "d", "e"}) {
            done += earlier->stillDone(input) ? input : "";
        }
        return done;
    }

    support::ScratchFolder scratch;
    const std::string path = scratch.path("report.jsonl");
};

TEST_F(Reports, SayWhatIsStillDone)
{
    DocumentReport planned = doneReport("e", "planned");
    planned.status = DocumentStatus::Planned;
    ASSERT_TRUE(write({doneReport("a", "one"), failedReport("b"), doneReport("c", "two"),
                       doneReport("d", "three"), planned},
                      ExistingReport::Refuse));
    EXPECT_EQ(stillDone(), "acd");
    fs::remove(scratch.path("out-a"));
    scratch.write("out-c", "longer");
    fs::last_write_time(scratch.path("out-d"), fs::file_time_type::clock::now());
    EXPECT_EQ(stillDone(), "");
}

TEST_F(Reports, CountTheLaterLine)
{
    ASSERT_TRUE(write({doneReport("a", "one"), failedReport("b")}, ExistingReport::Refuse));
    ASSERT_TRUE(write({failedReport("a"), doneReport("b", "two")}, ExistingReport::Continue));
    EXPECT_EQ(stillDone(), "b");
}

TEST_F(Reports, BelieveTheFileWhereItWasDoneInPlaceAndThenCalledFailed)
{
    DocumentReport inPlace = doneReport("a", "one");
    inPlace.input = inPlace.output;
    ASSERT_TRUE(write({inPlace, failedReport(inPlace.input)}, ExistingReport::Refuse));
    EXPECT_TRUE(EarlierReports::read({path})->stillDone(inPlace.input));
    scratch.write("out-a", "another");
    EXPECT_FALSE(EarlierReports::read({path})->stillDone(inPlace.input));
}

TEST_F(Reports, AreGoneOnWithAfterAnIncompleteLine)
{
    ASSERT_TRUE(write({doneReport("a", "one"), doneReport("b", "two")}, ExistingReport::Refuse));
    fs::resize_file(path, fs::file_size(path) - 20);
    EXPECT_EQ(stillDone(), "a");
    DocumentReport longOne = doneReport("c", "three");
    longOne.warnings.assign(500, "a line longer than what is read at once");
    ASSERT_TRUE(write({longOne}, ExistingReport::Continue));
    EXPECT_EQ(stillDone(), "ac");
    fs::resize_file(path, fs::file_size(path) - 1);
    ASSERT_TRUE(write({doneReport("d", "four")}, ExistingReport::Continue));
    EXPECT_EQ(stillDone(), "ad");
}

TEST_F(Reports, AreReplacedOnlyWhenAskedAndWhenTheyAreReports)
{
    ASSERT_TRUE(write({doneReport("a", "one")}, ExistingReport::Refuse));
    EXPECT_EQ(write({}, ExistingReport::Refuse).error().reason, Reason::ReportExists);
    EXPECT_EQ(stillDone(), "a");
    ASSERT_TRUE(write({doneReport("b", "two")}, ExistingReport::Replace));
    EXPECT_EQ(stillDone(), "b");

    scratch.write("report.jsonl", "%PDF-1.7, by mistake");
    for (const auto existing : {ExistingReport::Replace, ExistingReport::Continue}) {
        EXPECT_EQ(write({doneReport("a", "one")}, existing).error().reason, Reason::ReportExists);
    }
    EXPECT_EQ(support::readFile(path), "%PDF-1.7, by mistake");
    EXPECT_THAT(stillDone(), testing::AnyOf("", HasSubstr("line 1")));
}

TEST_F(Reports, AreWrittenByOneRunAtATime)
{
    const auto first = ReportFile::open(path, ExistingReport::Refuse);
    ASSERT_TRUE(first);
    EXPECT_THAT(write({}, ExistingReport::Continue).error().sentence, HasSubstr("another run"));
}

TEST_F(Reports, SayThatTheDiskIsFull)
{
    auto full = ReportFile::open("/dev/full", ExistingReport::Continue);
    ASSERT_TRUE(full);
    full->add(failedReport("a"));
    full->add(failedReport("b"));
    EXPECT_THAT(full->sync().error().sentence, HasSubstr("No space left"));
}

TEST_F(Reports, ThatAreNoneAreNotTakenForThem)
{
    scratch.write("report.jsonl", "{\"schema\":1}\n");
    EXPECT_THAT(stillDone(), HasSubstr("line 1"));
    EXPECT_EQ(EarlierReports::read({scratch.path("none")}).error().reason, Reason::InputMissing);
    EXPECT_EQ(EarlierReports::read({scratch.path("")}).error().reason, Reason::InputUnreadable);
}

} // namespace
