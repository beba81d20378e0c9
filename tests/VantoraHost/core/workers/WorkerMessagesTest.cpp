#include "VantoraHost/core/workers/WorkerMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;

std::optional<PreferencesMap> sameOptions(const QByteArray& bytes)
{
    return PreferencesMap{{"bytes", bytes}};
}

TEST(WorkerSetup, ArrivesAsItWasSent)
{
    WorkerSetup setup;
    setup.library = "/lib/caf\xe9.dylib";
    setup.actionFolders = {"/a", "/b"};
    setup.steps = {{"Delete Pages", {{"byPageRangeTextEdit", "1,\"2\"\n"}, {"x", "y"}}},
                   {"Other", {}, {{"colour", 7}}, "list.xqq"}};
    setup.job.passwords = {"pass\xffword", "ü"};
    setup.job.keepSigned = setup.job.reportFirst = true;
    setup.job.strict = setup.job.hashInputs = setup.job.hashOutputs = setup.job.salvage = true;
    setup.job.ifEmpty = IfEmpty::Skip;
    setup.job.verifier = "/lib/veri\xe9.so";
    setup.job.judged = {{"1 2 3 4", 9, "2,7", {3, 5}}, {}};
    setup.memoryLimit = 1ULL << 40;
    setup.wholeRun = true;
    setup.files = {{"in/caf\xe9.pdf", "b.pdf"}, {"out"}};
    const std::string message = setupMessage(setup);
    EXPECT_EQ(message.find('\n'), std::string::npos);

    const auto got = setupOf(message, sameOptions);
    ASSERT_TRUE(got) << got.error().sentence;
    EXPECT_EQ(got->library, setup.library);
    EXPECT_EQ(got->actionFolders, setup.actionFolders);
    ASSERT_EQ(got->steps.size(), 2U);
    EXPECT_EQ(got->steps[0].options, setup.steps[0].options);
    EXPECT_TRUE(got->steps[0].stored.isEmpty());
    EXPECT_EQ(got->steps[1].file, "list.xqq");
    EXPECT_FALSE(got->steps[1].stored["bytes"].toByteArray().isEmpty());
    EXPECT_EQ(got->job.passwords, setup.job.passwords);
    EXPECT_TRUE(got->job.keepSigned && got->job.reportFirst && !got->job.dryRun);
    EXPECT_TRUE(got->job.strict && got->job.hashInputs && got->job.hashOutputs && got->job.salvage);
    EXPECT_EQ(got->job.ifEmpty, IfEmpty::Skip);
    EXPECT_EQ(got->job.verifier, setup.job.verifier);
    ASSERT_EQ(got->job.judged.size(), 2U);
    EXPECT_EQ(got->job.judged[0].version, "1 2 3 4");
    EXPECT_EQ(got->job.judged[0].pages, 9);
    EXPECT_EQ(got->job.judged[0].range, "2,7");
    EXPECT_EQ(got->job.judged[0].unreadable, (std::set<int>{3, 5}));
    EXPECT_EQ(got->memoryLimit, setup.memoryLimit);
    EXPECT_TRUE(got->wholeRun);
    EXPECT_EQ(got->files, setup.files);
}

TEST(WorkerSetup, IsRefusedWhenItIsNoneOrOfAnotherVersion)
{
    const auto nothing = [](const QByteArray&) { return std::optional<PreferencesMap>(); };
    std::string later = setupMessage({});
    const std::string version = "\"version\":" + std::to_string(workerProtocol);
    later.replace(later.find(version), version.size(), "\"version\":99");
    for (const std::string& line :
         {std::string(), std::string("{}"), std::string("[1]"), later,
          "{" + version + R"(,"steps":[{"action":"A","stored":"AAAA"}]})"}) {
        EXPECT_FALSE(setupOf(line, nothing)) << line;
    }
}

