#include "Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

// Runs over folders, in shares, and gone on with.
namespace {

namespace fs = std::filesystem;
using support::documentOfPages;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ManyInputs : public InOwnFolder {
protected:
    ManyInputs()
    {
        fs::create_directories("in/x/y");
        fs::create_directory("out");
        for (const char* name : {"in/a.pdf", "in/x/b.pdf", "in/x/y/b.pdf", "in/x/y/c.pdf"}) {
            scratch.write(name, documentOfPages(3));
        }
    }

    static terminal::Answer run(const std::string& more, const terminal::Setting& setting = {})
    {
        return terminal::run("run -p 1 -r in -d out -j 0 " + more, setting);
    }

    std::vector<std::string> outputs() const
    {
        std::vector<std::string> names;
        for (const auto& [path, content] : terminal::contents("out")) {
            if (fs::is_directory(path)) {
                continue;
            }
            EXPECT_EQ(support::problems(content), "") << path;
            names.push_back(path);
        }
        return names;
    }
};

TEST_F(ManyInputs, AreMirrored)
{
    auto answer = run("");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_THAT(answer.out, HasSubstr("in/x/y/c.pdf -> out/x/y/c.pdf: 1 of 3 pages removed"));
    EXPECT_THAT(outputs(),
                testing::UnorderedElementsAre(HasSubstr("a.pdf"), HasSubstr("x/b.pdf"),
                                              HasSubstr("x/y/b.pdf"), HasSubstr("x/y/c.pdf")));
    EXPECT_THAT(answer.err, HasSubstr("4 pages removed; "));

    answer = run("");
    EXPECT_THAT(answer.err, HasSubstr("0 of 4 documents done, 4 failed (4 output-exists)"));
    answer = run("--rename");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(outputs().size(), 8U);
    EXPECT_TRUE(fs::exists("out/x/y/c (1).pdf"));
    answer = run("--name {number}");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_TRUE(fs::exists("out/x/y/4"));
}

TEST_F(ManyInputs, AreNotFoundInTheOutputsOfAnEarlierRun)
{
    fs::create_directory("in/cut");
    for (const char* expected : {"4 of 4 documents done", "4 of 4 documents done"}) {
        const auto answer = terminal::run("run -p 1 --recursive in -d in/cut --overwrite -j 0");
        EXPECT_THAT(answer.err, HasSubstr(expected));
    }
}

TEST_F(ManyInputs, AreNamedWhenThereAreNone)
{
    fs::create_directory("empty");
    const auto answer = run("empty missing");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err,
                AllOf(HasSubstr("warning: empty: the folder holds no PDF"),
                      HasSubstr("error: missing: "), HasSubstr("4 of 5 documents done, 1 failed")));
    const auto quiet = terminal::run("run -q -p 1 -r empty -d out");
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.err, "");
    const auto notAsked = terminal::run("run -p 1 in -n");
    EXPECT_THAT(notAsked.err, HasSubstr("a folder with --recursive"));
}

TEST_F(ManyInputs, AreSharedOutWithoutGapOrOverlap)
{
    std::size_t before = 0;
    for (const char* share : {"1/3", "2/3", "3/3"}) {
        const auto answer = run(std::string("--shard ") + share + " --report r" + share[0]);
        EXPECT_EQ(answer.status, 0) << answer.err; // no output was there already
        EXPECT_THAT(answer.err, HasSubstr(std::string("of 4 documents are in share ") + share[0]));
        EXPECT_GE(outputs().size(), before);
        before = outputs().size();
    }
    EXPECT_EQ(before, 4U);
    const auto answer = run("--resume r1 --resume r2 --resume r3");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_THAT(answer.err, HasSubstr("4 of 4 documents are done by the report"));
    EXPECT_EQ(answer.out, "");
}

TEST_F(ManyInputs, AreGoneOnWithAfterAnInterruption)
{
    terminal::Setting setting;
    setting.interrupted = [] { // once the second one is written, under whatever name
        const fs::directory_iterator files(fs::exists("out/x") ? "out/x" : ".");
        return std::any_of(begin(files), end(files), [](const fs::directory_entry& entry) {
            return entry.path().parent_path() == "out/x" && entry.is_regular_file();
        });
    };
    const auto first = run("--report report", setting);
    EXPECT_EQ(first.status, 130);
    EXPECT_THAT(first.err, AllOf(HasSubstr("interrupted: 2 of 4 documents done"),
                                 HasSubstr("the same command with --resume report")));
    EXPECT_EQ(outputs().size(), 2U);

    scratch.write("out/a.pdf", "changed since"); // no longer what the report says
    scratch.write("in/x/y/b.pdf", "no PDF");
    const auto second = run("--report report --resume report");
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.err,
                AllOf(HasSubstr("1 of 4 documents are done by the report"),
                      HasSubstr("1 of 3 documents done, 2 failed (1 not-pdf, 1 output-exists)")));

    scratch.write("in/x/y/b.pdf", documentOfPages(3));
    const auto third = run("--report report --resume report --overwrite");
    EXPECT_EQ(third.status, 0) << third.err;
    EXPECT_THAT(third.err, HasSubstr("2 of 2 documents done"));
    EXPECT_EQ(terminal::lines(support::readFile("report")).size(), 7U);
    EXPECT_EQ(outputs().size(), 4U);
    EXPECT_EQ(run("--report new --resume old").status, 1) << "there is no report old";
}

TEST_F(ManyInputs, ChangedInPlaceAreNotChangedTwice)
{
    const std::string line = "run -p 1 -r in -i --report report --resume report";
    EXPECT_EQ(terminal::run(line).status, 0); // the report is not there yet
    const auto before = terminal::contents("in");
    EXPECT_EQ(terminal::run(line).status, 0);
    EXPECT_EQ(terminal::contents("in"), before);
    EXPECT_EQ(support::pageTexts(before.at("in/a.pdf")), support::pagesNamed({2, 3}));
}

TEST_F(ManyInputs, NeverCostADocumentForAReport)
{
    const std::string document = support::readFile("in/a.pdf");
    const auto answer = run("--report in/a.pdf --overwrite");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("in/a.pdf: is not a report"));
    EXPECT_EQ(support::readFile("in/a.pdf"), document);
    EXPECT_TRUE(outputs().empty());
    const auto full = run("--report /dev/full --overwrite");
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.err, HasSubstr("/dev/full: the report can't be written: No space left"));
    EXPECT_EQ(outputs().size(), 4U);
}

} // namespace
