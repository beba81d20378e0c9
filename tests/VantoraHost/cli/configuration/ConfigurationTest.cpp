#include "VantoraHost/cli/CommandLine.h"
#include "VantoraHost/cli/configuration/ConfigurableOptions.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/VantoraHost/cli/Terminal.h"
#include "tests/VantoraHost/cli/configuration/Meaning.h"
#include "tests/support/AsNobody.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using namespace vantora::cli;
using support::runCommand;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// A person with a configuration of their own.
class Configured : public InOwnFolder {
protected:
    Configured()
    {
        home.set("XDG_CONFIG_HOME", QString::fromStdString(scratch.path("config")));
        fs::create_directories(scratch.path("config/vantora"));
    }

    void writeFile(const std::string& text) const
    {
        std::ofstream(file) << text;
        fs::permissions(file, fs::perms(0644));
    }

    std::string mistakeOf(const std::string& line) const
    {
        const auto command = parse(terminal::words(line));
        return command ? "" : mistakeText(command.error(), {});
    }

    ScratchHome home;
    const std::string file = scratch.path("config/vantora/vantora.toml");
};

// What a command line comes to, with what a configuration says about it.
std::string meaningOf(const std::string& line)
{
    return support::meaningOf(parse(terminal::words(line)));
}

struct Meaning {
    const char* name;
    const char* file;
    const char* line;
    const char* sameAs; ///< the line that says it all by itself
};

const std::string dots(12000, '.'); // more than keys may have
const std::string dotsInTexts = "# " + dots +
                                "\ndirectory = 'cut' # '\n[profile.p]\nchoose = [\"text:\\\"" +
                                dots + "\", '" + dots + "', \"\"\"" + dots + "\"\"\"\"\"]";

// So many that their tables would not fit on a stack.
std::string keyOfManyParts()
{
    std::string key = "a";
    for (int part = 1; part < 32000; ++part) {
        key += ".a";
    }
    return key;
}

