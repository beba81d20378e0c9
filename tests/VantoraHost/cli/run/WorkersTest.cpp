#include "tests/VantoraHost/cli/Terminal.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

// Runs in worker processes, and what they cost when something happens to one.
namespace {

namespace fs = std::filesystem;
using support::documentOfPages;
using support::pagesNamed;
using support::pageTexts;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Workers : public InOwnFolder {
protected:
    Workers()
    {
        std::signal(SIGPIPE, SIG_IGN); // as the program does
        fs::create_directory("out");
        for (int number = 1; number <= documents; ++number) {
            // The one in the middle has two pages, which is what the scripted action looks for.
            names.push_back("d" + std::to_string(100 + number) + ".pdf");
            scratch.write(names.back(), documentOfPages(number == victim ? 2 : 4));
        }
    }

    terminal::Answer run(const std::string& options, const terminal::Setting& setting = {}) const
    {
        std::string line = "run -d out " + options;
        for (const std::string& name : names) {
            line += " " + name;
        }
        return terminal::run(line, setting);
    }

    /// So many documents that workers are the program, started anew, and no copies of this process.
    void takeThousands()
    {
        for (int number = 1; number <= 1000; ++number) {
            names.push_back("m" + std::to_string(number) + ".pdf");
            fs::create_hard_link(names.front(), names.back());
        }
    }

    /// A run of an action that the host knows, and that at one document does something unexpected.
    terminal::Answer runScripted(const std::string& work, const std::string& more = {}) const
    {
        return runScriptedAtAll(work + " at a document of 2 pages", more);
    }

    terminal::Answer runScriptedAtAll(const std::string& work, const std::string& more) const
    {
        terminal::Setting setting;
        setting.actionFolders = {SCRIPTED_KNOWN_ACTION_FOLDER};
        const QString how = QString::fromStdString(work);
        EXPECT_TRUE(WriteSettingsFile("scripted.tsf",
                                      {{"ToolSettings", QVariantMap{{"ActionName", "Delete Pages"},
                                                                    {"byPageRangeTextEdit", "1"},
                                                                    {"log", "out/log"},
                                                                    {"work", how}}}}));
        const auto answer = run(more + " --settings scripted.tsf", setting);
        for (const char* log : {"log", "log.once"}) { // workers may write nowhere else
            std::error_code missing;
            fs::rename(std::string("out/") + log, log, missing);
        }
        return answer;
    }

    void expectAllDoneBut(const std::string& missing) const
    {
        for (const std::string& name : names) {
            EXPECT_EQ(fs::exists("out/" + name), name != missing) << name;
        }
        const auto left = terminal::contents("out");
        EXPECT_EQ(left.size(), names.size() - (missing.empty() ? 0 : 1)) << "temporary files?";
        for (const auto& [path, content] : left) {
            EXPECT_EQ(support::problems(content), "") << path;
        }
    }

    // Eight at a time go to a worker; the victim is in the second group.
    static constexpr int documents = 20;
    static constexpr int victim = 12;
    std::vector<std::string> names;
};

TEST_F(Workers, DoDocumentsAndReportThemInTheOrderOfTheInputs)
{
    for (const char* jobs : {"1", "3"}) {
        const auto answer = run(std::string("-p 2 --overwrite -j ") + jobs);
        EXPECT_EQ(answer.status, 0) << answer.err;
        const auto lines = terminal::lines(answer.out);
        ASSERT_EQ(lines.size(), names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_THAT(lines[i], testing::StartsWith(names[i] + " -> out/" + names[i] + ": 1 of"));
        }
    }
    expectAllDoneBut("");
    EXPECT_EQ(pageTexts(support::readFile("out/" + names[0])), pagesNamed({1, 3, 4}));
}

TEST_F(Workers, GetTheirPasswordsAndSettings)
{
    scratch.write(names[0], support::rewritten(documentOfPages(4), "--encrypt user owner 256 --"));
    scratch.write("passwords", "owner\n");
    const auto answer = run("-p 2 --password-file passwords -n");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_THAT(terminal::lines(answer.out),
                Contains(testing::StartsWith(names[0] + " -> out/" + names[0] +
                                             ": 1 of 4 pages would go (2), 3 left; ")));
    EXPECT_TRUE(fs::is_empty("out"));
}

struct Mishap {
    const char* name;
    const char* work;
    const char* options;
    const char* says;
};

class MishapOfAWorker : public Workers, public testing::WithParamInterface<Mishap> {};

TEST_P(MishapOfAWorker, CostsOnlyItsOwnDocument)
{
    const auto answer = runScripted(GetParam().work, GetParam().options);
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(terminal::lines(answer.err),
                Contains(testing::AllOf(HasSubstr("error: " + names[victim - 1] + ": "),
                                        HasSubstr(GetParam().says))));
    EXPECT_THAT(answer.err, HasSubstr("19 of 20 documents done, 1 failed"));
    expectAllDoneBut(names[victim - 1]);
}

const std::vector<Mishap> mishaps = {
    {"it_crashes", "crash", "", "at it ended: Aborted; so did a fresh one"},
    {"it_is_killed", "be killed", "-j 1", "at it ended: Killed; so did a fresh one"},
    {"it_leaves", "leave", "", "at it ended: exit status 3"},
    {"it_is_asked_to_end", "be asked to end", "-j 1", "ended: Terminated; so did a fresh"},
#ifndef VANTORA_SANITIZED
    {"it_eats_memory", "eat memory", "--memory-limit 200M",
     "more memory than its worker may use, 209 MB"},
#endif
};

INSTANTIATE_TEST_SUITE_P(Faults, MishapOfAWorker, testing::ValuesIn(mishaps),
                         [](const auto& info) { return info.param.name; });

TEST_F(Workers, GiveUpEachDocumentThatTakesTooLong)
{
    names = {names[0], names[1]};
    for (const char* work : {"hang", "be stopped"}) {
        const auto answer = runScriptedAtAll(work, "--timeout 1");
        EXPECT_EQ(answer.status, 1);
        for (const std::string& name : names) {
            EXPECT_THAT(terminal::lines(answer.err),
                        Contains(testing::AllOf(HasSubstr("error: " + name + ": "),
                                                HasSubstr("longer than 1 second;"))));
        }
        EXPECT_TRUE(fs::is_empty("out"));
    }
}

TEST_F(Workers, GetADocumentOnceMoreWhenOneWasEndedByASignal)
{
    for (const char* work : {"crash once", "be killed once", "be asked to end once"}) {
        const auto answer = runScripted(work, "--overwrite");
        EXPECT_EQ(answer.status, 0) << work << ": " << answer.err;
        EXPECT_TRUE(fs::remove("log.once")) << work;
        expectAllDoneBut("");
    }
}

TEST_F(Workers, DoASingleDocument)
{
    names = {names[victim - 1]};
    const auto crashed = runScripted("crash");
    EXPECT_EQ(crashed.status, 1);
    EXPECT_THAT(terminal::lines(crashed.err),
                Contains(AllOf(HasSubstr("error: " + names[0] + ": "),
                               HasSubstr("at it ended: Aborted; so did a fresh one"))));
    EXPECT_TRUE(fs::is_empty("out"));
    const auto done = runScripted("print");
    EXPECT_EQ(done.status, 0) << done.err;
    expectAllDoneBut("");
}

#ifndef VANTORA_SANITIZED
TEST_F(Workers, NeedNoMoreMemoryForADryRunThanForTheRealOne)
{
    const support::Sketch sketch = {
        {"", "/PieceInfo @large"}, "", {{"large", "|" + std::string(120'000'000, ' ')}}};
    scratch.write("large.pdf", sketch.built());
    for (const char* more : {" -n", ""}) {
        const auto answer = terminal::run(
            std::string("run -p 1 -j 1 --memory-limit 200M large.pdf -o out/large.pdf") + more);
        EXPECT_EQ(answer.status, 0) << more << answer.err;
        EXPECT_THAT(answer.out, HasSubstr("1 of 2 pages"));
    }
}
#endif

TEST_F(Workers, TakeWhatActionsPrintForNoAnswer)
{
    const auto answer = runScripted("print");
    EXPECT_EQ(answer.status, 0) << answer.err;
    expectAllDoneBut("");
}

TEST_F(Workers, SayOnceThatAnActionRefusesToBegin)
{
    const auto answer = run("-q --action Scripted --set begin=fail -j 2");
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(terminal::lines(answer.err).size(), 1U) << answer.err;
    EXPECT_TRUE(fs::is_empty("out"));
}

TEST_F(Workers, SayThatAnActionFailsAtTheEnd)
{
    const auto answer = run("--action Scripted --set end=complain");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("Scripted error"));
    expectAllDoneBut("");
}

