#include "VantoraHost/core/actions/SavedSteps.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/SettingsFile.h"
#include "VantoraApp/StoredName.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;

const PreferencesMap coverOptions{{"ActionName", "Delete Pages"}, {"byPageRangeTextEdit", "1"}};

void addToList(const char* list, const char* action, const char* range)
{
    PreferencesMap prefs{{"ActionListName", list},
                         {"ActionListCategory", "Work"},
                         {"ActionName", action},
                         {"byPageRangeTextEdit", range}};
    CActionUtils::SaveAsCustomActionList(&prefs);
}

class SavedSteps : public testing::Test {
protected:
    /// Writes a file of this content and returns its path.
    std::string write(const char* name, const QByteArray& content)
    {
        QFile file(home.home() + "/" + name);
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return file.fileName().toStdString();
    }

    ScratchHome home;
};

TEST_F(SavedSteps, OfAListComeInItsOrder)
{
    addToList("My list", "Delete Pages", "1-3");
    addToList("My list", "Other", "7");
    const auto steps = savedSteps({SavedKind::ActionList, "My list"});
    ASSERT_TRUE(steps) << steps.error().sentence;
    ASSERT_EQ(steps->size(), 2U);
    EXPECT_EQ(steps->at(0).action, "Delete Pages");
    EXPECT_EQ(steps->at(0).stored.value("byPageRangeTextEdit").toString(), "1-3");
    EXPECT_EQ(steps->at(1).action, "Other");
    EXPECT_THAT(steps->at(1).file, testing::EndsWith("/Tollera/Actions/My_list.xqq"));
}

TEST_F(SavedSteps, OfAListAreSortedAsNumbersAndMayHaveGaps)
{
    QVariantMap values{{"SequenceName", "Gaps"}};
    for (const int number : {10, 2, 0}) {
        values.insert(QString("ActionName%1").arg(number), QString("A%1").arg(number));
        values.insert(QString("ActionPrefs%1").arg(number), PreferencesMap{{"a", number}});
    }
    const QString file = home.home() + "/gaps.xqq";
    ASSERT_TRUE(WriteSettingsFile(file, values));
    const auto steps = savedSteps({SavedKind::ActionList, file.toStdString()});
    ASSERT_TRUE(steps) << steps.error().sentence;
    std::vector<std::string> actions;
    for (const StepRequest& step : *steps) {
        actions.push_back(step.action);
    }
    EXPECT_THAT(actions, ElementsAre("A0", "A2", "A10"));
    EXPECT_EQ(steps->back().stored.value("a").toInt(), 10);
}

TEST_F(SavedSteps, AreThoseOfAFavouriteAndOfToolSettings)
{
    ASSERT_TRUE(WriteSettingsFile(FavouritePath("No covers"), {{"ActionPrefs", coverOptions}}));
    const QString file = home.home() + "/covers.tsf";
    ASSERT_TRUE(WriteSettingsFile(file, {{"ToolSettings", coverOptions}}));
    for (const SavedIn& saved : {SavedIn{SavedKind::Favourite, "No covers"},
                                 SavedIn{SavedKind::ToolSettings, file.toStdString()}}) {
        const auto steps = savedSteps(saved);
        ASSERT_TRUE(steps) << steps.error().sentence;
        ASSERT_EQ(steps->size(), 1U);
        EXPECT_EQ(steps->front().action, "Delete Pages");
        EXPECT_EQ(steps->front().stored, coverOptions);
    }
}

struct Case {
    const char* name;
    const char* file; ///< its suffix says what it is read as
    QByteArray content;
    const char* sentence; ///< a part of it
};

class UnusableFile : public SavedSteps, public testing::WithParamInterface<Case> {};

