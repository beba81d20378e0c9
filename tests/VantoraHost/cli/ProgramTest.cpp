#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraApp/settings/SettingsFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/mount.h>
#include <sys/stat.h>

// The program itself: what shows only outside this process.
namespace {

namespace fs = std::filesystem;
using support::runCommand;
using testing::HasSubstr;

const std::string program = BUILT_PROGRAM;

class Program : public InOwnFolder {
protected:
    const std::string tenPages = support::documentOfPages(10);
    const std::string input = scratch.write("in.pdf", tenPages);
};

TEST_F(Program, FindsItsPartsThroughALinkToItAndDoesItsJob)
{
    fs::create_symlink(program, "vantora-link");
    const auto result = runCommand("./vantora-link run -p 2 in.pdf -o out.pdf");
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(support::problems(support::readFile("out.pdf")), "");
    EXPECT_EQ(support::pageTexts(support::readFile("out.pdf")).size(), 9U);
}

TEST_F(Program, WorksWhereItIsInstalled)
{
    const auto installed = runCommand("cmake --install " BUILD_FOLDER " --prefix installed");
    ASSERT_EQ(installed.status, 0) << installed.output;
    const auto result = runCommand("installed/bin/vantora run -p 2 in.pdf -o out.pdf");
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(support::pageTexts(support::readFile("out.pdf")).size(), 9U);
    EXPECT_EQ(runCommand("XDG_DATA_HOME=data installed/bin/vantora lists").output,
              "vantora: no action list is saved\n");
}

TEST_F(Program, NeedsNoLibraryForWindowsUntilItOpensOne)
{
    const auto loaded = [](const std::string& arguments) {
        return runCommand("XDG_DATA_HOME=data LD_DEBUG=libs " + program + " " + arguments).output;
    };
    EXPECT_THAT(loaded("info in.pdf"), testing::Not(HasSubstr("libQt5Gui")));
    EXPECT_THAT(loaded("lists"), HasSubstr("libQt5Gui"));
}

TEST_F(Program, ShowsDialogsWhereThereIsADisplay)
{
    // The offscreen platform never frees its screen, which is no leak of the program's.
    const auto result =
        runCommand("QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0 XDG_RUNTIME_DIR=. "
                   "VANTORA_ACTIONS_PATH=" SCRIPTED_ACTION_FOLDER " " +
                   program + " configure Scripted --inside preview --set dialog=accept");
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_THAT(
        result.output,
        testing::EndsWith("{\"dialog\":\"accept\",\"shown inside\":\"VantoraPreviewClass\"}\n"));
}

TEST_F(Program, KeepsFavouritesWhereThereIsNoDisplay)
{
    // The offscreen platform never frees its screen, which is no leak of the program's.
    const std::string alone = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "
                              "-u XDG_RUNTIME_DIR "
                              "ASAN_OPTIONS=detect_leaks=0 XDG_DATA_HOME=data " +
                              program;
    const auto added = runCommand(alone + " favourites add 'No cover' --pages 1");
    EXPECT_EQ(added.status, 0);
    EXPECT_THAT(added.output, testing::StartsWith("No cover  (Delete Pages, "));
    EXPECT_THAT(support::readFile("data/orvex software/Tollera/Settings/Favorites/No cover.ini"),
                HasSubstr("ActionIcon=\"@Variant("));

    EXPECT_EQ(
        runCommand(alone + " favourites change 'No cover' --set byPageRangeTextEdit=1-9").output,
        added.output.substr(0, added.output.rfind('=')) + "=1-9\n");
    EXPECT_EQ(runCommand(alone + " run --favourite 'No cover' in.pdf -o out.pdf").status, 0);
    EXPECT_EQ(support::pageTexts(support::readFile("out.pdf")), support::pagesNamed({10}));
    EXPECT_EQ(runCommand(alone + " favourites remove 'No cover'").status, 0);
    EXPECT_EQ(runCommand(alone + " favourites").output, "vantora: no favourite is saved\n");
}

TEST_F(Program, SaysInOneLineThatNoDisplayCanBeReached)
{
    const char* const without[] = {
        "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM ",
        "env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM DISPLAY=:4711 ",
        "env QT_QPA_PLATFORM=unheard-of ",
    };
    for (const char* environment : without) {
        const auto result = runCommand(environment + program + " configure 'Delete Pages'");
        EXPECT_EQ(result.status, 1) << environment;
        EXPECT_THAT(result.output, testing::StartsWith("vantora: error: no display can be"));
        EXPECT_EQ(terminal::lines(result.output).size(), 1U) << result.output;
    }
}

TEST_F(Program, AnswersWithItsExitStatus)
{
    EXPECT_EQ(runCommand(program + " --version").status, 0);
    EXPECT_EQ(runCommand(program + " run -p 1 missing.pdf -o out.pdf").status, 1);
    EXPECT_EQ(runCommand(program + " run -p 3-1 in.pdf -o out.pdf").status, 2);
    EXPECT_EQ(runCommand(program).status, 2);
}

TEST_F(Program, PassesDocumentsThroughPipes)
{
    const auto result =
        runCommand("( cat in.pdf | " + program + " run -p 2-9 - -o - 2>messages >out.pdf )");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(support::problems(support::readFile("out.pdf")), "");
    EXPECT_EQ(support::pageTexts(support::readFile("out.pdf")), support::pagesNamed({1, 10}));
    EXPECT_THAT(support::readFile("messages"),
                HasSubstr("standard input -> standard output: 8 of 10 pages removed"));
}

TEST_F(Program, StopsCleanlyWhenInterrupted)
{
    fs::create_directory("out");
    scratch.write("second.pdf", support::documentOfPages(2));
    scratch.write("third.pdf", support::documentOfPages(3));
    const auto result =
        runCommand("VANTORA_ACTIONS_PATH=" SCRIPTED_ACTION_FOLDER " exec " + program +
                   " run -j 0 --action Scripted --set 'work=interrupt at a document of 2 pages'"
                   " in.pdf second.pdf third.pdf -d out");
    EXPECT_EQ(result.status, 130);
    EXPECT_THAT(result.output, HasSubstr("interrupted: 1 of 3 documents done"));
    EXPECT_EQ(terminal::contents("out").size(), 1U);
    EXPECT_TRUE(fs::exists("out/in.pdf"));
}

/// Documents that keep their workers busy for ever, which these tell through a pipe.
TEST_F(Program, IsEndedAtOnceWhileNothingIsWritten)
{
    const struct {
        const char* name;
        const char* inputs;
        const char* options;
        int atWork; ///< documents that are being worked on at once
    } rows[] = {
        {"one document", "in.pdf", "", 1},
        {"one document in a worker", "in.pdf", "-j 1", 1},
        {"several documents in one worker", "in.pdf second.pdf third.pdf", "-j 1", 1},
        {"several documents in two workers", "in.pdf second.pdf third.pdf", "-j 2", 2},
    };
    // So large that a second worker is worth it.
    const std::string large = tenPages + "%" + std::string(4'000'000, ' ') + "\n" +
                              tenPages.substr(tenPages.rfind("startxref"));
    scratch.write("second.pdf", large);
    scratch.write("third.pdf", large);
    ASSERT_TRUE(
        WriteSettingsFile("steps.tsf", {{"ToolSettings", QVariantMap{{"ActionName", "Delete Pages"},
                                                                     {"byPageRangeTextEdit", "1"},
                                                                     {"log", "out/log"},
                                                                     {"work", "hang"}}}}));
    for (const auto& row : rows) {
        for (const char* signal : {"INT", "TERM", "HUP"}) {
            SCOPED_TRACE(std::string(row.name) + ", " + signal);
            fs::remove_all("out");
            fs::create_directory("out");
            ASSERT_EQ(::mkfifo("out/log", 0600), 0);
            // The time only ends a test that has failed.
            const auto result = runCommand(
                std::string("timeout 600 sh -c 'exec 3<>out/log; ") +
                "VANTORA_ACTIONS_PATH=" SCRIPTED_KNOWN_ACTION_FOLDER
                " env --default-signal=INT,TERM,HUP " +
                program + " run --timeout 1h --settings steps.tsf -d out " + row.options + " " +
                row.inputs + " 3>&- & run=$!; left=" + std::to_string(row.atWork) +
                "; while [ $left -gt 0 ]; do read line <&3; [ $line = work ] && left=$((left - 1));"
                " done; kill -" +
                signal + " $run; wait $run'");
            EXPECT_EQ(result.status, 130) << result.output;
            EXPECT_THAT(result.output, HasSubstr("interrupted"));
            EXPECT_EQ(std::distance(fs::directory_iterator("out"), fs::directory_iterator()), 1)
                << "something beside the pipe";
        }
    }
}

TEST_F(Program, LeavesNothingWhereTheFileCannotGrow)
{
    fs::create_directory("out");
    scratch.write("big.pdf", support::documentOfPages(300));
    const auto result = runCommand("ulimit -f 16; trap '' XFSZ; exec " + program +
                                   " run -p 2 in.pdf big.pdf -d out");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("error: big.pdf: the output out/big.pdf: "));
    EXPECT_THAT(result.output, HasSubstr("File too large; check space"));
    EXPECT_EQ(terminal::contents("out").size(), 1U);
    EXPECT_TRUE(fs::exists("out/in.pdf"));
}

