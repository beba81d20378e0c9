#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <set>

// A watch that does what is there and ends, as a timer starts it.
namespace {

namespace fs = std::filesystem;
using support::documentOfPages;
using support::pageTexts;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Names = std::set<std::string>;

class WatchOnce : public InOwnFolder {
protected:
    WatchOnce()
    {
        std::signal(SIGPIPE, SIG_IGN); // as the program does
        for (const char* folder : {"in", "out", "aside"}) {
            fs::create_directory(folder);
        }
        scratch.write("in/a.pdf", documentOfPages(3));
    }

    static terminal::Answer watch(const std::string& more = {},
                                  const std::string& options = "in -d out -p 1")
    {
        return terminal::run("watch --once --settle 0 " + options + " " + more);
    }

    static Names namesIn(const std::string& folder)
    {
        Names names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.insert(entry.path().filename());
        }
        names.erase(".vantora-watch.jsonl");
        return names;
    }

    /// The status of each line of the report.
    static std::vector<std::string> statuses(const std::string& report = "out/.vantora-watch.jsonl")
    {
        std::vector<std::string> found;
        for (const QJsonObject& line : terminal::objects(support::readFile(report))) {
            found.push_back(line["status"].toString().toStdString());
        }
        return found;
    }
};

TEST_F(WatchOnce, DoesEachDocumentOnce)
{
    scratch.write("in/B.PDF", documentOfPages(2));
    scratch.write("in/.hidden.pdf", documentOfPages(2));
    scratch.write("in/coming.pdf.part", documentOfPages(2));
    scratch.write("elsewhere.pdf", documentOfPages(2));
    fs::create_directory("in/inner");
    scratch.write("in/inner/deep.pdf", documentOfPages(2));
    fs::create_symlink("../elsewhere.pdf", "in/link.pdf");
    const auto before = terminal::contents("in");
    const auto first = watch();
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_THAT(first.out, AllOf(HasSubstr("/in/a.pdf -> "), HasSubstr("/out/B.PDF: 1 of 2")));
    EXPECT_EQ(namesIn("out"), (Names{"a.pdf", "B.PDF"}));
    EXPECT_EQ(pageTexts(support::readFile("out/a.pdf")), support::pagesNamed({2, 3}));
    fs::remove("out/B.PDF"); // as whoever waits for it does
    for (const char* folder : {"in", "./in/", "out/../in"}) {
        const auto again = watch("", std::string(folder) + " -d out -p 1,2");
        EXPECT_EQ(again.status, 0) << again.err;
        EXPECT_EQ(again.out, "");
    }
    EXPECT_EQ(namesIn("out"), Names{"a.pdf"});
    EXPECT_EQ(terminal::contents("in"), before);
}

TEST_F(WatchOnce, SaysItInJson)
{
    const auto answer = watch("--json -q");
    EXPECT_EQ(answer.status, 0);
    const auto objects = terminal::objects(answer.out);
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[0]["status"], "done");
    EXPECT_EQ(objects[1]["summary"].toObject()["done"], 1);
}

TEST_F(WatchOnce, NamesWhatFailsOnceAndLeavesItThere)
{
    scratch.write("in/bad.pdf", "no PDF");
    const auto first = watch();
    EXPECT_EQ(first.status, 1);
    EXPECT_THAT(first.err, HasSubstr("error: " + scratch.path("in/bad.pdf") + ": is no PDF"));
    EXPECT_EQ(namesIn("in"), (Names{"a.pdf", "bad.pdf"}));
    EXPECT_EQ(namesIn("out"), Names{"a.pdf"});
    const auto second = watch();
    EXPECT_EQ(second.status, 0);
    EXPECT_THAT(second.err, Not(HasSubstr("bad.pdf")));
    scratch.write("in/bad.pdf", documentOfPages(4));
    EXPECT_EQ(watch().status, 0);
    EXPECT_EQ(namesIn("out"), (Names{"a.pdf", "bad.pdf"}));
    EXPECT_EQ(watch("--accept-failures not-pdf").status, 0);
}

TEST_F(WatchOnce, PutsAsideWhatIsDoneAndWhatFails)
{
    fs::create_directory("in/failed");
    scratch.write("in/failed/bad.pdf", "an earlier one");
    scratch.write("in/bad.pdf", "no PDF");
    const auto answer = watch("--done aside --failed in/failed");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err,
                HasSubstr("/in/bad.pdf is moved to " + scratch.path("in/failed/bad (1).pdf")));
    EXPECT_EQ(namesIn("in"), Names{"failed"});
    EXPECT_EQ(namesIn("aside"), Names{"a.pdf"});
    EXPECT_EQ(support::readFile("in/failed/bad (1).pdf"), "no PDF");
    EXPECT_THAT(statuses(), testing::UnorderedElementsAre("failed", "planned", "done"));
    // Whoever puts it there again wants it to be tried again.
    fs::rename("in/failed/bad (1).pdf", "in/bad.pdf");
    EXPECT_EQ(watch("--failed in/failed").status, 1);
    EXPECT_EQ(namesIn("in/failed"), (Names{"bad.pdf", "bad (1).pdf"}));
}

