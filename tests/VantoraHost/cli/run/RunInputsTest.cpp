#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>

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
                      HasSubstr("1 document has changed since the report, and is to be done "
                                "again: 1 output changed\n"),
                      HasSubstr("1 of 3 documents done, 2 failed (1 not-pdf, 1 output-exists)")));

    scratch.write("in/x/y/b.pdf", documentOfPages(3));
    const auto third = run("--report report --resume report --overwrite");
    EXPECT_EQ(third.status, 0) << third.err;
    EXPECT_THAT(third.err, HasSubstr("2 of 2 documents done"));
    EXPECT_EQ(terminal::lines(support::readFile("report")).size(), 7U);
    EXPECT_EQ(outputs().size(), 4U);
    EXPECT_EQ(run("--report new --resume old").status, 1) << "there is no report old";
}

TEST_F(ManyInputs, AreNotTheOutputsThatLieBesideThem)
{
    // By the template of names, and by the report where the run has another one.
    for (const char* again : {"--name {name}-cut{ext}", "--name {name}-2{ext} --resume report"}) {
        fs::remove("report");
        const std::string line = "run -p 1 -r in -d in -j 0 --overwrite ";
        EXPECT_EQ(terminal::run(line + "--name {name}-cut{ext} --report report").status, 0);
        const auto answer = terminal::run(line + again);
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_THAT(answer.err,
                    AllOf(HasSubstr("4 of 8 files are outputs of such a run, and so no inputs"),
                          HasSubstr("4 of 4 documents done")));
        EXPECT_FALSE(fs::exists("in/a-cut-cut.pdf") || fs::exists("in/a-cut-2.pdf"));
    }
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

// What happens between two nights, and what the second one does.
TEST_F(ManyInputs, AreDoneAgainWhereAnythingChanged)
{
    const auto edit = [this] { scratch.write("in/a.pdf", documentOfPages(4)); };
    const struct {
        const char* name;
        const char* first;
        const char* second;
        std::function<void()> between;
        std::size_t left; ///< alone
        const char* said;
    } rows[] = {
        {"nothing", "", "", [] {}, 4, ""},
        {"nothing, with hashes", "--report-hashes", "--report-hashes", [] {}, 4, ""},
        {"an input", "", "", edit, 3, "again: 1 input changed\n"},
        {"the content of an input only", "--report-hashes", "",
         [this] {
             const auto time = fs::last_write_time("in/a.pdf");
             scratch.write("in/a.pdf",
                           support::replaced(support::readFile("in/a.pdf"), "Page 1", "Leaf 1"));
             fs::last_write_time("in/a.pdf", time);
         },
         3, "again: 1 input changed\n"},
        {"an input and an output", "", "",
         [&] {
             edit();
             fs::remove("out/x/b.pdf");
         },
         2, "again: 1 output gone, 1 input changed\n"},
        {"the pages", "-p 1", "-p 2", [] {}, 0, "again: 4 by other steps\n"},
        {"the choice of pages", "--choose first:1", "--choose last:1", [] {}, 0,
         "again: 4 by other steps\n"},
        {"the options of an action", "--action Scripted --set x=1", "--action Scripted --set x=2",
         [] {}, 0, "4 by other steps\n"},
        {"the order of steps", "-p 1 -p 2", "-p 2 -p 1", [] {}, 0, "4 by other steps\n"},
        {"how the same pages are given", "-p 1",
         "--action 'Delete Pages' --set byPageRangeTextEdit=1", [] {}, 4, ""},
    };
    for (const auto& row : rows) {
        fs::remove("report");
        const auto night = [](std::string steps) {
            const bool given =
                steps.find("-p") == 0 || steps.find("--a") == 0 || steps.find("--c") == 0;
            return terminal::run("run -r in -d out -j 0 --overwrite --report report --resume "
                                 "report " +
                                 (given ? "" : std::string("-p 1 ")) + steps);
        };
        const auto first = night(row.first);
        ASSERT_EQ(first.status, 0) << row.name << first.err;
        row.between();
        const auto second = night(row.second);
        EXPECT_EQ(second.status, 0) << row.name << second.err;
        EXPECT_EQ(terminal::lines(second.out).size(), 4 - row.left) << row.name << second.out;
        EXPECT_THAT(second.err, HasSubstr(row.said)) << row.name;
        EXPECT_EQ(night(row.second).out, "") << row.name << ": done once more";
    }
}

TEST_F(ManyInputs, ChangedInPlaceAreNotChangedByOtherStepsUnasked)
{
    const std::string rest = " -r in -i --report report --resume report";
    EXPECT_EQ(terminal::run("run -p 1" + rest).status, 0);
    const auto before = terminal::contents("in");
    const auto answer = terminal::run("run -p 2" + rest);
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("in/a.pdf: is changed already, in place and by other steps"));
    EXPECT_EQ(terminal::contents("in"), before);
}

TEST_F(ManyInputs, NeverCostADocumentForAReport)
{
    scratch.write("in/x/empty.pdf", ""); // which would do as a new report
    ::mkfifo("pipe", 0600);
    scratch.write("other.json", "{\"mine\":1}\n");
    const auto before = terminal::contents(".");
    const struct {
        const char* options;
        const char* error;
    } rows[] = {
        {"--report in/a.pdf --overwrite", "in/a.pdf: is an input of this run; name another file"},
        {"--report in/x/empty.pdf --overwrite", "in/x/empty.pdf: is an input of this run"},
        {"--report out/x/../x/b.pdf", "is where the output for in/x/b.pdf goes"},
        {"--report out/a.pdf", "out/a.pdf: is where the output for in/a.pdf goes"},
        {"--resume in/a.pdf", "in/a.pdf: line 1 is no report of a document"},
        {"--report other.json --overwrite", "other.json: is not a report"},
        {"--report other.json --resume other.json", "other.json: line 1 is no report"},
        {"--report pipe --overwrite", "pipe: is a device or pipe"},
        {"--resume pipe", "pipe: is a device or pipe"},
        {"--report /dev/null --overwrite", "/dev/null: is a device or pipe"},
    };
    for (const auto& row : rows) {
        const auto answer = run(row.options);
        EXPECT_EQ(answer.status, 1) << row.options;
        EXPECT_THAT(answer.err, HasSubstr(row.error)) << row.options;
        EXPECT_EQ(terminal::contents("."), before) << row.options;
    }
}