TEST_F(Program, LeavesNothingOnADiskThatIsFullOrReadOnly)
{
    fs::create_directory("disk");
    const std::string big = support::documentOfPages(300);
    scratch.write("big.pdf", big);
    const std::pair<unsigned long, const char*> rows[] = {
        {0, "No space left on device; check space"},
        {MS_RDONLY, "Read-only file system; check space and permissions"},
    };
    for (const auto& [flags, reason] : rows) {
        if (::mount("tmpfs", "disk", "tmpfs", flags, "size=32k") != 0) {
            GTEST_SKIP() << "mounting a small disk is not allowed here";
        }
        const auto result = runCommand(program + " run -p 2 big.pdf -d disk");
        const auto left = terminal::contents("disk");
        ::umount("disk");
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.output, HasSubstr("the output disk/big.pdf: "));
        EXPECT_THAT(result.output, HasSubstr(reason));
        EXPECT_TRUE(left.empty());
        EXPECT_EQ(support::readFile("big.pdf"), big);
    }
}

TEST_F(Program, SaysSoWhenAFileCannotKeepItsOwner)
{
    const std::string asNobody = "setpriv --reuid=65534 --regid=65534 --clear-groups " + program;
    fs::permissions(".", fs::perms::all);
    if (runCommand(asNobody + " --version").status != 0) {
        GTEST_SKIP() << "only the administrator can run the program as somebody else";
    }
    const auto result = runCommand(asNobody + " run -p 2 in.pdf --in-place --backup");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("warning: in.pdf: its owner or mode could not be kept"));
    EXPECT_EQ(support::pageTexts(support::readFile("in.pdf")).size(), 9U);
    EXPECT_EQ(support::readFile("in.pdf.bak"), tenPages);
}

