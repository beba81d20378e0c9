#include "Terminal.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/SettingsFile.h"
#include "VantoraApp/StoredName.h"
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

} // namespace
