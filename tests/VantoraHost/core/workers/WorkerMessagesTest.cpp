#include "VantoraHost/core/workers/WorkerMessages.h"

#include "VantoraHost/core/workers/MessageFrames.h"
#include "VantoraHost/core/workers/Packing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace {

using namespace vantora;
using testing::ElementsAre;

std::optional<PreferencesMap> sameOptions(const QByteArray& bytes)
{
    return PreferencesMap{{"bytes", bytes}};
}

/// A message that is cut off somewhere, or has something behind it, is none.
void expectNothingOfItsParts(const std::string& message,
                             const std::function<bool(const std::string&)>& isMessage)
{
    EXPECT_TRUE(isMessage(message));
    for (std::size_t size = 0; size < message.size(); ++size) {
        EXPECT_FALSE(isMessage(message.substr(0, size))) << size;
    }
    EXPECT_FALSE(isMessage(message + '\0'));
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
    const auto got = setupOf(setupMessage(setup), sameOptions);
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
    WorkerSetup stored;
    stored.steps = {{"Other", {}, {{"colour", 7}}}};
    EXPECT_TRUE(setupOf(setupMessage(stored), sameOptions));
    EXPECT_FALSE(setupOf(setupMessage(stored), nothing)) << "which can't be read";

    std::string later = setupMessage({});
    EXPECT_TRUE(setupOf(later, nothing));
    later[0] = static_cast<char>(workerProtocol + 1);
    EXPECT_FALSE(setupOf(later, nothing));
    expectNothingOfItsParts(setupMessage(stored), [](const std::string& message) {
        return setupOf(message, sameOptions).has_value();
    });
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
    const auto isTasks = [](const std::string& message) { return tasksOf(message).has_value(); };
    expectNothingOfItsParts(tasksMessage({{7, "a.pdf", Target(), "1"}}), isTasks);
    EXPECT_FALSE(isTasks(namingMessage()));
    const std::string kind = tasksMessage({}).substr(0, 1);
    EXPECT_FALSE(isTasks(kind + packed(~std::size_t{0}))) << "as many as no memory holds";
    EXPECT_FALSE(isTasks(kind + packed(std::size_t{1}, std::size_t{7}, ~std::size_t{0})))
        << "a name that is longer than everything";
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
    const auto isAnswer = [](const std::string& message) { return answerOf(message).has_value(); };
    DocumentReport report;
    report.input = "a";
    report.pagesBefore = 1;
    report.error = {Reason::NotPdf, "a", "no PDF"};
    for (const WorkerAnswer& answer :
         {WorkerAnswer(WorkerReport{1, report}), WorkerAnswer(WorkerWritten{1, report, {2, 3}}),
          WorkerAnswer(WorkerPlaced{{1, 2}}), WorkerAnswer(WorkerEnd{report.error, true}),
          WorkerAnswer(WorkerReady())}) {
        expectNothingOfItsParts(answerMessage(answer), isAnswer);
    }
    EXPECT_FALSE(isAnswer("nonsense"));

    DocumentReport wrong = report;
    wrong.pagesBefore = -1;
    EXPECT_FALSE(isAnswer(answerMessage(WorkerReport{1, wrong})));
    wrong = report;
    wrong.status = static_cast<DocumentStatus>(7);
    EXPECT_FALSE(isAnswer(answerMessage(WorkerReport{1, wrong})));
    wrong = report;
    wrong.error->reason = static_cast<Reason>(200);
    EXPECT_FALSE(isAnswer(answerMessage(WorkerReport{1, wrong})));
    wrong = report;
    wrong.seconds = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(isAnswer(answerMessage(WorkerReport{1, wrong})));
}

TEST(MessageFrames, ComeApartWhereverTheyAreCut)
{
    const std::string messages[] = {"", std::string("\n\0x", 3), std::string(70000, 'y')};
    std::string all;
    for (const std::string& message : messages) {
        all += framed(message);
    }
    for (const std::size_t piece : {std::size_t{1}, std::size_t{5}, all.size()}) {
        std::string received;
        std::vector<std::string> got;
        for (std::size_t i = 0; i < all.size(); i += piece) {
            received += all.substr(i, piece);
            std::string_view rest = received;
            while (auto message = takeMessage(rest)) {
                got.push_back(std::move(*message));
            }
            received.erase(0, received.size() - rest.size());
        }
        EXPECT_THAT(got, testing::ElementsAreArray(messages));
    }
    EXPECT_FALSE(isTooLong(all));
    EXPECT_TRUE(isTooLong("garbage"));
}

} // namespace
