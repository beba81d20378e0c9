#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraHost/cli/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using namespace vantora::cli;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

auto parsed(const std::string& line)
{
    return parse(terminal::words(line));
}

RunOptions parsedRun(const std::string& line)
{
    const auto command = parsed(line);
    if (!command) {
        ADD_FAILURE() << command.error().text;
        return {};
    }
    return std::get<RunOptions>(*command);
}

std::vector<std::string> stepsOf(const std::string& line)
{
    std::vector<std::string> steps;
    for (const NamedStep& step : parsedRun(line).steps) {
        std::string& text = steps.emplace_back(step.action);
        if (step.saved) {
            const char* const kinds[] = {"list ", "favourite ", "settings "};
            text = kinds[static_cast<int>(step.saved->kind)] + step.saved->name;
        }
        for (const auto& [key, value] : step.options) {
            text += " " + key + "=" + value;
        }
    }
    return steps;
}

TEST(RunOptions, SayWhatToDoWithWhat)
{
    const RunOptions options =
        parsedRun("run --pages 1,4-6 a.pdf b.pdf -d out --overwrite -q --json --password-file p");
    ASSERT_EQ(options.steps.size(), 1U);
    EXPECT_EQ(options.steps[0].action, "Delete Pages");
    EXPECT_THAT(options.steps[0].options, ElementsAre(Pair("byPageRangeTextEdit", "1,4-6")));
    EXPECT_THAT(options.inputs.names, ElementsAre("a.pdf", "b.pdf"));
    EXPECT_EQ(std::get<ToFolder>(*options.destination).path, "out");
    EXPECT_EQ(options.passwordFile, "p");
    EXPECT_TRUE(options.quiet && options.json);
    EXPECT_EQ(options.taken, TakenName::Replace);
    EXPECT_FALSE(options.dryRun);
}

TEST(RunOptions, LimitTheWorkers)
{
    const RunOptions options = parsedRun("run -p 1 a -n -j 3 --timeout 2m --memory-limit 1g");
    EXPECT_EQ(options.workers.jobs, 3U);
    EXPECT_EQ(options.workers.timeout, 120);
    EXPECT_EQ(options.workers.memoryLimit, 1073741824U);
    const RunOptions others = parsedRun("run -p 1 a -n");
    EXPECT_FALSE(others.workers.jobs || others.workers.timeout || others.workers.memoryLimit);
}

TEST(RunOptions, MakeARunOneOfSeveral)
{
    const RunOptions options = parsedRun("run -p 1 -r in -d out --name {name}.x --rename --report "
                                         "a --resume a --resume b --shard 2/8");
    EXPECT_TRUE(options.inputs.recursive);
    EXPECT_EQ(std::get<ToFolder>(*options.destination).name->of("c.pdf", 1, 1), "c.x");
    EXPECT_EQ(options.taken, TakenName::Number);
    EXPECT_EQ(options.reportPath, "a");
    EXPECT_THAT(options.resumed, ElementsAre("a", "b"));
    EXPECT_EQ(options.share.number, 2U);
    EXPECT_EQ(options.share.count, 8U);
}

TEST(RunOptions, KeepTheStepsInTheirOrder)
{
    EXPECT_THAT(stepsOf("run --action A --set x=1 --set y=a=b -i --pages 7 in.pdf --action B "
                        "--action C --set z="),
                ElementsAre("A x=1 y=a=b", "Delete Pages byPageRangeTextEdit=7", "B", "C z="));
    EXPECT_THAT(stepsOf("run -n --list 'A b' --settings c.tsf --set x=1 --favourite D --set y=2 "
                        "--list e.xqq in.pdf"),
                ElementsAre("list A b", "settings c.tsf x=1", "favourite D y=2", "list e.xqq"));
}

TEST(ConfigureOptions, SayWhichDialogToShowAndWhere)
{
    const auto command =
        parsed("configure --set a=[1,2] 'Delete Pages' --inside preview --hide-add-to-action-list");
    ASSERT_TRUE(command) << command.error().text;
    const auto& options = std::get<ConfigureOptions>(*command);
    EXPECT_EQ(options.step.action, "Delete Pages");
    EXPECT_THAT(options.step.options, ElementsAre(Pair("a", "[1,2]")));
    EXPECT_EQ(options.place, DialogPlace::Preview);
    EXPECT_TRUE(options.hideAddToActionList);
}