TEST_F(Configured, ARunIsWhatTheCommandLineThenTheProfileThenTheFileSay)
{
    const Meaning rows[] = {
        {"what stands outside holds for all", "directory = 'cut'\njobs = 3\ntimeout = '2m'",
         "run -p 1 a", "run -p 1 a -d cut -j 3 --timeout 2m"},
        {"numbers and texts are amounts", "memory-limit = 4096\njobs = '2'", "run -p 1 a -n",
         "run -p 1 a -n --memory-limit 4096 -j 2"},
        {"an option takes the place of the same one", "directory = 'cut'\njobs = 3",
         "run -p 1 a -d other -j 1", "run -p 1 a -d other -j 1"},
        {"another destination does, too, with the name that goes with it",
         "directory = 'cut'\nname = '{name}-cut{ext}'", "run -p 1 a -o b", "run -p 1 a -o b"},
        {"a name goes with a folder of the command line", "name = 'x{ext}'", "run -p 1 a -d b",
         "run -p 1 a -d b --name x{ext}"},
        {"a backup goes with --in-place", "backup = true", "run -p 1 a -i",
         "run -p 1 a -i --backup"},
        {"and with nothing else", "backup = true", "run -p 1 a -d b", "run -p 1 a -d b"},
        {"a flag is switched off", "verify = true\nstrict = true", "run -p 1 a -n --no-verify",
         "run -p 1 a -n --strict"},
        {"one that is off anyway can be switched off", "", "run -p 1 a -n --no-verify",
         "run -p 1 a -n"},
        {"-v takes the place of quiet", "quiet = true", "run -p 1 a -n -v", "run -p 1 a -n -v"},
        {"--overwrite takes the place of rename", "rename = true", "run -p 1 a -d b --overwrite",
         "run -p 1 a -d b --overwrite"},
        {"a pipe has no worker, no folder and no JSON between",
         "jobs = 2\ntimeout = 9\ndirectory = 'b'\njson = true\nskip-existing = true",
         "run -p 1 - -o -", "run -p 1 - -o -"},
        {"no worker has no limit", "timeout = 9", "run -p 1 a -n -j 0", "run -p 1 a -n -j 0"},
        {"one output has no subfolders", "recursive = true", "run -p 1 a -o b", "run -p 1 a -o b"},
        {"a profile goes before what stands outside",
         "directory = 'a'\nquiet = true\njson = true\n"
         "[profile.p]\ndirectory = 'b'\nverbose = true\njson = false",
         "run -p 1 a --profile p", "run -p 1 a -d b -v"},
        {"a profile that isn't named says nothing", "[profile.p]\npages = '1'\ndirectory = 'b'",
         "run -p 2 a -n", "run -p 2 a -n"},
        {"steps follow each other as in the file",
         "[profile.'my scans']\nlist = 'A'\naction = 'B'\nset = ['x=1', 'y=[1,2]']\npages = '3'",
         "run a -n --profile 'my scans'",
         "run a -n --list A --action B --set x=1 --set y=[1,2] -p 3"},
        {"several of a kind stand in a list", "[profile.p]\nchoose = ['blank', 'text:a, b']",
         "run a -n --profile p", "run a -n --choose blank --choose 'text:a, b'"},
        {"steps of the command line take the place of all of a profile's",
         "[profile.p]\nchoose = 'blank'\nexcept = 'first'\nverify = true",
         "run a -n --profile p -p 1", "run a -n -p 1 --verify"},
        {"so does a list of ranges", "[profile.p]\npages = '1'", "run a -n --profile p --ranges b",
         "run a -n --ranges b"},
        {"what is repeated is replaced, not added to",
         "[profile.p]\nresume = ['a', 'b']\naccept-failures = 'empty'",
         "run -p 1 a -n --profile p --resume c --accept-failures signed,empty",
         "run -p 1 a -n --resume c --accept-failures signed,empty"},
        {"records go with a run, not with a dry one",
         "report-hashes = true\n[profile.p]\ncertificate = 'c'\nchecksums = 'd'\nreport = 'r'",
         "run -p 1 a -n --profile p", "run -p 1 a -n --report r --report-hashes"},
        {"hashes go with a report only", "report-hashes = true", "run -p 1 a -n", "run -p 1 a -n"},
        {"values that look like options are values", "directory = '--in-place'", "run -p 1 a",
         "run -p 1 a --directory=--in-place"},
        {"inputs that look like options are inputs", "directory = 'b'", "run -p 1 -- --strict",
         "run -p 1 -d b -- --strict"},
        {"dots in texts and comments are no parts of keys", dotsInTexts.c_str(), "run -p 1 a",
         "run -p 1 a -d cut"},
        {"a file can be passed over", "directory = 'b'\nstrict = true", "run -p 1 a -n --no-config",
         "run -p 1 a -n"},
    };
    for (const Meaning& row : rows) {
        SCOPED_TRACE(row.name);
        writeFile("");
        const std::string expected = meaningOf(row.sameAs);
        EXPECT_THAT(expected, HasSubstr(" taken "));
        writeFile(row.file);
        EXPECT_EQ(meaningOf(row.line), expected);
    }
}

TEST_F(Configured, PathsMayBeginWithTheHomeFolder)
{
    writeFile("directory = '~/cut'\npassword-file = 'a~/b'");
    EXPECT_EQ(meaningOf("run -p 1 a"), meaningOf("run -p 1 a --no-config --password-file a~/b -d " +
                                                 home.home().toStdString() + "/cut"));
}

TEST_F(Configured, AWatchTakesWhatItHasAnOptionFor)
{
    writeFile("strict = true\ntimeout = '2m'\nrecursive = true\nname = '{name}-cut{ext}'\n"
              "[profile.p]\npages = '1'\ndirectory = 'cut'\ncertificate = 'c'\nreport = 'r'\n");
    const auto command = parse(terminal::words("watch in --profile p --no-strict"));
    ASSERT_TRUE(command) << command.error().text;
    const auto& watch = std::get<WatchOptions>(*command);
    EXPECT_THAT(watch.folders, ElementsAre("in"));
    EXPECT_EQ(watch.outputs, "cut");
    EXPECT_EQ(watch.run.steps.size(), 1U);
    EXPECT_EQ(watch.run.workers.timeout, 120);
    EXPECT_EQ(watch.run.reportPath, "r");
    EXPECT_FALSE(watch.run.strict);
    EXPECT_FALSE(watch.run.certificates);
    writeFile("\nname = '{number}{ext}'\n");
    EXPECT_THAT(mistakeOf("watch in -d cut -p 1"), StartsWith(file + ":2: --name takes {name}"));
}

struct FileMistake {
    const char* name;
    const char* file;
    int line; ///< 0: none is named
    const char* says;
};