TEST_F(Program, NoticesAStandardOutputThatTakesNothing)
{
    const std::pair<const char*, const char*> rows[] = {
        {"info in.pdf >/dev/full", "error: standard output can't be written"},
        {"info in.pdf >&-", "error: standard output can't be written"},
        {"run -p 1 in.pdf -o - >/dev/full", "error: in.pdf: standard output can't be written"},
    };
    for (const auto& [arguments, says] : rows) {
        const auto result = runCommand("( " + program + " " + arguments + " )");
        EXPECT_EQ(result.status, 1) << arguments;
        EXPECT_THAT(result.output, HasSubstr(says)) << arguments;
    }
}

TEST_F(Program, EndsInAnOrderlyWayWhenItsReaderHasGone)
{
    const auto result =
        runCommand("( " + program + " run -p 2 in.pdf -o - 2>messages; echo $? >status ) | true");
    EXPECT_EQ(result.status, 0);
    // The reader may have been quick enough to take it all.
    EXPECT_THAT(support::readFile("status"), testing::AnyOf("0\n", "1\n"));
}

TEST_F(Program, ColoursMessagesOnATerminalUnlessNoColorIsSet)
{
    const std::string command = program + " info missing.pdf";
    const std::string onTerminal = "script -qec '" + command + "' /dev/null";
    EXPECT_THAT(runCommand("NO_COLOR= " + onTerminal).output, HasSubstr("\033[31merror:"));
    EXPECT_THAT(runCommand("NO_COLOR=1 " + onTerminal).output, testing::Not(HasSubstr("\033")));
    EXPECT_THAT(runCommand(command).output, testing::Not(HasSubstr("\033")));
}

} // namespace
