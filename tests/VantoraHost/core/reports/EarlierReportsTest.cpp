#include "VantoraHost/core/reports/EarlierReports.h"
#include "VantoraHost/core/FileDigest.h"
#include "VantoraHost/core/reports/ReportFile.h"

#include "tests/VantoraHost/InOwnFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

// What a run believes of the one before it.
namespace {

namespace fs = std::filesystem;
using namespace vantora;
using testing::HasSubstr;

bool anyOutput(const std::string&)
{
    return true;
}

void setTime(const std::string& path, int secondsLater)
{
    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(secondsLater));
}

/// Writes another content and leaves the file's time as it was.
void writeAtTheSameTime(const std::string& path, const std::string& content)
{
    const auto time = fs::last_write_time(path);
    std::ofstream(path, std::ios::binary) << content;
    fs::last_write_time(path, time);
}

class EarlierRun : public InOwnFolder {
protected:
    EarlierRun()
    {
        scratch.write("in", "of six pages");
        scratch.write("out", "of five");
    }

    DocumentReport report(const std::string& input, const std::string& output) const
    {
        DocumentReport done;
        done.input = input;
        done.output = output;
        done.status = DocumentStatus::Done;
        done.bytesBefore = stateOf(input)->size;
        done.inputModified = stateOf(input)->changed;
        done.bytesAfter = stateOf(output)->size;
        done.outputModified = stateOf(output)->changed;
        return done;
    }

    static void write(const std::vector<DocumentReport>& reports, const RunIdentity& by)
    {
        auto file = ReportFile::open("report", ExistingReport::Replace);
        ASSERT_TRUE(file);
        for (const DocumentReport& one : reports) {
            file->add(one, by);
        }
        ASSERT_TRUE(file->sync());
    }

    void write(const std::vector<DocumentReport>& reports) const { write(reports, run); }

    static Result<EarlierReports> read(const RunIdentity& now)
    {
        return EarlierReports::read({"report"}, {inputNamed("in"), inputNamed("out")}, now);
    }

    const RunIdentity run = {"1.0", "digest", "[]", 1};
};

/// What happens between two runs, and what the second one makes of it.
struct Change {
    const char* name;
    void (*happens)(RunIdentity& now);
    SinceReport withHash;
    SinceReport withoutHash;
    SinceReport inPlace; ///< where the output took the input's place
};

class Changed : public EarlierRun, public testing::WithParamInterface<Change> {};

TEST_P(Changed, IsWhatIsDoneAgain)
{
    const auto since = [](const std::string& input, const RunIdentity& now) {
        const auto earlier = read(now);
        EXPECT_TRUE(earlier) << earlier.error().sentence;
        return earlier->since(input, anyOutput);
    };
    DocumentReport withHash = report("in", "out");
    withHash.inputSha256 = *sha256OfFile("in");
    const DocumentReport reports[] = {withHash, report("in", "out"), report("out", "out")};
    RunIdentity now = run;
    write({reports[0]});
    ASSERT_EQ(since("in", now), SinceReport::Same);
    GetParam().happens(now);
    EXPECT_EQ(since("in", now), GetParam().withHash);
    write({reports[1]});
    EXPECT_EQ(since("in", now), GetParam().withoutHash);
    write({reports[2]});
    EXPECT_EQ(since("out", now), GetParam().inPlace);
}

const std::vector<Change> changes = {
    {"nothing", [](RunIdentity&) {}, SinceReport::Same, SinceReport::Same, SinceReport::Same},
    {"another_start", [](RunIdentity& now) { now.started = 2; }, SinceReport::Same,
     SinceReport::Same, SinceReport::Same},
    {"the_inputs_size", [](RunIdentity&) { writeAtTheSameTime("in", "longer than it was"); },
     SinceReport::InputChanged, SinceReport::InputChanged, SinceReport::Same},
    {"the_inputs_time", [](RunIdentity&) { setTime("in", 7); }, SinceReport::InputChanged,
     SinceReport::InputChanged, SinceReport::Same},
    {"the_input_for_an_older_one", [](RunIdentity&) { setTime("in", -7); },
     SinceReport::InputChanged, SinceReport::InputChanged, SinceReport::Same},
    {"the_inputs_content_with_size_and_time_kept",
     [](RunIdentity&) { writeAtTheSameTime("in", "of 6! pages!"); }, SinceReport::InputChanged,
     SinceReport::Same, SinceReport::Same},
    {"the_input_for_a_folder",
     [](RunIdentity&) {
         fs::remove("in");
         fs::create_directory("in");
     },
     SinceReport::InputChanged, SinceReport::InputChanged, SinceReport::Same},
    {"the_steps", [](RunIdentity& now) { now.stepsDigest = "of others"; }, SinceReport::OtherSteps,
     SinceReport::OtherSteps, SinceReport::OtherSteps},
    {"that_losses_are_allowed", [](RunIdentity& now) { now.salvage = true; }, SinceReport::Same,
     SinceReport::Same, SinceReport::Same},
    {"the_version", [](RunIdentity& now) { now.version = "1.1"; }, SinceReport::OtherVersion,
     SinceReport::OtherVersion, SinceReport::Same},
    {"the_output_is_gone", [](RunIdentity&) { fs::remove("out"); }, SinceReport::OutputGone,
     SinceReport::OutputGone, SinceReport::InputChanged},
    {"the_outputs_size", [](RunIdentity&) { writeAtTheSameTime("out", "of five and more"); },
     SinceReport::OutputChanged, SinceReport::OutputChanged, SinceReport::InputChanged},
    {"the_outputs_time", [](RunIdentity&) { setTime("out", 7); }, SinceReport::OutputChanged,
     SinceReport::OutputChanged, SinceReport::InputChanged},
};