TEST_F(Configured, AMistakeInTheFileIsNamedWithItsLine)
{
    const std::string deepKey = "jobs = 2\n" + keyOfManyParts() + " = 1";
    const std::string deepTable = "jobs = 2\n[" + keyOfManyParts() + "]\n";
    const FileMistake rows[] = {
        {"no TOML", "jobs = 2\nverify true\n", 2, "is no TOML: "},
        {"not UTF-8", "name = '\xff'", 1, "is no TOML: "},
        {"a key twice", "jobs = 1\n\njobs = 2", 3, "is no TOML: "},
        {"nested too deeply", "\njobs = [[[[[[[[[[[[[[", 2, "is no TOML: "},
        {"a key of many parts", deepKey.c_str(), 2, "keys have more parts"},
        {"a table of many parts", deepTable.c_str(), 2, "keys have more parts"},
        {"a word with what turns the line round", "verify = tru\u202e", 1, "\\u202e"},
        {"a misspelt option", "jobs = 2\ntimeuot = 5", 2, "\"timeuot\"; did you mean timeout?"},
        {"no option at all", "colour = 'red'", 1, "vantora config --example prints all"},
        {"a name that reaches for the terminal", "\"\\u001b[2J\" = 1", 1, "\"\\x1b[2J\""},
        {"a flag that is a number", "verify = 1", 1, "verify takes true or false, such as true"},
        {"a text that is a flag", "\ndirectory = true", 2, "a text in quotes, such as \"cut\""},
        {"an amount below nothing", "jobs = -1", 1, "jobs takes a number"},
        {"an amount with a fraction", "jobs = 1.5", 1, "jobs takes a number"},
        {"a list where one is meant", "directory = ['a', 'b']", 1, "directory takes a text"},
        {"a list of numbers", "[profile.p]\nchoose = [1]", 2, "or a list of them in brackets"},
        {"nothing between the quotes", "directory = ''", 1, "is empty"},
        {"a character that nobody sees", "directory = \"a\\u0000b\"", 1, "control character"},
        {"no time limit", "timeout = '0s'", 1, "lifts a protection"},
        {"no workers", "jobs = 0", 1, "only the command line"},
        {"what replaces files", "\noverwrite = true", 2, "for the command line only"},
        {"what replaces inputs", "[profile.p]\nin-place = true", 2, "is said each time"},
        {"what loses content", "[profile.p]\nsalvage = true", 2, "is said each time"},
        {"inputs", "files-from = 'a'", 1, "what a run works on"},
        {"pages for all runs", "pages = '1'", 1, "for profiles only"},
        {"failures that never count", "accept-failures = 'empty'", 1, "for profiles only"},
        {"a profile without a name", "profile = 'scans'", 1, "[profile.scans]"},
        {"a profile that is a text", "[profile]\nscans = 'a'", 2, "[profile.scans]"},
        {"a protection switched off unseen", "verify = true\n[profile.p]\nverify = false", 3,
         "switched on for all runs by line 1, and only the command line switches that off, with "
         "--no-verify"},
        {"a time without a number", "\ntimeout = 'soon'", 2, "--timeout takes seconds"},
        {"too many workers", "jobs = 5000", 1, "-j takes a number"},
        {"a size of another unit", "\n\nmemory-limit = '5q'", 3, "--memory-limit takes a size"},
        {"a name of unknown parts", "directory = 'a'\nname = '{date}'", 2, "the name takes {name}"},
        {"two that exclude each other", "quiet = true\nverbose = true", 1, "exclude each other"},
        {"two that name outputs", "rename = true\nskip-existing = true", 2, "--rename would"},
        {"no way for the empty", "[profile.p]\nif-empty = 'never'", 2, "blank, skip or fail"},
        {"a failure of no kind", "[profile.p]\naccept-failures = 'emty'", 2, "did you mean empty?"},
        {"steps that exclude each other", "[profile.p]\npages = '1'\nchoose = 'blank'", 3,
         "leave out --pages"},
        {"an option of nothing", "[profile.p]\nset = 'a=1'", 2, "before any --action"},
        {"an unknown profile", "[profile.q]\n[profile.scans]\n", 0,
         "no profile \"p\"; did you mean q?"},
    };
    for (const FileMistake& row : rows) {
        SCOPED_TRACE(row.name);
        writeFile(row.file);
        const std::string start =
            file + ":" + (row.line > 0 ? std::to_string(row.line) + ": " : "");
        const bool hasProfile =
            std::string(row.file).find("[profile") != std::string::npos || row.line == 0;
        const std::string profile = hasProfile ? " --profile p" : "";
        const bool hasSteps =
            mistakeOf("run a -d b" + profile).find("nothing to do") == std::string::npos;
        for (const std::string& line :
             {"run a -d b" + profile + (hasSteps ? "" : " -p 1"), "config" + profile}) {
            SCOPED_TRACE(line);
            const auto answer = terminal::run(line);
            EXPECT_EQ(answer.status, 2);
            EXPECT_EQ(answer.out, "");
            EXPECT_THAT(answer.err, AllOf(StartsWith("vantora: "), HasSubstr(row.says)));
            EXPECT_EQ(terminal::lines(answer.err).size(), 1U);
            EXPECT_EQ(answer.err.find(file), std::string("vantora: ").size());
            EXPECT_EQ(answer.err.rfind(file), answer.err.find(file));
            EXPECT_THAT(answer.err, HasSubstr(start));
        }
    }
}