TEST_F(ManyInputs, AreSkippedForAForgedReportOnlyWhereTheirOutputsAreThere)
{
    ASSERT_EQ(run("--report report").status, 0);
    const std::string line = terminal::lines(support::readFile("report")).front() + "\n";
    ASSERT_THAT(line, HasSubstr(R"("input":"in/a.pdf","output":"out/a.pdf")"));
    scratch.write("report", line);
    EXPECT_THAT(run("--resume report -n").err, HasSubstr("1 of 4 documents are done"));
    // The size and time are right, but of another document's output.
    scratch.write("report", support::replaced(line, "in/a.pdf", "in/x/b.pdf"));
    EXPECT_THAT(run("--resume report -n").err, Not(HasSubstr("are done by the report")));
}

// What somebody does to the folder of outputs before the run writes there.
struct Diversion {
    const char* name;
    int atCall; ///< of the question whether to go on; 0 before the run begins
    void (*happens)();
    const char* options;
    const char* error;
    std::size_t done;
};

class Diverted : public ManyInputs, public testing::WithParamInterface<Diversion> {};

TEST_P(Diverted, OutputsStayInTheFolderThatWasNamed)
{
    fs::create_directories("elsewhere/x/y");
    scratch.write("elsewhere/precious.pdf", "of somebody else");
    const auto before = terminal::contents("elsewhere");
    int calls = 0;
    terminal::Setting setting;
    setting.interrupted = [&] {
        if (++calls == GetParam().atCall) {
            GetParam().happens();
        }
        return false;
    };
    if (GetParam().atCall == 0) {
        GetParam().happens();
    }
    const auto answer = run(GetParam().options, setting);
    EXPECT_THAT(answer.err, HasSubstr(GetParam().error));
    EXPECT_THAT(answer.err, HasSubstr(std::to_string(GetParam().done) + " of 4 documents done"));
    EXPECT_EQ(terminal::contents("elsewhere"), before);
}

const std::vector<Diversion> diversions = {
    {"a_link_stands_in_the_place_of_an_output", 0,
     [] { fs::create_symlink("../elsewhere/precious.pdf", "out/a.pdf"); }, "--overwrite", "", 4},
    {"a_folder_of_the_mirrored_tree_is_a_link", 0,
     [] { fs::create_directory_symlink("../elsewhere/x", "out/x"); }, "",
     "in/x/b.pdf: the output folder out/x is a link or lies behind one, and outputs stay in the "
     "folder that was named; put a folder in its place",
     1},
    {"a_folder_becomes_a_link_during_the_run", 2,
     [] {
         fs::rename("out/x", "moved");
         fs::create_directory_symlink("../elsewhere/x", "out/x");
     },
     "", "in/x/b.pdf: the output folder out/x is a link", 1},
    {"the_named_folder_becomes_a_link_during_the_run", 2,
     [] {
         fs::rename("out", "moved");
         fs::create_directory_symlink("elsewhere", "out");
     },
     "", "in/x/b.pdf: the output folder out was exchanged for another one", 0},
};

INSTANTIATE_TEST_SUITE_P(Diversions, Diverted, testing::ValuesIn(diversions),
                         [](const auto& info) { return info.param.name; });

TEST_F(ManyInputs, LeaveForeignFilesAlone)
{
    const std::map<std::string, std::string> theirs = {
        {"out/a.pdf.bak.vantora-7", "somebody's"},
        {"out/a.pdf.bak", "somebody else's"},
        {"out/.karvel-save-1-my-important.tmp", "important"},
        {"out/.karvel-save-1-0123456789abcdef.tmp", "important, too"},
    };
    for (const auto& [path, content] : theirs) {
        scratch.write(path, content);
    }
    EXPECT_EQ(run("missing.pdf").status, 1);
    const auto inPlace = terminal::run("run -p 1 -r out in -i --backup -j 0");
    EXPECT_EQ(inPlace.status, 1) << "what is called like the backup of out/a.pdf is none";
    for (const auto& [path, content] : theirs) {
        EXPECT_EQ(support::readFile(path), content) << path;
    }
}

TEST_F(ManyInputs, HandTheirPrivacyOn)
{
    const mode_t before = ::umask(022);
    ::chmod("in/a.pdf", 0600);
    ::chmod("in/x/b.pdf", 0640);
    scratch.write("out/a.pdf", "open to all");
    ::chmod("out/a.pdf", 0644);
    EXPECT_EQ(run("--rename --report report").status, 0);
    EXPECT_EQ(run("--overwrite").status, 0);
    ::umask(before);
    const std::pair<const char*, int> rows[] = {
        {"out/a.pdf", 0600},     {"out/a (1).pdf", 0600}, {"out/x/b.pdf", 0640},
        {"out/x/y/c.pdf", 0644}, {"report", 0640},
    };
    for (const auto& [path, mode] : rows) {
        EXPECT_EQ(fs::status(path).permissions(), fs::perms(mode)) << path;
    }
}

} // namespace