TEST_F(WatchOnce, GivesDocumentsOfOneNameDifferentOutputsOrNone)
{
    fs::create_directory("more");
    scratch.write("more/a.pdf", documentOfPages(5));
    const auto refused = watch("", "in more -d out -p 1");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("exists already"));
    EXPECT_EQ(namesIn("out"), Names{"a.pdf"});
    const auto numbered = watch("", "in more -d aside -p 1 --rename");
    EXPECT_EQ(numbered.status, 0) << numbered.err;
    EXPECT_EQ(namesIn("aside"), (Names{"a.pdf", "a (1).pdf"}));
    const auto named = watch("", "in -d aside -p 1 --report new --name {name}-cut{ext}");
    EXPECT_EQ(named.status, 0) << named.err;
    EXPECT_EQ(namesIn("aside"), (Names{"a.pdf", "a (1).pdf", "a-cut.pdf"}));
}

TEST_F(WatchOnce, DoesANewVersionAgain)
{
    EXPECT_EQ(watch().status, 0);
    scratch.write("in/a.pdf", documentOfPages(6));
    const auto refused = watch();
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("exists already; use --overwrite"));
    EXPECT_EQ(pageTexts(support::readFile("out/a.pdf")).size(), 2U);
    scratch.write("in/a.pdf", documentOfPages(7));
    EXPECT_EQ(watch("--overwrite").status, 0);
    EXPECT_EQ(pageTexts(support::readFile("out/a.pdf")).size(), 6U);
}

/// A watch that was cut off just before a line about its document was written.
TEST_F(WatchOnce, GoesOnWhereItWasCutOff)
{
    const std::string report = "out/.vantora-watch.jsonl";
    EXPECT_EQ(watch().status, 0);
    ASSERT_THAT(statuses(), ElementsAre("planned", "done"));
    const std::string announced = terminal::lines(support::readFile(report)).front() + "\n";

    scratch.write(report, announced + "{\"schema\":1,\"inp"); // the output has its name
    EXPECT_EQ(watch().out, "");
    EXPECT_THAT(statuses(), ElementsAre("planned", "done"));

    scratch.write(report, announced); // it has not
    fs::remove("out/a.pdf");
    EXPECT_THAT(watch().out, HasSubstr("1 of 3 pages removed"));
    EXPECT_EQ(namesIn("out"), Names{"a.pdf"});
    EXPECT_THAT(statuses(), ElementsAre("planned", "planned", "done"));

    EXPECT_EQ(watch("--done aside").out, ""); // the document is not put aside yet
    EXPECT_EQ(namesIn("in"), Names{});
    EXPECT_EQ(namesIn("aside"), Names{"a.pdf"});
}

TEST_F(WatchOnce, RefusesWhatWouldNotEndOrLoseDocuments)
{
    fs::create_directory("in/inner");
    fs::create_directory_symlink("in/inner", "link");
    scratch.write("notes", "mine");
    const struct {
        const char* name;
        const char* line;
        int status;
        const char* says;
    } rows[] = {
        {"outputs in the watched folder", "in -d in -p 1", 2, "lies in the watched folder"},
        {"outputs below it", "in -d in/inner -p 1", 2, "name one outside"},
        {"outputs below it by a link", "in -d link -p 1", 2, "name one outside"},
        {"a folder that is named twice", "in ./in -d out -p 1", 2, "is named twice"},
        {"a folder that isn't there", "missing -d out -p 1", 1, "there is no such folder"},
        {"a file to watch", "notes -d out -p 1", 1, "is not a folder"},
        {"no place for outputs", "in -d missing -p 1", 1, "is not there"},
        {"failed ones in the watched folder", "in -d out -p 1 --failed in", 2, "is watched itself"},
        {"done ones on another file system", "in -d out -p 1 --done /proc", 2,
         "is not on the file system"},
        {"failed ones nowhere", "in -d out -p 1 --failed missing", 1, "is not there"},
        {"a report that is none", "in -d out -p 1 --report notes", 1, "is not a report"},
    };
    for (const auto& row : rows) {
        const auto answer = watch("", row.line);
        EXPECT_EQ(answer.status, row.status) << row.name << ": " << answer.err;
        EXPECT_THAT(answer.err, HasSubstr(row.says)) << row.name;
        EXPECT_EQ(namesIn("out"), Names{}) << row.name;
    }
    EXPECT_EQ(support::readFile("notes"), "mine");
}

TEST_F(WatchOnce, LeavesDocumentsWhereTheirOutputsCannotBeWritten)
{
    fs::remove_all("out");
    fs::create_directory("out");
    fs::create_directory("out/a.pdf");
    EXPECT_EQ(watch("--report report --failed aside").status, 1);
    EXPECT_EQ(namesIn("aside"), Names{"a.pdf"}) << "a folder in the way is a failure";
}

} // namespace