TEST_F(Configured, AMistakeOfTheCommandLineIsNotBlamedOnTheFile)
{
    writeFile("directory = 'b'\nstrict = true");
    EXPECT_THAT(mistakeOf("run -p 1 a -j many"), StartsWith("-j takes"));
    EXPECT_THAT(mistakeOf("run -p 1 a --verify --no-verify"),
                StartsWith("--verify excludes --no-verify"));
    EXPECT_THAT(mistakeOf("run -p 1 a -n --no-config --profile p"), HasSubstr("excludes"));
}

TEST_F(Configured, AFileThatOthersCanChangeIsRefused)
{
    const std::string line = "run -p 1 in.pdf -n";
    scratch.write("in.pdf", support::documentOfPages(2));
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"chmod go-w",
         [&] {
             writeFile("strict = true");
             fs::permissions(file, fs::perms(0664));
         }},
        {"chmod go-w", [&] { fs::permissions(file, fs::perms(0646)); }},
        {"no regular file",
         [&] {
             fs::remove(file);
             ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
         }},
        {"no regular file",
         [&] {
             fs::remove(file);
             fs::create_directory(file);
         }},
        {"64 KiB",
         [&] {
             fs::remove(file);
             writeFile("strict = true\n" + std::string(64 << 10, '#'));
         }},
    };
    for (const auto& [says, make] : rows) {
        make();
        const auto answer = terminal::run(line);
        EXPECT_EQ(answer.status, 2);
        EXPECT_THAT(answer.err, AllOf(StartsWith("vantora: " + file + ": "), HasSubstr(says),
                                      HasSubstr("--no-config")));
        EXPECT_EQ(terminal::run(line + " --no-config").status, 0);
    }
}

TEST_F(Configured, AFileOfAnotherUserIsRefusedAndOneOfTheAdministratorsIsNot)
{
    if (::geteuid() != 0) {
        return; // there is nobody else to give files to
    }
    writeFile("directory = 'cut'");
    ASSERT_EQ(::chown(file.c_str(), 12345, 12345), 0);
    EXPECT_THAT(mistakeOf("run -p 1 a"), HasSubstr("belongs to another user"));
    ASSERT_EQ(::chown(file.c_str(), 0, 0), 0);
    for (const std::string& folder :
         {scratch.path(""), scratch.path("config"), scratch.path("config/vantora")}) {
        fs::permissions(folder, fs::perms(0755));
    }
    const support::AsNobody nobody;
    ASSERT_TRUE(nobody);
    EXPECT_EQ(mistakeOf("run -p 1 a"), "");
}

TEST_F(Configured, ALinkToAFileIsFollowed)
{
    scratch.write("mine.toml", "directory = 'cut'\n");
    fs::create_symlink(scratch.path("mine.toml"), file);
    EXPECT_EQ(mistakeOf("run -p 1 a"), "");
}

TEST_F(Configured, TheFileIsFoundInTheHomeFolderWhereNoOtherPlaceIsSet)
{
    const fs::path folder = home.home().toStdString() + "/.config/vantora";
    fs::create_directories(folder);
    std::ofstream(folder / "vantora.toml") << "directory = 'cut'\n";
    for (const char* unset : {"", "relative/config"}) {
        home.set("XDG_CONFIG_HOME", unset);
        EXPECT_EQ(mistakeOf("run -p 1 a"), "");
        EXPECT_THAT(terminal::run("config").out, StartsWith("file: " + folder.native()));
    }
}

TEST_F(Configured, WithoutAFileThereIsNoProfile)
{
    EXPECT_EQ(mistakeOf("run -p 1 a --profile scans"),
              file + ": there is no such file, and so no profile \"scans\"; vantora config "
                     "--example prints one to begin with");
}