TEST(DesktopOptions, SayWhatToOpenAndWhere)
{
    const auto options = std::get<DesktopOptions>(*parsed("desktop --new-window scans a.pdf"));
    EXPECT_THAT(options.files, ElementsAre("scans", "a.pdf"));
    EXPECT_TRUE(options.newWindow);
    EXPECT_FALSE(std::get<DesktopOptions>(*parsed("desktop scans")).newWindow);
}

TEST(RunOptions, TakeFileNamesAsTheyStand)
{
    EXPECT_THAT(parsedRun("run -n -p 1 [a,b] info caf\xe9.pdf 'a b' -- -x.pdf --json").inputs.names,
                ElementsAre("[a,b]", "info", "caf\xe9.pdf", "a b", "-x.pdf", "--json"));
    EXPECT_THAT(parsedRun("run -p 1 - -o -").inputs.names, ElementsAre("-"));
}

TEST(RunOptions, NameTheDestination)
{
    const auto destination = [](const std::string& more) {
        return *parsedRun("run -p 1 a.pdf " + more).destination;
    };
    EXPECT_EQ(std::get<ToFile>(destination("-o b.pdf")).path, "b.pdf");
    EXPECT_EQ(std::get<ToFile>(destination("--output=b.pdf")).path, "b.pdf");
    EXPECT_TRUE(std::holds_alternative<ToStandardOutput>(destination("-o -")));
    EXPECT_FALSE(std::get<InPlace>(destination("--in-place")).backup);
    EXPECT_TRUE(std::get<InPlace>(destination("--backup -i")).backup);
    EXPECT_FALSE(parsedRun("run -p 1 a.pdf --dry-run").destination);
}

struct Mistake {
    const char* name;
    const char* line;
    const char* says; ///< a part of it
};