INSTANTIATE_TEST_SUITE_P(Changes, Changed, testing::ValuesIn(changes),
                         [](const auto& info) { return info.param.name; });

TEST_F(EarlierRun, ThatAllowedLossesDidWhatOthersWouldRefuse)
{
    RunIdentity salvaging = run;
    salvaging.salvage = true;
    write({report("in", "out")}, salvaging);
    EXPECT_EQ(read(run)->since("in", anyOutput), SinceReport::OtherSteps);
    EXPECT_EQ(read(salvaging)->since("in", anyOutput), SinceReport::Same);
}

TEST_F(EarlierRun, IsBelievedOnlyOfOutputsThatThisRunWouldWrite)
{
    write({report("in", "out")});
    const auto earlier = read(run);
    ASSERT_TRUE(earlier);
    EXPECT_EQ(earlier->since("in", [](const auto& named) { return named == "out"; }),
              SinceReport::Same);
    EXPECT_EQ(earlier->since("in", [](const auto&) { return false; }), SinceReport::OtherOutput);
}

TEST_F(EarlierRun, DidWhatItReplacedThoughItLaterCallsItFailed)
{
    DocumentReport failed;
    failed.input = "out";
    failed.error = Error{Reason::Crashed, "out", "it crashed"};
    write({report("out", "out"), failed});
    EXPECT_EQ(read(run)->since("out", anyOutput), SinceReport::Same);
    failed.input = "in";
    write({report("in", "out"), failed});
    EXPECT_EQ(read(run)->since("in", anyOutput), SinceReport::NotDone);
}

TEST_F(EarlierRun, MakesAnInputAnOutputOnlyWhereItIsAsItWasWritten)
{
    write({report("in", "./out")});
    EXPECT_TRUE(read(run)->namesOutput("out"));
    EXPECT_FALSE(read(run)->namesOutput("in"));
    scratch.write("out", "somebody's own by now");
    EXPECT_FALSE(read(run)->namesOutput("out"));
    scratch.write("out", "of five");
    write({report("out", "out")});
    EXPECT_FALSE(read(run)->namesOutput("out")) << "what is replaced in place is an input";
}

TEST_F(EarlierRun, ThatDidNotNoteWhatItDidIsRefused)
{
    scratch.write("report", toJson(report("in", "out")) + "\n");
    const auto earlier = read(run);
    ASSERT_FALSE(earlier);
    EXPECT_EQ(earlier.error().reason, Reason::ReportTooOld);
    EXPECT_THAT(earlier.error().sentence, HasSubstr("line 1 "));
}

// Lines as somebody may write them who wants a document to be left out.
TEST_F(EarlierRun, IsNotBelievedWhereItIsForgedCarelessly)
{
    const std::string line = toJson(report("in", "out"), run);
    const auto text = [](const FileState& state) { return "\"" + state.changed + "\""; };
    const std::pair<std::string, std::string> rows[] = {
        {text(*stateOf("in")), "\"\""},
        {text(*stateOf("in")), "null"},
        {text(*stateOf("out")), "null"},
        {"\"bytes_before\":12", "\"bytes_before\":-12"},
        {"\"bytes_before\":12", "\"bytes_before\":1e300"},
        {"\"bytes_after\":7", "\"bytes_after\":\"7\""},
        {"\"steps_sha256\":\"digest\"", "\"steps_sha256\":[]"},
        {"\"version\":\"1.0\"", "\"version\":1.0"},
    };
    for (const auto& [before, after] : rows) {
        scratch.write("report", support::replaced(line, before, after) + "\n");
        const auto earlier = read(run);
        ASSERT_TRUE(earlier) << after;
        EXPECT_NE(earlier->since("in", anyOutput), SinceReport::Same) << before << after;
    }
}

} // namespace
