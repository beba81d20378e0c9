#include "VantoraHost/core/reports/ReportFile.h"
#include "VantoraHost/core/reports/EarlierReports.h"

#include "tests/support/Inspect.h"
#include "tests/support/RefusedCall.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
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
            done += earlier->stillDone(input, anyOutput) ? input : "";
        }
        return done;
    }

    static bool anyOutput(const std::string&) { return true; }

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
    EXPECT_TRUE(EarlierReports::read({path})->stillDone(inPlace.input, anyOutput));
    scratch.write("out-a", "another");
    EXPECT_FALSE(EarlierReports::read({path})->stillDone(inPlace.input, anyOutput));
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
}

// Files that somebody may name for a report by mistake, or put in its place.
TEST_F(Reports, ThatAreNoneAreRefusedAndNotTouched)
{
    const std::string line = toJson(failedReport("a")) + "\n";
    const struct {
        const char* name;
        std::string content;
        const char* resuming; ///< what is said of it when a run is to go on with it
    } rows[] = {
        {"a document", "%PDF-1.7, by mistake", "line 1 is no report of a document"},
        {"the beginning of an object", "{", "line 1 is no report"},
        {"an object of another program", "{\"schema\":1}\n", "line 1 is no report"},
        {"an object of another version",
         R"({"schema":2,"input":"a","status":"done"})"
         "\n",
         "line 1 is no report"},
        {"a list of objects", "[" + line + "]\n", "line 1 is no report"},
        {"an object that only begins like one",
         R"({"schema":1,"input":"a","mine":7})"
         "\n",
         "line 1 is no report"},
        {"a report that something was added to", line + "and more\n", "line 2 is no report"},
        {"a report that ends in something else", line + "and more", "line 2 is no report"},
        {"an empty line", "\n", "line 1 is no report"},
    };
    for (const auto& row : rows) {
        scratch.write("report.jsonl", row.content);
        for (const auto existing : {ExistingReport::Replace, ExistingReport::Continue}) {
            const Outcome written = write({doneReport("a", "one")}, existing);
            ASSERT_FALSE(written) << row.name;
            EXPECT_EQ(written.error().reason, Reason::ReportMisplaced) << row.name;
            EXPECT_EQ(support::readFile(path), row.content) << row.name;
        }
        EXPECT_THAT(stillDone(), HasSubstr(row.resuming)) << row.name;
    }
}

TEST_F(Reports, AreNeitherPipesNorDevices)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); // nobody will ever write to it, or read
    for (const auto& place : {path, std::string("/dev/null")}) {
        const auto opened = ReportFile::open(place, ExistingReport::Replace);
        ASSERT_FALSE(opened) << place;
        EXPECT_EQ(opened.error().reason, Reason::ReportMisplaced);
        const auto read = EarlierReports::read({place});
        ASSERT_FALSE(read) << place;
        EXPECT_EQ(read.error().reason, Reason::NotAReport);
    }
}

TEST_F(Reports, AreBelievedOnlyOfOutputsThatThisRunWouldWrite)
{
    ASSERT_TRUE(write({doneReport("a", "one")}, ExistingReport::Refuse));
    const auto earlier = EarlierReports::read({path});
    ASSERT_TRUE(earlier);
    const std::string output = scratch.path("out-a");
    EXPECT_TRUE(earlier->stillDone("a", [&](const auto& named) { return named == output; }));
    EXPECT_FALSE(earlier->stillDone("a", [](const auto&) { return false; }));
}

TEST_F(Reports, AreNotForEverybodyToRead)
{
    const mode_t before = ::umask(022);
    ASSERT_TRUE(write({failedReport("a")}, ExistingReport::Refuse));
    ::umask(before);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
}

TEST_F(Reports, AreWrittenByOneRunAtATime)
{
    const auto first = ReportFile::open(path, ExistingReport::Refuse);
    ASSERT_TRUE(first);
    EXPECT_THAT(write({}, ExistingReport::Continue).error().sentence, HasSubstr("another run"));
}

TEST_F(Reports, SayThatTheDiskIsFull)
{
    support::inAnotherProcess([&] { // which may write no more than this
        auto full = ReportFile::open(path, ExistingReport::Continue);
        ASSERT_TRUE(full);
        full->add(failedReport("a"));
        const rlim_t size = fs::file_size(path);
        const struct rlimit limit = {size + 20, size + 20};
        std::signal(SIGXFSZ, SIG_IGN);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        full->add(failedReport("b"));
        full->add(failedReport("c"));
        EXPECT_THAT(full->sync().error().sentence, HasSubstr("File too large"));
    });
    EXPECT_EQ(support::readFile(path), toJson(failedReport("a")) + "\n") << "half a line?";
}

TEST_F(Reports, ThatAreNotThereCannotBeGoneOnWith)
{
    EXPECT_EQ(EarlierReports::read({scratch.path("none")}).error().reason, Reason::InputMissing);
    EXPECT_EQ(EarlierReports::read({scratch.path("")}).error().reason, Reason::InputUnreadable);
}

} // namespace