TEST(WrongUsageOf, IsOneLineWithStatus2)
{
    const Mistake rows[] = {
        {"an empty folder", "run -p 1 a -d ''", "empty"},
        {"standard input into a folder", "run -p 1 - -d c", "no name"},
        {"a share of unknown size", "run -p 1 a -n --shard 1", "not 1"},
        {"an option without key", "run --action A --set =x a -n", "KEY=VALUE"},
        {"configure with no setting", "configure A --set x", "KEY=VALUE"},
        {"no command", "", "name what to do"},
        {"an unknown command", "walk", "walk"},
        {"an unknown option", "run -p 1 a -o b --wat", "--wat"},
        {"no input", "run -p 1 -o b", "INPUT"},
        {"nothing to do", "run a -o b", "--pages RANGE"},
        {"a missing range", "run a -o b --pages", "--pages"},
        {"no destination", "run -p 1 a", "-o FILE, -d DIR or --in-place"},
        {"two destinations", "run -p 1 a -o b -i", "exclude each other"},
        {"the output twice", "run -p 1 a -o b -o c", "--output"},
        {"one output for two inputs", "run -p 1 a b -o c", "-d DIR"},
        {"one output for a list", "run -p 1 --files-from a -o c", "-d DIR"},
        {"standard input beside a list", "run -p 1 - --files-from a -n", "the one input"},
        {"a list without file", "run -p 1 --files-from '' -n", "name of the list"},
        {"names of no list", "run -p 1 a -n -0", "--files-from"},
        {"an empty output", "run -p 1 a -o ''", "empty"},
        {"standard input in place", "run -p 1 - -i", "no name"},
        {"standard input among others", "run -p 1 - a -n", "the one input"},
        {"a backup of nothing", "run -p 1 a -o b --backup", "--in-place"},
        {"two things on standard output", "run -p 1 a -o - --json", "standard output"},
        {"too many workers", "run -p 1 a -n -j 5000", "0 to 4096"},
        {"half a worker", "run -p 1 a -n -j 1.5", "not 1.5"},
        {"a time without number", "run -p 1 a -n --timeout m", "--timeout takes"},
        {"a size of another unit", "run -p 1 a -n --memory-limit 5q", "512M"},
        {"a worker for standard input", "run -p 1 - -n -j 2", "not for worker processes"},
        {"a limit on no worker", "run -p 1 a -n -j 0 --timeout 5", "-j 0 has none"},
        {"both quiet and not", "run -p 1 a -n -q -v", "-q and -v exclude each other"},
        {"hashes for no report", "run -p 1 a -n --report-hashes", "goes with --report FILE"},
        {"info of names that end so", "info -0 a", "-0 goes with --files-from"},
        {"info of standard input twice", "info - --files-from -", "can be read once only"},
        {"info by so many workers", "info a -j many", "-j takes a number"},
        {"a name for no folder", "run -p 1 a -n --name b", "-d DIR"},
        {"a name of unknown parts", "run -p 1 a -d b --name {date}",
         "--name {date}: the name takes {name}"},
        {"copy names in place", "run -p 1 a -i --rename", "--rename keeps"},
        {"one output for a folder", "run -p 1 -r a -o c", "-d DIR"},
        {"a report without name", "run -p 1 a -n --resume ''", "empty"},
        {"the share 0", "run -p 1 a -n --shard 0/8", "1/8 to 8/8"},
        {"a share too many", "run -p 1 a -n --shard 9/8", "not 9/8"},
        {"no way for the empty", "run -p 1 a -n --if-empty never", "blank, skip or fail"},
        {"a kind of failure that is none", "run -p 1 a -n --accept-failures empty,pasword-needed",
         "not \"pasword-needed\"; did you mean password-needed?"},
        {"existing outputs in place", "run -p 1 a -i --skip-existing", "--skip-existing looks for"},
        {"an option without value", "run --action A --set x a -n", "KEY=VALUE"},
        {"an option of no action", "run --set x=1 --action A a -n", "before any --action"},
        {"an option of a list", "run --list A --set x=1 a -n", "after a --list"},
        {"an option of pages", "run -p 1 --set x=1 a -n", "before any --action"},
        {"ranges without a name", "run a -n --ranges ''", "name of the list of ranges is empty"},
        {"ranges and pages", "run a -n --ranges b -p 1", "leave out --pages"},
        {"ranges and a choice", "run a -n --ranges b --except first", "leave out --pages"},
        {"ranges and a document by one pipe", "run --ranges - - -n", "can be read once only"},
        {"a list without a name", "run a -n --list", "--list"},
        {"configure nothing", "configure", "ACTION"},
        {"configure two actions", "configure A B", "B"},
        {"configure inside nothing", "configure A --inside out", "main-window or preview"},
        {"info of nothing", "info", "FILE"},
        {"actions with arguments", "actions a", "a"},
        {"nothing to watch", "watch -d out -p 1", "FOLDER"},
        {"a watch for nothing", "watch in -d out", "--pages"},
        {"a watch without a place", "watch in -p 1", "-d DIR"},
        {"a watch with numbers", "watch in -d out -p 1 --name {number}", "takes {name} and {ext}"},
        {"a watch that lists all the time", "watch in -d out -p 1 --poll 0", "1 to 86400, not 0"},
        {"a watch that waits for ever", "watch in -d out -p 1 --settle 1e9", "not 1e9"},
        {"a watch in place", "watch in -p 1 -i", "-i"},
        {"help for no command", "help frobnicate", "\"frobnicate\" is no command"}};
    for (const Mistake& row : rows) {
        SCOPED_TRACE(row.name);
        const auto command = parsed(row.line);
        ASSERT_FALSE(command);
        EXPECT_EQ(command.error().status, 2);
        const std::string text = mistakeText(command.error(), {});
        EXPECT_THAT(text, HasSubstr(row.says));
        EXPECT_THAT(text, HasSubstr("--help"));
        EXPECT_EQ(text.find('\n'), std::string::npos);
    }
}

TEST(HelpAndVersion, AreNoMistakes)
{
    const std::pair<const char*, testing::Matcher<std::string>> rows[] = {
        {"--help", HasSubstr("vantora run")},
        {"run --help", HasSubstr("Examples:")},
        {"help", HasSubstr("Commands")},
        {"help run", HasSubstr("--pages")},
        {"pages --help", HasSubstr(" bookmark:TITLE,")},
        {"lists --help", HasSubstr("vantora lists remove \"Clean scans\"")},
        {"lists change --help", HasSubstr("--step N")},
        {"--version", testing::MatchesRegex("vantora [0-9.]+\n")},
    };
    for (const auto& [line, says] : rows) {
        const auto command = parsed(line);
        ASSERT_FALSE(command) << line;
        EXPECT_EQ(command.error().status, 0) << line;
        EXPECT_THAT(command.error().text, says);
    }
}

} // namespace