TEST_P(UnusableFile, HasNoStepsAndSaysWhy)
{
    const std::string path = write(GetParam().file, GetParam().content);
    const bool isList = QString(GetParam().file).endsWith(".xqq");
    const auto steps = savedSteps({isList ? SavedKind::ActionList : SavedKind::ToolSettings, path});
    ASSERT_FALSE(steps);
    EXPECT_EQ(steps.error().file, path);
    EXPECT_THAT(steps.error().sentence, HasSubstr(GetParam().sentence));
}

/// A map with the one entry "a", whose value has this type in the stream.
QByteArray mapWithTypeInside(const char* type)
{
    return QByteArray("@Variant(\\0\\0\\0\\x8\\0\\0\\0\\x1\\0\\0\\0\\x2\\0\\x61") + type + ")";
}

QByteArray stepsNumbering(int count)
{
    QByteArray text = "[General]\n";
    for (int i = 0; i < count; ++i) {
        text += "ActionName" + QByteArray::number(i) + "=A\n";
    }
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    SavedSteps, UnusableFile,
    testing::Values(
        Case{"an_empty_list_file", "a.xqq", "", "not an action list"},
        Case{"a_document", "a.xqq", "%PDF-1.7\n1 0 obj\n<</A=1>>\nendobj\n", "not an action list"},
        Case{"a_list_without_steps", "a.xqq", "[General]\nSequenceName=a\n", "holds no steps"},
        Case{"steps_in_a_group", "a.xqq", "[Other]\nActionName0=A\nActionPrefs0=1\n",
             "not an action list"},
        Case{"a_step_without_an_action", "a.xqq", "[General]\nActionPrefs0=@Invalid()\n",
             "step 0 names no action"},
        Case{"a_step_of_a_nameless_action", "a.xqq", "[General]\nActionName0=\nActionPrefs0=1\n",
             "step 0 names no action"},
        Case{"a_step_with_an_endless_name", "a.xqq",
             "[General]\nActionName0=" + QByteArray(100000, 'x') + "\n", "step 0 names no action"},
        Case{"a_step_without_options", "a.xqq", "[General]\nActionName0=A\n",
             "options of its step 0 are missing"},
        Case{"options_that_are_a_text", "a.xqq", "[General]\nActionName0=A\nActionPrefs0=text\n",
             "options of its step 0"},
        Case{"options_cut_off", "a.xqq",
             "[General]\nActionName0=A\nActionPrefs0=@Variant(\\0\\0\\0\\x8\\0\\0\\0\\x2)\n",
             "options of its step 0"},
        Case{"options_of_a_type_that_a_program_registered", "a.xqq",
             "[General]\nActionName0=A\nActionPrefs0=" +
                 mapWithTypeInside("\\0\\0\\0\\x7f\\0\\0\\0\\x8QWidget\\0") + "\n",
             "options of its step 0"},
        Case{"a_damaged_step_behind_a_sound_one", "a.xqq",
             "[General]\nActionName0=A\nActionPrefs0=@Variant(\\0\\0\\0\\x8\\0\\0\\0\\0)\n"
             "ActionName1=A\nActionPrefs1=@Variant(\n",
             "options of its step 1"},
        Case{"more_steps_than_anybody_saves", "a.xqq", stepsNumbering(1001), "1001 steps"},
        Case{"a_file_too_large", "a.xqq", QByteArray(5 << 20, 'x'), "too large"},
        Case{"an_empty_settings_file", "a.tsf", "", "not a tool-settings file"},
        Case{"a_list_as_settings", "a.tsf", "[General]\nActionName0=A\n",
             "not a tool-settings file"},
        Case{"damaged_settings", "a.tsf", "[General]\nToolSettings=@Variant(\\0)\n", "damaged"},
        Case{"settings_of_no_action", "a.tsf",
             "[General]\nToolSettings=@Variant(\\0\\0\\0\\x8\\0\\0\\0\\0)\n", "which action"}),
    [](const auto& info) { return info.param.name; });

struct NameCase {
    const char* name;
    SavedIn saved;
    Reason reason;
    const char* sentence; ///< a part of it
};

