#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraApp/settings/SettingsFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

// Runs that verify each output before it gets its name.
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class RunVerify : public InOwnFolder {
protected:
    RunVerify()
    {
        fs::create_directory("out");
        fs::create_directory("new");
        scratch.write("a.pdf", support::documentOfPages(4));
        scratch.write("b.pdf", support::documentOfPages(2));
        scratch.write("c.pdf", support::documentOfPages(3));
    }

    /// Removes the first page, but of b.pdf another one than was to go.
    static terminal::Answer runWrongly(const std::string& more)
    {
        terminal::Setting setting;
        setting.actionFolders = {SCRIPTED_KNOWN_ACTION_FOLDER};
        EXPECT_TRUE(WriteSettingsFile(
            "scripted.tsf",
            {{"ToolSettings", QVariantMap{{"ActionName", "Delete Pages"},
                                          {"byPageRangeTextEdit", "1"},
                                          {"work", "remove the last at a document of 2 pages"}}}}));
        return terminal::run("run --settings scripted.tsf " + more, setting);
    }

    static std::vector<std::string> namesIn(const std::string& folder)
    {
        std::vector<std::string> names;
        for (const auto& [name, content] : terminal::contents(folder)) {
            names.push_back(name);
        }
        return names;
    }
};

TEST_F(RunVerify, SaysOfEachDocumentAndInTheSummaryThatItIsVerified)
{
    for (const char* jobs : {"0", "1", "2"}) {
        const auto answer = terminal::run(
            "run --verify -p 2 a.pdf b.pdf c.pdf -d out --overwrite -j " + std::string(jobs));
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_THAT(
            terminal::lines(answer.out),
            testing::AllOf(testing::SizeIs(3), testing::Each(testing::EndsWith("; verified"))));
        EXPECT_THAT(answer.err, HasSubstr("3 of 3 documents done, 3 verified; "));
    }
    const auto json =
        terminal::objects(terminal::run("run --verify -p 2 a.pdf -d out --overwrite --json").out);
    ASSERT_EQ(json.size(), 2U);
    EXPECT_TRUE(json[0]["verified"].toBool());
    EXPECT_GT(json[0]["looked_for"].toInt(), 0);
    EXPECT_TRUE(json[0]["not_told"].isArray());
    EXPECT_TRUE(json[0]["run"].toObject()["verify"].toBool());
    EXPECT_EQ(json[1]["summary"].toObject()["verified"], 1);
    EXPECT_FALSE(terminal::objects(terminal::run("run -p 2 a.pdf -d out --overwrite --json").out)[0]
                     .contains("verified"));
}

TEST_F(RunVerify, WritesNoOutputThatHoldsWhatWasToGo)
{
    const std::string all = "a.pdf b.pdf c.pdf ";
    const auto unnoticed = runWrongly(all + "-d out");
    EXPECT_EQ(unnoticed.status, 0) << unnoticed.err;
    EXPECT_EQ(namesIn("out").size(), 3U);
    const std::string original = support::readFile("b.pdf");
    for (const char* how : {"-d out --overwrite -j 0", "-d out --overwrite -j 1", "-d new -j 2",
                            "--in-place --backup"}) {
        SCOPED_TRACE(how);
        const std::string before = support::readFile("out/b.pdf");
        const auto answer = runWrongly(all + "--verify " + how);
        EXPECT_EQ(answer.status, 1);
        EXPECT_THAT(answer.err,
                    AllOf(HasSubstr("2 of 3 documents done, 2 verified, 1 failed (1 not-verified)"),
                          HasSubstr("b.pdf: the output is not verified, and so not written: ")));
        EXPECT_THAT(answer.err,
                    testing::ContainsRegex("content-stream of page 1 in object [0-9]+ 0 R"));
        EXPECT_EQ(support::readFile("out/b.pdf"), before);
    }
    EXPECT_THAT(namesIn("out"), ElementsAre("out/a.pdf", "out/b.pdf", "out/c.pdf"));
    EXPECT_THAT(namesIn("new"), ElementsAre("new/a.pdf", "new/c.pdf"));
    EXPECT_EQ(support::readFile("b.pdf"), original);
    EXPECT_TRUE(fs::exists("a.pdf.bak") && !fs::exists("b.pdf.bak"));
}

TEST_F(RunVerify, JudgesWhatGoesThroughAPipeBeforeAByteOfItIsPrinted)
{
    terminal::Setting pipe;
    pipe.standardInput = support::readFile("a.pdf");
    const auto good = terminal::run("run --verify -p 2-3 - -o -", pipe);
    EXPECT_EQ(good.status, 0) << good.err;
    EXPECT_EQ(support::pageTexts(good.out), support::pagesNamed({1, 4}));
    EXPECT_THAT(good.err, HasSubstr("; verified"));
    EXPECT_NE(runWrongly("b.pdf -o -").out, "");
    const auto bad = runWrongly("b.pdf -o - --verify");
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.out, "");
}

TEST_F(RunVerify, VerifiesAlsoADocumentOfWhichNothingOrEverythingGoes)
{
    for (const char* pages : {"7", "1-4"}) {
        const auto answer =
            terminal::run("run --verify a.pdf -d out --overwrite -p " + std::string(pages));
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_THAT(answer.out, HasSubstr("; verified"));
    }
}

TEST_F(RunVerify, IsNotForActionsWhoseWorkOnlyTheyKnow)
{
    const auto answer = terminal::run("run --verify --action Scripted a.pdf -d out");
    EXPECT_EQ(answer.status, 2);
    EXPECT_THAT(answer.err, HasSubstr("what action \"Scripted\" does only itself knows"));
    EXPECT_THAT(namesIn("out"), ElementsAre());
}

TEST_F(RunVerify, GoesOnWithAReportButForWhatNobodyVerified)
{
    ASSERT_EQ(terminal::run("run -p 1 a.pdf -d out --report r.jsonl").status, 0);
    const std::string goOn =
        "run -p 1 a.pdf b.pdf -d out --report r.jsonl --resume r.jsonl --overwrite";
    EXPECT_THAT(terminal::run(goOn).out, Not(HasSubstr("a.pdf")));
    const auto verified = terminal::run(goOn + " --verify");
    EXPECT_THAT(verified.out, AllOf(HasSubstr("a.pdf"), HasSubstr("b.pdf")));
    EXPECT_EQ(terminal::run(goOn + " --verify").out, "");
    // Doing it once more would remove another page.
    ASSERT_EQ(terminal::run("run -p 1 c.pdf --in-place --report i.jsonl").status, 0);
    EXPECT_EQ(
        terminal::run("run -p 1 c.pdf --in-place --verify --report i.jsonl --resume i.jsonl").out,
        "");
    EXPECT_EQ(support::pageTexts(support::readFile("c.pdf")), support::pagesNamed({2, 3}));
}

} // namespace