TEST_F(Configured, TheConfigurationIsShownWithWhereItComesFrom)
{
    writeFile("strict = true\ndirectory = 'cut'\n[profile.scans]\nchoose = ['blank', 'last:2']\n"
              "directory = 'clean'\n");
    const std::string all = terminal::run("config").out;
    const std::string scans = terminal::run("config --profile scans").out;
    EXPECT_THAT(all, StartsWith("file: " + file + "\nprofiles: scans\n\n"));
    EXPECT_THAT(all, HasSubstr("\ndirectory        cut                     line 2\n"));
    EXPECT_THAT(all, HasSubstr("\nstrict           true                    line 1\n"));
    EXPECT_THAT(all, HasSubstr("\nchoose           -                       default\n"));
    EXPECT_THAT(all, HasSubstr("\ntimeout          5m                      default\n"));
    EXPECT_THAT(scans,
                HasSubstr("\ndirectory        clean                   profile scans, line 5\n"));
    EXPECT_THAT(scans,
                HasSubstr("\nchoose           blank, last:2           profile scans, line 4\n"));
    EXPECT_THAT(scans, HasSubstr("\nstrict           true                    line 1\n"));

    const auto objects = terminal::objects(terminal::run("config --profile scans --json").out);
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(objects[0]["profile"].toString(), "scans");
    std::map<std::string, QJsonObject> options;
    for (const QJsonValue& option : objects[0]["options"].toArray()) {
        options[option["option"].toString().toStdString()] = option.toObject();
    }
    EXPECT_EQ(options["directory"]["line"].toInt(), 5);
    EXPECT_EQ(options["directory"]["origin"].toString(), "profile");
    EXPECT_EQ(options["choose"]["value"].toArray().size(), 2);
    EXPECT_EQ(options["strict"]["origin"].toString(), "file");
    EXPECT_TRUE(options["verify"]["line"].isNull());
    EXPECT_EQ(options["verify"]["origin"].toString(), "default");
}

TEST_F(Configured, TheExampleIsAConfigurationInWhichEveryLineHolds)
{
    const std::vector<std::string> example = terminal::lines(terminal::run("config --example").out);
    std::size_t tried = 0;
    for (const std::string& line : example) {
        const std::string value = line.substr(std::min<std::size_t>(1, line.size()));
        if (!std::regex_match(value, std::regex("[a-z-]+ = .*"))) {
            continue;
        }
        SCOPED_TRACE(line);
        ++tried;
        const std::string option = value.substr(0, value.find(' '));
        const bool anywhere = configurableOption(option)->place == Place::Anywhere;
        const std::string before = option == "set" ? "action = 'A'\n" : "";
        writeFile((anywhere ? "" : "[profile.scans]\n") + before + value + "\n");
        const auto answer = terminal::run(anywhere ? "config" : "config --profile scans");
        EXPECT_EQ(answer.err, "");
        EXPECT_THAT(answer.out,
                    HasSubstr("line " + std::to_string(!anywhere + !before.empty() + 1)));
    }
    EXPECT_EQ(tried, configurableOptions().size());
}

TEST_F(Configured, EveryOptionOfRunIsForTheFileOrHasAReasonNotToBe)
{
    const std::string help = terminal::run("run --help").out;
    const std::regex pattern("\n  (?:-.,)?--(?:\\[no-\\])?([a-z-]+)");
    std::set<std::string> options(std::sregex_token_iterator(help.begin(), help.end(), pattern, 1),
                                  {});
    EXPECT_EQ(options.erase("help") + options.erase("profile") + options.erase("no-config"), 3U);
    for (const std::string& option : options) {
        EXPECT_TRUE((configurableOption(option) != nullptr) !=
                    (whyNotConfigurable(option) != nullptr))
            << option;
    }
    for (const std::string& name : configurableNames()) {
        EXPECT_EQ(options.count(name), 1U) << name;
    }
}

TEST_F(Configured, TheProgramDoesWhatItsProfileSays)
{
    fs::create_directory("cut");
    scratch.write("in.pdf", support::documentOfPages(4));
    writeFile(
        "jobs = 2\n[profile.scans]\npages = '2-3'\ndirectory = 'cut'\nname = '{name}-2{ext}'\n");
    const auto answer = runCommand(BUILT_PROGRAM " run --profile scans in.pdf");
    EXPECT_EQ(answer.status, 0) << answer.output;
    EXPECT_EQ(support::pageTexts(support::readFile("cut/in-2.pdf")).size(), 2U);
}

} // namespace