TEST(WorkerTasks, ArriveAsTheyWereSent)
{
    Target plain;
    plain.name = plain.path = "out/caf\xe9.pdf";
    Target replaced;
    replaced.name = "link.pdf";
    replaced.path = "/real.pdf";
    replaced.backup = "/real.pdf.bak";
    replaced.inPlace = true;
    replaced.below = 1;
    replaced.root = FileIdentity{7, 18'446'744'073'709'551'615U};
    replaced.replaced = FileVersion{7, 9'007'199'254'740'993, 5'000'000'000, -1};
    replaced.input = FileVersion{8, 11, 42, 1'700'000'000'000'000'001};
    const auto got =
        tasksOf(tasksMessage({{7, "a\n.pdf", plain}, {5'000'000'000, "b.pdf", replaced, "1,4-6"}}));
    ASSERT_TRUE(got);
    ASSERT_EQ(got->size(), 2U);
    EXPECT_EQ(got->front().number, 7U);
    EXPECT_EQ(got->front().input, "a\n.pdf");
    EXPECT_EQ(got->front().target.path, plain.path);
    EXPECT_FALSE(got->front().range);
    EXPECT_EQ(got->back().range, "1,4-6");
    EXPECT_FALSE(got->front().target.inPlace || got->front().target.root ||
                 got->front().target.replaced || got->front().target.input);
    EXPECT_EQ(got->front().target.below, std::string::npos);
    EXPECT_EQ(got->back().number, 5'000'000'000U);
    EXPECT_EQ(got->back().target.name, "link.pdf");
    EXPECT_EQ(got->back().target.path, "/real.pdf");
    EXPECT_EQ(got->back().target.backup, "/real.pdf.bak");
    EXPECT_TRUE(got->back().target.inPlace);
    EXPECT_EQ(got->back().target.below, 1U);
    EXPECT_TRUE(got->back().target.root == replaced.root);
    EXPECT_TRUE(got->back().target.replaced == replaced.replaced);
    EXPECT_TRUE(got->back().target.input == replaced.input);
}

TEST(WorkerTasks, AreNothingWhenTheyMakeNoSense)
{
    for (const char* line :
         {"", "[]", "{}", R"({"documents":1})", R"({"documents":[7]})",
          R"({"documents":[{"input":"a"}]})", R"({"documents":[{"number":"7","input":"a"}]})",
          R"({"documents":[{"number":7,"input":"a"},{"number":-8,"input":"b"}]})"}) {
        EXPECT_FALSE(tasksOf(line)) << line;
    }
}

TEST(WorkerAnswers, ArriveAsTheyWereSent)
{
    EXPECT_TRUE(std::holds_alternative<WorkerReady>(*answerOf(answerMessage(WorkerReady{}))));
    EXPECT_FALSE(std::get<WorkerEnd>(*answerOf(answerMessage(WorkerEnd{}))).complaint);
    const Error error{Reason::ActionFailed, "f", "it broke"};
    const auto end = answerOf(answerMessage(WorkerEnd{error}));
    EXPECT_EQ(std::get<WorkerEnd>(*end).complaint->sentence, "it broke");
    const auto refusal = answerOf(answerMessage(WorkerRefusal{error}));
    EXPECT_EQ(std::get<WorkerRefusal>(*refusal).error.reason, Reason::ActionFailed);
    EXPECT_EQ(std::get<WorkerRefusal>(*refusal).error.file, "f");
}

TEST(WorkerAnswers, HoldWholeReports)
{
    DocumentReport report;
    report.input = "a.pdf";
    report.output = "caf\xe9.pdf";
    report.status = DocumentStatus::Done;
    report.pagesBefore = 10;
    report.pagesAfter = 8;
    report.pagesRemoved = {9, 10};
    report.bytesBefore = 5'000'000'000;
    report.bytesAfter = 4'000'000'000;
    report.inputModified = "1600000000123456789";
    report.inputSha256 = "ab";
    report.outputModified = "1700000000123456789";
    report.outputExisted = report.inPart = report.leftBlank = true;
    report.warnings = {"ouch"};
    report.repairs = {"the table"};
    report.losses = {{3, "gone"}, {7, "gone, too"}};
    report.leftToJudge = {"a file"};
    const auto got = answerOf(answerMessage(WorkerReport{12, report}));
    ASSERT_TRUE(got);
    EXPECT_EQ(std::get<WorkerReport>(*got).number, 12U);
    EXPECT_EQ(toJson(std::get<WorkerReport>(*got).report), toJson(report));
    EXPECT_THAT(std::get<WorkerReport>(*got).report.repairs, ElementsAre("the table"));
    EXPECT_EQ(std::get<WorkerReport>(*got).report.losses.at(1).page, 7);

    report.status = DocumentStatus::Failed;
    report.error = {Reason::NotPdf, "a.pdf", "no PDF"};
    const auto failed = answerOf(answerMessage(WorkerReport{0, report}));
    EXPECT_EQ(std::get<WorkerReport>(*failed).report.error->reason, Reason::NotPdf);
}

TEST(WorkerAnswers, TellNothingFromWhatIsNotKnown)
{
    DocumentReport unknown;
    unknown.input = "a \"b\".pdf";
    DocumentReport nothing = unknown;
    nothing.outputExisted = false;
    nothing.pagesRemoved.emplace();
    nothing.pagesBefore = 0;
    nothing.bytesAfter = 0;
    nothing.range = "";
    for (const DocumentReport& report : {unknown, nothing}) {
        const auto got = answerOf(answerMessage(WorkerReport{1, report}));
        ASSERT_TRUE(got);
        EXPECT_EQ(toJson(std::get<WorkerReport>(*got).report), toJson(report));
    }
}

TEST(WorkerAnswers, TellWhichFileIsAboutToGetItsName)
{
    DocumentReport report;
    report.input = "a.pdf";
    report.status = DocumentStatus::Done;
    const FileIdentity output = {66305, 18'446'744'073'709'551'615U};
    const auto got = answerOf(answerMessage(WorkerWritten{3, report, output}));
    ASSERT_TRUE(got);
    EXPECT_EQ(std::get<WorkerWritten>(*got).number, 3U);
    EXPECT_TRUE(std::get<WorkerWritten>(*got).output == output);
    EXPECT_EQ(toJson(std::get<WorkerWritten>(*got).report), toJson(report));
    EXPECT_TRUE(std::holds_alternative<WorkerNaming>(*answerOf(answerMessage(WorkerNaming{}))));
    const auto placed = answerOf(answerMessage(WorkerPlaced{{3, 5'000'000'000}}));
    EXPECT_THAT(std::get<WorkerPlaced>(*placed).numbers, ElementsAre(3U, 5'000'000'000U));
    EXPECT_TRUE(std::get<WorkerEnd>(*answerOf(answerMessage(WorkerEnd{{}, true}))).asked);
}

TEST(WorkerAnswers, AreNothingWhenTheyMakeNoSense)
{
    for (
        const char* line :
        {"", "nonsense", "{}", "[]", "{\"ready\":99}", "{\"number\":1,\"report\":{}}",
         "{\"number\":-1,\"report\":{\"schema\":1,\"input\":\"a\",\"status\":\"done\"}}",
         "{\"number\":1e300,\"report\":{\"schema\":1,\"input\":\"a\",\"status\":\"done\"}}",
         "{\"number\":1,\"report\":{\"schema\":1,\"input\":\"a\",\"status\":\"lost\"}}",
         "{\"placed\":7}", "{\"placed\":[\"a\"]}", "{\"placed\":[-1]}",
         R"({"number":1,"written":["1"],"report":{"schema":1,"input":"a","status":"done"}})",
         R"({"number":1,"written":["1","x"],"report":{"schema":1,"input":"a","status":"done"}})"}) {
        EXPECT_FALSE(answerOf(line)) << line;
    }
}

} // namespace
