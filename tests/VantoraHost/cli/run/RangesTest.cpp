#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraHost/core/choices/RangesFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

// Runs in which each document has a range of its own.
namespace {

namespace fs = std::filesystem;
using support::documentOfPages;
using support::pagesNamed;
using support::pageTexts;
using support::readFile;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class Ranges : public InOwnFolder {
protected:
    Ranges()
    {
        fs::create_directories("in/x");
        fs::create_directory("out");
        for (const char* name : {"in/a.pdf", "in/b.pdf", "in/x/c.pdf"}) {
            scratch.write(name, documentOfPages(4));
        }
        scratch.write("in/list", "a.pdf\t1\nx/c.pdf\t2-3\n");
    }
};

TEST_F(Ranges, AreThoseOfTheListForEachDocument)
{
    for (const char* workers : {"-j 0", "-j 2", "-j 1"}) {
        const auto answer =
            terminal::run(std::string("run --ranges in/list -r in -d out --overwrite ") + workers);
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_THAT(answer.err, HasSubstr("2 of 2 documents done; 1 not named in the list of "
                                          "ranges, and left as they are; 3 pages removed"));
        EXPECT_EQ(pageTexts(readFile("out/a.pdf")), pagesNamed({2, 3, 4})) << workers;
        EXPECT_EQ(pageTexts(readFile("out/x/c.pdf")), pagesNamed({1, 4})) << workers;
        EXPECT_FALSE(fs::exists("out/b.pdf")) << workers;
    }
}

TEST_F(Ranges, NameTheDocumentsWhereNothingElseDoes)
{
    const std::string before = readFile("in/b.pdf");
    const auto answer = terminal::run("run --ranges in/list --in-place --json");
    EXPECT_EQ(answer.status, 0) << answer.err;
    const auto reports = terminal::objects(answer.out);
    ASSERT_EQ(reports.size(), 3U);
    EXPECT_EQ(reports[0]["input"].toString(), "in/a.pdf");
    EXPECT_EQ(reports[1]["range"].toString(), "2-3");
    EXPECT_EQ(reports[2]["summary"].toObject()["not_named"].toInt(-1), 0);
    EXPECT_EQ(pageTexts(readFile("in/x/c.pdf")), pagesNamed({1, 4}));
    EXPECT_EQ(readFile("in/b.pdf"), before);
}

TEST_F(Ranges, AreJudgedAsOtherRangesAre)
{
    terminal::Setting setting;
    setting.standardInput = "in/a.pdf\t1-4\nin/b.pdf\t\nin/x/c.pdf\t4-9\n";
    const auto plain = terminal::run("run --ranges - -n", setting);
    EXPECT_THAT(plain.out, AllOf(HasSubstr("in/a.pdf: 4 of 4 pages would go (1-4), 1 left"),
                                 HasSubstr("in/b.pdf: none of 4 pages would go, 4 left"),
                                 HasSubstr("in/x/c.pdf: 1 of 4 pages would go (4), 3 left")));
    const auto strict = terminal::run("run --ranges - -n --strict", setting);
    EXPECT_EQ(strict.status, 1);
    EXPECT_THAT(strict.err,
                AllOf(HasSubstr("in/a.pdf: the range 1-4 names every page, so none would be left"),
                      HasSubstr("in/x/c.pdf: the range 4-9 names pages up to 9")));
}

TEST_F(Ranges, AreWhatAResumedRunComparesForEachDocument)
{
    const auto run = [](const std::string& more) {
        return terminal::run("run --ranges in/list --report r --resume r " + more);
    };
    EXPECT_EQ(run("-d out").status, 0);
    EXPECT_THAT(run("-d out").err, HasSubstr("2 of 2 documents are done by the report"));
    scratch.write("in/list", "a.pdf\t1\nx/c.pdf\t3\nb.pdf\t2\n");
    const auto changed = run("-d out --overwrite");
    EXPECT_THAT(changed.err, AllOf(HasSubstr("1 of 3 documents are done by the report"),
                                   HasSubstr("1 document has changed since the report, and is to "
                                             "be done again: 1 by other steps"),
                                   HasSubstr("2 of 2 documents done")));
    EXPECT_EQ(pageTexts(readFile("out/c.pdf")), pagesNamed({1, 2, 4}));
    EXPECT_THAT(terminal::run("run -p 1 in/a.pdf -d out --resume r -n").err,
                HasSubstr("1 by other steps"))
        << "the same page, but not by a list";
}

TEST_F(Ranges, DoNotChangeADocumentInPlaceASecondTime)
{
    ASSERT_EQ(terminal::run("run --ranges in/list -i --report r").status, 0);
    scratch.write("in/list", "a.pdf\t2\nx/c.pdf\t2-3\n");
    const auto again = terminal::run("run --ranges in/list -i --report r --resume r");
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, HasSubstr("in/a.pdf: is changed already, in place and by other steps"));
    EXPECT_EQ(pageTexts(readFile("in/a.pdf")), pagesNamed({2, 3, 4}));
}

TEST_F(Ranges, AreRefusedBeforeAnythingIsWrittenWhereOneIsWrong)
{
    const struct {
        const char* arguments;
        const char* list;
        int status;
        const char* says;
    } rows[] = {
        {"-d out", "in/a.pdf\t1\nin/b.pdf\t3-1\n", 2, "list: line 2 has the page range \"3-1\""},
        {"-d out in/a.pdf", "in/a.pdf\t1\nin/b.pdf\t1\n", 2,
         "line 2 names \"in/b.pdf\", which is none"},
        {"-d out", "in/a.pdf\t1\nin/d.pdf\t1\n", 2,
         "line 2 names \"in/d.pdf\", which is not there"},
        {"-d out", "", 1, "list: the list of ranges names no document"},
        {"-o out/one.pdf", "in/a.pdf\t1\nin/b.pdf\t1\n", 1, "neither is written"},
    };
    for (const auto& row : rows) {
        scratch.write("list", row.list);
        const auto answer = terminal::run(std::string("run --ranges list ") + row.arguments);
        EXPECT_EQ(answer.status, row.status) << answer.err;
        EXPECT_THAT(answer.err, HasSubstr(row.says));
        EXPECT_TRUE(fs::is_empty("out"));
    }
}

TEST_F(Ranges, CannotStandInSavedSteps)
{
    const auto answer = terminal::run(
        "run --action 'Delete Pages' --set HostRangesOfDocuments=yes in/a.pdf -o out/a.pdf");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("no list of ranges says which of its pages go"));
}

} // namespace