TEST_F(SavedSteps, AreNotLookedForOutsideTheirFolder)
{
    // What a name that leads out of the folder would find.
    ASSERT_TRUE(QDir().mkpath(CActionUtils::GetCollectionsFolder()));
    ASSERT_TRUE(WriteSettingsFile(CActionUtils::GetSettingsFolder() + "/outside.ini",
                                  {{"ActionPrefs", coverOptions}}));
    const NameCase rows[] = {
        {"a favourite outside the folder",
         {SavedKind::Favourite, "../outside"},
         Reason::FavouriteMissing,
         "must not contain a slash"},
        {"a favourite of no file",
         {SavedKind::Favourite, "gone"},
         Reason::FavouriteMissing,
         "no favourite"},
        {"a list outside the folder",
         {SavedKind::ActionList, "../list"},
         Reason::ActionListMissing,
         "must not contain a slash"},
        {"a list of no file",
         {SavedKind::ActionList, "gone"},
         Reason::ActionListMissing,
         "no action list"},
        {"a name too long for a file",
         {SavedKind::ActionList, std::string(300, 'x')},
         Reason::ActionListMissing,
         "too long"},
        {"a file that is not there",
         {SavedKind::ActionList, "gone.xqq"},
         Reason::InputMissing,
         "no such file"},
        {"a folder", {SavedKind::ToolSettings, "/"}, Reason::InputUnreadable, "not a file"},
        {"an endless file",
         {SavedKind::ToolSettings, "/dev/zero"},
         Reason::InputUnreadable,
         "not a file"},
    };
    for (const NameCase& row : rows) {
        SCOPED_TRACE(row.name);
        const auto steps = savedSteps(row.saved);
        ASSERT_FALSE(steps);
        EXPECT_EQ(steps.error().reason, row.reason);
        EXPECT_THAT(steps.error().sentence, HasSubstr(row.sentence));
    }
}

TEST_F(SavedSteps, AreListedUnderNamesThatFindThem)
{
    addToList("My list", "Delete Pages", "1");
    const QString folder = CActionUtils::GetSequenceFolder();
    ASSERT_TRUE(QFile::copy(folder + "/My_list.xqq", folder + "/copy[1].xqq"));
    ScratchHome::touch(folder + "/odd.xqq");
    ScratchHome::touch(folder + "/notes.txt");

    const auto lists = savedActionLists();
    ASSERT_EQ(lists.size(), 3U);
    EXPECT_EQ(lists[0]->name, "My list");
    EXPECT_EQ(lists[0]->category, "Work");
    EXPECT_EQ(lists[0]->steps.size(), 1U);
    EXPECT_EQ(lists[1]->name, "copy[1]");
    EXPECT_THAT(lists[2].error().file, testing::EndsWith("/odd.xqq"));
}

TEST_F(SavedSteps, OfAListThatNoNameLeadsToAreFoundByItsFile)
{
    addToList("My list", "Delete Pages", "1");
    const QString folder = CActionUtils::GetSequenceFolder();
    ASSERT_TRUE(QFile::rename(folder + "/My_list.xqq", folder + "/b c.xqq"));
    const auto lists = savedActionLists();
    ASSERT_EQ(lists.size(), 1U);
    EXPECT_TRUE(savedSteps({SavedKind::ActionList, lists[0]->name}));
}

TEST_F(SavedSteps, OfFavouritesAreListed)
{
    EXPECT_TRUE(savedFavourites().empty());
    ASSERT_TRUE(WriteSettingsFile(FavouritePath("No. 1"), {{"ActionPrefs", coverOptions}}));
    const auto favourites = savedFavourites();
    ASSERT_EQ(favourites.size(), 1U);
    EXPECT_EQ(favourites[0]->name, "No. 1");
    EXPECT_EQ(favourites[0]->steps.front().action, "Delete Pages");
}

} // namespace
