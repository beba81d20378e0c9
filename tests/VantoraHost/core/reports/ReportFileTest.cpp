#include "VantoraHost/core/reports/ReportFile.h"
#include "VantoraHost/core/reports/EarlierReports.h"

#include "tests/VantoraHost/InOwnFolder.h"
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

class Reports : public InOwnFolder {
protected:
    DocumentReport doneReport(const std::string& input, const std::string& content) const
    {
        DocumentReport report;
        report.input = input;
        report.output = "out-" + input;
        scratch.write(report.output, content);
        scratch.write(input, "what the output was made of");
        report.status = DocumentStatus::Done;
        report.bytesBefore = stateOf(input)->size;
        report.inputModified = stateOf(input)->changed;
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
            file->add(report, run);
        }
        return file->sync();
    }

    /// Which of the inputs a to e are still done, by the report.
    std::string stillDone() const
    {
        const auto earlier = read();
        if (!earlier) {
            return earlier.error().sentence;
        }
        std::string done;
        for (const char* input : {"a", "b", "c", "d", "e"}) {
            done += earlier->since(input, anyOutput) == SinceReport::Same ? input : "";
        }
        return done;
    }

    Result<EarlierReports> read() const
    {
        std::vector<Input> inputs;
        for (const char* input : {"a", "b", "c", "d", "e"}) {
            inputs.push_back(inputNamed(input));
        }
        return EarlierReports::read({path}, inputs, run);
    }

    static bool anyOutput(const std::string&) { return true; }

    const RunIdentity run = {"1.0", "digest", "[]", 1};
    const std::string path = scratch.path("report.jsonl");
};

TEST_F(Reports, CountTheLaterLine)
{
    ASSERT_TRUE(write({doneReport("a", "one"), failedReport("b")}, ExistingReport::Refuse));
    ASSERT_TRUE(write({failedReport("a"), doneReport("b", "two")}, ExistingReport::Continue));
    EXPECT_EQ(stillDone(), "b");
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
        const auto read = EarlierReports::read({place}, {}, run);
        ASSERT_FALSE(read) << place;
        EXPECT_EQ(read.error().reason, Reason::NotAReport);
    }
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
        full->add(failedReport("a"), run);
        const rlim_t size = fs::file_size(path);
        const struct rlimit limit = {size + 20, size + 20};
        std::signal(SIGXFSZ, SIG_IGN);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        full->add(failedReport("b"), run);
        full->add(failedReport("c"), run);
        EXPECT_THAT(full->sync().error().sentence, HasSubstr("File too large"));
    });
    EXPECT_EQ(support::readFile(path), toJson(failedReport("a"), run) + "\n") << "half a line?";
}

TEST_F(Reports, ThatAreNotThereCannotBeGoneOnWith)
{
    EXPECT_EQ(EarlierReports::read({"none"}, {}, run).error().reason, Reason::InputMissing);
    EXPECT_EQ(EarlierReports::read({"."}, {}, run).error().reason, Reason::InputUnreadable);
}

} // namespace
