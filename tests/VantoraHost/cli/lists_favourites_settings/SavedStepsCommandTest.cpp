#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/ScratchHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using support::pagesNamed;
using testing::ElementsAre;
using testing::HasSubstr;

QVariantMap optionsWith(const char* range, const char* action = "Delete Pages")
{
    return {{"ActionName", action}, {"byPageRangeTextEdit", range}};
}

void addToList(const char* list, QVariantMap step)
{
    step.insert("ActionListName", list);
    step.insert("ActionListCategory", "Work");
    CActionUtils::SaveAsCustomActionList(&step);
}

class SavedStepsCommand : public InOwnFolder {
protected:
    /// Runs these steps over a document of ten pages and returns the pages left.
    static std::vector<std::string> pagesAfter(const std::string& steps)
    {
        const auto answer = terminal::run("run in.pdf -o out.pdf --overwrite " + steps);
        EXPECT_EQ(answer.status, 0);
        EXPECT_EQ(answer.err, "");
        return support::pageTexts(support::readFile("out.pdf"));
    }

    ScratchHome home;
    const std::string input = scratch.write("in.pdf", support::documentOfPages(10));
};

TEST_F(SavedStepsCommand, RunsAnActionListByItsNameAndItsFile)
{
    addToList("My list", optionsWith("1-3"));
    addToList("My list", optionsWith("1"));
    EXPECT_EQ(pagesAfter("--list 'My list'"), pagesNamed({5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(pagesAfter("--list '" + ActionListPath("My list").toStdString() + "'"),
              pagesNamed({5, 6, 7, 8, 9, 10}));
}

TEST_F(SavedStepsCommand, RunsFavouritesAndToolSettingsAmongOtherSteps)
{
    ASSERT_TRUE(WriteSettingsFile(FavouritePath("Start"), {{"ActionPrefs", optionsWith("1-2")}}));
    ASSERT_TRUE(WriteSettingsFile("end.tsf", {{"ToolSettings", optionsWith("6")}}));
    EXPECT_EQ(pagesAfter("--favorite Start --pages 1 --settings end.tsf"),
              pagesNamed({4, 5, 6, 7, 8, 10}));
    EXPECT_EQ(pagesAfter("--favourite Start --set byPageRangeTextEdit=3-10"), pagesNamed({1, 2}));
}

TEST_F(SavedStepsCommand, ListsActionLists)
{
    EXPECT_THAT(terminal::run("lists").err, HasSubstr("no action list is saved"));
    addToList("My list", optionsWith("1-3"));
    addToList("My list", optionsWith("1"));
    ScratchHome::touch(CActionUtils::GetSequenceFolder() + "/odd.xqq");
    const auto answer = terminal::run("lists");
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(terminal::lines(answer.out),
                ElementsAre(testing::StartsWith("My list  (Work, 2 steps, /")));
    EXPECT_THAT(terminal::lines(answer.err),
                ElementsAre(HasSubstr("odd.xqq: left out: not an action list")));

    const QJsonObject list = terminal::objects(terminal::run("lists --json").out).at(0);
    EXPECT_EQ(list["name"].toString(), "My list");
    EXPECT_EQ(list["category"].toString(), "Work");
    EXPECT_EQ(list["steps"][0]["action"].toString(), "Delete Pages");
    EXPECT_EQ(list["steps"][0]["options"]["byPageRangeTextEdit"].toString(), "1-3");
}

TEST_F(SavedStepsCommand, ListsFavourites)
{
    EXPECT_THAT(terminal::run("favourites").err, HasSubstr("no favourite is saved"));
    ASSERT_TRUE(WriteSettingsFile(FavouritePath("No. 1"), {{"ActionPrefs", optionsWith("1")}}));
    EXPECT_THAT(terminal::run("favourites").out, testing::StartsWith("No. 1  (Delete Pages, /"));
    EXPECT_THAT(terminal::run("favourites --json").out, HasSubstr(R"("name":"No. 1")"));
}

TEST_F(SavedStepsCommand, TrimsRangesAsTheDialogDoes)
{
    ASSERT_TRUE(WriteSettingsFile("open.tsf", {{"ToolSettings", optionsWith("1,4-6, ")}}));
    EXPECT_EQ(pagesAfter("--settings open.tsf"), pagesNamed({2, 3, 7, 8, 9, 10}));
    EXPECT_EQ(pagesAfter("--pages 1,2,"), pagesNamed({3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(SavedStepsCommand, MakesShowsChangesAndRemovesAnActionList)
{
    EXPECT_EQ(terminal::run("lists add 'My list' --pages 1-3 --category Work").status, 0);
    const auto added = terminal::run(
        "lists add 'My list' --action 'Delete Pages' --set byPageRangeTextEdit=1 --pages 2");
    EXPECT_EQ(added.err, "");
    EXPECT_THAT(terminal::lines(added.out),
                ElementsAre(testing::StartsWith("My list  (Work, 3 steps, /"), "  1  Delete Pages",
                            "    byPageRangeTextEdit=1-3", "  2  Delete Pages",
                            "    byPageRangeTextEdit=1", "  3  Delete Pages",
                            "    byPageRangeTextEdit=2"));
    EXPECT_EQ(pagesAfter("--list 'My list'"), pagesNamed({5, 7, 8, 9, 10}));

    EXPECT_EQ(terminal::run("lists remove 'My list' --step 2").status, 0);
    EXPECT_EQ(terminal::run("lists change 'My list' --step 2 --set byPageRangeTextEdit=7 "
                            "--category Play")
                  .status,
              0);
    EXPECT_THAT(terminal::run("lists show 'My list' --json").out, HasSubstr(R"("Play")"));
    EXPECT_EQ(pagesAfter("--list 'My list'"), pagesNamed({4, 5, 6, 7, 8, 9}));

    EXPECT_EQ(terminal::run("lists add 'My list' --pages 10 --overwrite").status, 0);
    EXPECT_EQ(pagesAfter("--list 'My list'"), pagesNamed({1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(terminal::run("lists remove 'My list'").status, 0);
    EXPECT_THAT(terminal::run("lists").err, HasSubstr("no action list is saved"));
}

TEST_F(SavedStepsCommand, SavesAStepAsTheOptionsDialogDoes)
{
    addToList("By dialog", optionsWith("2"));
    ASSERT_EQ(terminal::run("lists add 'By command' --pages 2 --category Work").status, 0);
    const auto keysOf = [](const char* list) {
        return SettingsFile::Read(ActionListPath(list))->Keys();
    };
    EXPECT_EQ(keysOf("By command"), keysOf("By dialog"));
    EXPECT_EQ(SettingsFile::Read(ActionListPath("By command"))->Value("ActionPrefs0"),
              SettingsFile::Read(ActionListPath("By dialog"))->Value("ActionPrefs0"));
}

TEST_F(SavedStepsCommand, MakesChangesAndRemovesToolSettings)
{
    EXPECT_EQ(terminal::run("settings add cover.tsf --pages 1").status, 0);
    EXPECT_EQ(pagesAfter("--settings cover.tsf"), pagesNamed({2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(terminal::run("settings change cover.tsf --set byPageRangeTextEdit=1-8").status, 0);
    EXPECT_EQ(pagesAfter("--settings cover.tsf"), pagesNamed({9, 10}));
    EXPECT_EQ(terminal::run("settings remove cover.tsf").status, 0);
    EXPECT_FALSE(std::filesystem::exists("cover.tsf"));
}

struct Case {
    const char* name;
    const char* steps;
    int status;
    const char* says; ///< a part of it
};

TEST_F(SavedStepsCommand, SaysInOneLineWhatIsWrongWithSavedSteps)
{
    addToList("Unknown", optionsWith("1", "Rotate Pages"));
    addToList("Bad range", optionsWith("6-4"));
    scratch.write("secret", "1");
    addToList("Range in a file", optionsWith("@secret"));
    ASSERT_TRUE(WriteSettingsFile("good.tsf", {{"ToolSettings", optionsWith("1")}}));
    scratch.write("text.tsf", "only text");
    const std::vector<Case> rows = {
        {"an action that is not installed", "--list Unknown", 2,
         "Unknown.xqq: no action \"Rotate Pages\" is installed"},
        {"a range that is none", "--list 'Bad range'", 2,
         "Bad_range.xqq: the page range \"6-4\" goes down"},
        {"a stored range that names a file", "--list 'Range in a file'", 2,
         "the page range \"@secret\" has \"@secret\", and pages go by their numbers"},
        {"a list that is called for as an action", "--action Unknown", 2,
         "is installed, only: Delete Pages, Scripted; there is an action list of that name: --list "
         "\"Unknown\""},
        {"no list of the name", "--list gone", 2, "vantora lists shows"},
        {"no favourite of the name", "--favourite gone", 2, "vantora favourites shows"},
        {"a misspelt option", "--settings good.tsf --set byPageRangTextEdit=2", 2,
         "has no option \"byPageRangTextEdit\", but has byPageRangeTextEdit"},
        {"another kind of file", "--settings text.tsf", 1, "text.tsf: not a tool-settings"},
    };
    for (const Case& row : rows) {
        SCOPED_TRACE(row.name);
        const auto answer = terminal::run(std::string("run in.pdf -o out.pdf ") + row.steps);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_EQ(answer.out, "");
        EXPECT_EQ(terminal::lines(answer.err).size(), 1U) << answer.err;
        EXPECT_THAT(answer.err, HasSubstr(row.says));
        EXPECT_FALSE(std::filesystem::exists("out.pdf"));
    }
}

TEST_F(SavedStepsCommand, ChangesNothingThatItRefusesToWorkOn)
{
    addToList("Two", optionsWith("1"));
    addToList("Two", optionsWith("2"));
    addToList("One", optionsWith("1"));
    scratch.write("text.tsf", "only text");
    ASSERT_EQ(terminal::run("settings add cover.tsf --pages 1").status, 0);
    ASSERT_TRUE(WriteSettingsFile(FavouritePath("Start"), {{"ActionPrefs", optionsWith("1-2")}}));
    const auto before = terminal::contents(home.data().toStdString());
    const std::vector<Case> rows = {
        {"a range that is none", "lists add One --pages 6-4", 2, "\"6-4\" goes down"},
        {"a changed range that is none", "lists change One --set byPageRangeTextEdit=6-4", 2,
         "\"6-4\" goes down"},
        {"an action that is not installed", "lists add One --action Rotate", 2, "vantora actions"},
        {"no step", "lists add One", 2, "nothing to do"},
        {"a name that leads elsewhere", "lists add a/b --pages 1", 2, "a slash"},
        {"a name of spaces", "lists add ' ' --pages 1", 2, "the name is empty"},
        {"a list by its file", "lists add new.xqq --pages 1", 2, "stands for a file"},
        {"one of several steps", "lists change Two --set byPageRangeTextEdit=3", 2,
         "has 2 steps; say which one with --step"},
        {"a step too many", "lists remove Two --step 3", 2, "there is no step 3, only 2 steps"},
        {"step 0", "lists remove Two --step 0", 2, "from 1, not 0"},
        {"the only step", "lists remove One --step 1", 1, "its only step"},
        {"no such list", "lists remove gone", 2, "no action list of this name"},
        {"nothing to change", "lists change One", 2, "nothing to change"},
        {"a favourite that is there", "favourites add Start --pages 1", 1, "--overwrite"},
        {"a favourite of two steps", "favourites add New --pages 1 --pages 2", 2, "one step"},
        {"settings that are there", "settings add cover.tsf --pages 1", 1, "--overwrite"},
        {"another file in the way", "settings add in.pdf --pages 1 --overwrite", 1,
         "in.pdf: not a tool-settings file"},
        {"another file to remove", "settings remove text.tsf", 1, "not a tool-settings file"},
        {"settings without a verb", "settings", 2, "show, add, change or remove"},
    };
    for (const Case& row : rows) {
        SCOPED_TRACE(row.name);
        const auto answer = terminal::run(row.steps);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_EQ(answer.out, "");
        EXPECT_EQ(terminal::lines(answer.err).size(), 1U) << answer.err;
        EXPECT_THAT(answer.err, HasSubstr(row.says));
    }
    EXPECT_EQ(terminal::contents(home.data().toStdString()), before);
    EXPECT_EQ(support::readFile("text.tsf"), "only text");
    EXPECT_EQ(support::readFile("in.pdf"), support::documentOfPages(10));
}

TEST_F(SavedStepsCommand, SaysWhatCannotBeWritten)
{
    const QString folder = CActionUtils::GetSequenceFolder();
    QDir().mkpath(QFileInfo(folder).path());
    ScratchHome::touch(folder); // in the way of the folder
    const auto answer = terminal::run("lists add One --pages 1");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("One.xqq: can't be written; check space and permissions"));
}

} // namespace