// Started ones where the plan is made first and is large, else copies of this process.
TEST_F(Workers, DoThousandsOfDocumentsHoweverTheyAreMade)
{
    takeThousands();
    terminal::Setting setting;
    setting.program = "/nowhere/vantora";
    for (const auto& [options, with] :
         {std::pair("-q -p 1 -j 2", setting),
          std::pair("-q -p 1 -j 2 --skip-existing", terminal::Setting())}) {
        const auto answer = run(options, with);
        EXPECT_EQ(answer.status, 0) << answer.err;
        for (const std::string& name : names) {
            EXPECT_TRUE(fs::remove("out/" + name)) << options << ": " << name;
        }
    }
}

TEST_F(Workers, ThatCannotBeStartedEndTheRun)
{
    takeThousands();
    terminal::Setting setting;
    setting.program = "/nowhere/vantora";
    const auto missing = run("-p 1 --skip-existing", setting);
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, HasSubstr("a worker process can't be started: No such file"));
    setting.program = "/bin/false";
    const auto useless = run("-p 1 --skip-existing", setting);
    EXPECT_EQ(useless.status, 1);
    EXPECT_THAT(terminal::lines(useless.err),
                ElementsAre(HasSubstr("end before they begin: exit status 1; -j 0 does without")));
}

TEST_F(Workers, RemoveWhatAKilledRunLeft)
{
    scratch.write("out/" + karvel::io::temporaryName(), "half a document");
    ASSERT_EQ(run("-p 1 -n").status, 0);
    EXPECT_EQ(terminal::contents("out").size(), 1U);
    ASSERT_EQ(run("-p 1").status, 0);
    expectAllDoneBut("");
}

TEST_F(Workers, StopWhenTheRunIsInterrupted)
{
    terminal::Setting setting;
    setting.interrupted = [] { return fs::exists("out/d101.pdf"); };
    const auto answer =
        run("--action Scripted --set 'work=hang at a document of 2 pages' -j 1", setting);
    EXPECT_EQ(answer.status, 130);
    const std::size_t done = terminal::contents("out").size();
    EXPECT_LT(done, static_cast<std::size_t>(victim));
    EXPECT_THAT(answer.err,
                HasSubstr("interrupted: " + std::to_string(done) + " of 20 documents done"));
}

} // namespace
