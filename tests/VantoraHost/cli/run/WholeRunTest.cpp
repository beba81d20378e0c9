#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraApp/settings/SettingsFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <set>

// What actions see of a run, wherever its documents are done.
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;

/// A document with so much behind it that a dozen are worth several workers.
std::string largeDocument(int pages)
{
    const std::string document = support::documentOfPages(pages);
    return document + "%" + std::string(4'000'000, ' ') + "\n" +
           document.substr(document.rfind("startxref"));
}

class WholeRun : public InOwnFolder {
protected:
    WholeRun()
    {
        std::signal(SIGPIPE, SIG_IGN); // as the program does
        fs::create_directory("out");
        for (int number = 1; number <= documents; ++number) {
            // The pages tell the document's place in the run.
            names.push_back("d" + std::to_string(100 + number) + ".pdf");
            scratch.write(names.back(), largeDocument(number + 1));
        }
        QVariantMap options = {{"ActionName", "Delete Pages"}, {"byPageRangeTextEdit", "1"}};
        for (const char* key : {"log", "processes", "pages"}) {
            options.insert(key, QString("out/") + key);
        }
        EXPECT_TRUE(WriteSettingsFile("known.tsf", {{"ToolSettings", options}}));
    }

    terminal::Answer run(const std::string& options) const
    {
        terminal::Setting setting;
        setting.actionFolders = {SCRIPTED_KNOWN_ACTION_FOLDER, SCRIPTED_ACTION_FOLDER};
        std::string line = "run -d out --overwrite " + options;
        for (const std::string& name : names) {
            line += " " + name;
        }
        for (const char* file : {"log", "processes", "pages"}) {
            fs::remove(file);
        }
        const auto answer = terminal::run(line, setting);
        for (const std::string file : {"log", "processes", "pages"}) { // workers write nowhere else
            std::error_code missing;
            fs::rename("out/" + file, file, missing);
        }
        return answer;
    }

    static std::vector<std::string> linesOf(const char* file)
    {
        return terminal::lines(support::readFile(file));
    }

    static constexpr int documents = 12;
    static constexpr const char* unknown =
        " --action Scripted --set log=out/log --set processes=out/processes --set pages=out/pages ";
    std::vector<std::string> names;
};

TEST_F(WholeRun, BeginsAndEndsOnceForEveryAction)
{
    const struct {
        const char* name;
        std::string options;
        std::size_t steps;
        bool elsewhere; ///< whether documents are done where the action isn't told of the run
        bool inOrder;
    } rows[] = {
        {"a known action, no worker", "--settings known.tsf -j 0", 1, false, true},
        {"a known action, one worker", "--settings known.tsf -j 1", 1, true, true},
        {"a known action, four workers", "--settings known.tsf -j 4", 1, true, false},
        {"another action, no worker", std::string(unknown) + "-j 0", 1, false, true},
        {"another action, one worker", std::string(unknown) + "-j 1", 1, false, true},
        {"another action, four workers", std::string(unknown) + "-j 4", 1, false, true},
        {"both, four workers", "--settings known.tsf" + std::string(unknown) + "-j 4", 2, false,
         true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto answer = run(row.options);
        EXPECT_EQ(answer.status, 0) << answer.err;
        const std::vector<std::string> calls = linesOf("log");
        const auto steps = static_cast<std::ptrdiff_t>(row.steps);
        ASSERT_EQ(calls.size(), row.steps * (documents + 2));
        EXPECT_THAT(std::vector<std::string>(calls.begin(), calls.begin() + steps), Each("begin"));
        EXPECT_THAT(std::vector<std::string>(calls.begin() + steps, calls.end() - steps),
                    Each("work"));
        EXPECT_THAT(std::vector<std::string>(calls.end() - steps, calls.end()), Each("end"));

        std::vector<int> pages;
        for (const std::string& line : linesOf("pages")) {
            if (row.steps == 1) {
                pages.push_back(std::stoi(line));
            }
        }
        EXPECT_TRUE(!row.inOrder || std::is_sorted(pages.begin(), pages.end()));
        const std::vector<std::string> lines = linesOf("processes");
        const std::set<std::string> processes(lines.begin(), lines.end());
        if (row.elsewhere) {
            EXPECT_GE(processes.size(), 2U);
            EXPECT_EQ(lines.front(), lines.back()) << "the run itself tells it";
        } else {
            EXPECT_EQ(processes.size(), 1U);
        }
    }
}

struct Mishap {
    const char* name;
    const char* work;
    const char* options;
    const char* says;
    bool told = false; ///< whether the action still hears that the run is over
};

class WorkerThatSeesTheRun : public WholeRun, public testing::WithParamInterface<Mishap> {};

TEST_P(WorkerThatSeesTheRun, EndsItForWhatFollows)
{
    const auto answer = run(std::string(GetParam().options) + unknown +
                            "--set 'work=" + GetParam().work + " at a document of 2 pages'");
    EXPECT_EQ(answer.status, 1);
    const auto lines = terminal::lines(answer.err);
    EXPECT_THAT(lines, Contains(AllOf(HasSubstr("error: d101.pdf: "), HasSubstr(GetParam().says))));
    for (std::size_t i = 1; i < names.size(); ++i) {
        EXPECT_THAT(lines, Contains(HasSubstr("error: " + names[i] +
                                              ": not done: the run ended with its one worker "
                                              "process over d101.pdf; ")));
    }
    EXPECT_TRUE(fs::is_empty("out"));
    const auto calls = linesOf("log");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "begin"), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "end"), GetParam().told ? 1 : 0);
    EXPECT_EQ(answer.err.find("the actions were not told that the run is over") ==
                  std::string::npos,
              GetParam().told);
}

const std::vector<Mishap> mishaps = {
    {"it_crashes", "crash", "", "at it ended: Aborted"},
    {"it_is_killed", "be killed", "-j 4", "at it ended: Killed"},
    {"it_leaves", "leave", "", "at it ended: exit status 3"},
    {"it_is_asked_to_end", "be asked to end", "", "at it ended: Terminated", true},
    {"it_hangs", "hang", "--timeout 1", "longer than 1 second"},
};

INSTANTIATE_TEST_SUITE_P(Faults, WorkerThatSeesTheRun, testing::ValuesIn(mishaps),
                         [](const auto& info) { return info.param.name; });

TEST_F(WholeRun, SaysWhenItsWorkerDoesNotOutliveTheEnd)
{
    for (const char* how : {"--set end=crash", "--set end=hang --timeout 1"}) {
        SCOPED_TRACE(how);
        const auto answer = run(std::string(unknown) + how);
        EXPECT_EQ(answer.status, 1);
        EXPECT_THAT(answer.err, HasSubstr("12 of 12 documents done"));
        EXPECT_THAT(answer.err, HasSubstr("error: the actions were not told that the run is over: "
                                          "the worker process ended: "));
        EXPECT_EQ(terminal::contents("out").size(), names.size());
    }
}

TEST_F(WholeRun, IsNotBegunTwice)
{
    const auto answer = run(std::string(unknown) + "--set begin=crash");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("worker processes end before they begin: Aborted"));
    EXPECT_EQ(linesOf("log"), std::vector<std::string>{"begin"});
}

#ifndef VANTORA_SANITIZED
TEST_F(WholeRun, GoesOnWhenADocumentNeedsTooMuchMemory)
{
    const auto answer = run("--memory-limit 200M" + std::string(unknown) +
                            "--set 'work=eat memory at a document of 2 pages'");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("11 of 12 documents done, 1 failed"));
    EXPECT_THAT(linesOf("log"), Contains("end"));
}
#endif

} // namespace
