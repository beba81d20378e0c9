#include "VantoraHost/core/actions/SavedSteps.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr SavedKind list = SavedKind::ActionList;
constexpr SavedKind settings = SavedKind::ToolSettings;

void saveMyList()
{
    PreferencesMap prefs{{"ActionListName", "My list"},
                         {"ActionListCategory", "Work"},
                         {"ActionName", "Delete Pages"}};
    CActionUtils::SaveAsCustomActionList(&prefs);
}

class SavedSteps : public testing::Test {
protected:
    ScratchHome home;
};

TEST_F(SavedSteps, OfAListAreSortedAsNumbersAndMayHaveGaps)
{
    QVariantMap values{{"SequenceName", "Gaps"}};
    for (const int number : {10, 2, 0}) {
        values.insert(QString("ActionName%1").arg(number), QString("A%1").arg(number));
        values.insert(QString("ActionPrefs%1").arg(number), PreferencesMap{{"a", number}});
    }
    const QString file = home.home() + "/gaps.xqq";
    ASSERT_TRUE(WriteSettingsFile(file, values));
    const auto steps = savedSteps({list, file.toStdString()});
    ASSERT_TRUE(steps) << steps.error().sentence;
    std::vector<std::string> actions;
    for (const StepRequest& step : *steps) {
        actions.push_back(step.action);
    }
    EXPECT_THAT(actions, ElementsAre("A0", "A2", "A10"));
    EXPECT_EQ(steps->back().stored.value("a").toInt(), 10);
}

QByteArray stepsNumbering(int count)
{
    QByteArray text = "[General]\n";
    for (int i = 0; i < count; ++i) {
        text += "ActionName" + QByteArray::number(i) + "=A\n";
    }
    return text;
}

TEST_F(SavedSteps, AreNotReadFromUnusableFiles)
{
    const QByteArray noOptions = "@Variant(\\0\\0\\0\\x8\\0\\0\\0\\0)\n";
    const struct {
        const char* name;
        SavedKind kind;
        QByteArray content;
        const char* sentence; ///< a part of it
    } rows[] = {
        {"an empty list file", list, "", "not an action list"},
        {"a document", list, "%PDF-1.7\n1 0 obj\n<</A=1>>\nendobj\n", "not an action list"},
        {"a list without steps", list, "[General]\nSequenceName=a\n", "list holds no steps"},
        {"steps in a group", list, "[Other]\nActionName0=A\nActionPrefs0=1\n",
         "not an action list"},
        {"a step without an action", list, "ActionPrefs0=@Invalid()\n", "step 0 names no action"},
        {"a step of a nameless action", list, "ActionName0=\nActionPrefs0=1\n",
         "step 0 names no action"},
        {"a step with an endless name", list, "ActionName0=" + QByteArray(100000, 'x') + "\n",
         "step 0 names no action"},
        {"a step without options", list, "ActionName0=A\n", "options of its step 0 are missing"},
        {"options that are a text", list, "ActionName0=A\nActionPrefs0=text\n",
         "options of its step 0"},
        {"a damaged step behind a sound one", list,
         "ActionName0=A\nActionPrefs0=" + noOptions + "ActionName1=A\nActionPrefs1=@Variant(\n",
         "options of its step 1"},
        {"more steps than anybody saves", list, stepsNumbering(1001), "1001 steps"},
        {"an empty settings file", settings, "", "not a tool-settings file"},
        {"a list as settings", settings, "ActionName0=A\n", "not a tool-settings file"},
        {"damaged settings", settings, "ToolSettings=@Variant(\\0)\n", "damaged"},
        {"settings of no action", settings, "ToolSettings=" + noOptions, "which action"},
    };
    const QString path = home.home() + "/a.xqq";
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ScratchHome::touch(path, row.content);
        const auto steps = savedSteps({row.kind, path.toStdString()});
        ASSERT_FALSE(steps);
        EXPECT_EQ(steps.error().file, path.toStdString());
        EXPECT_THAT(steps.error().sentence, HasSubstr(row.sentence));
    }
}

TEST_F(SavedSteps, AreNotLookedForOutsideTheirFolder)
{
    // What a name that leads out of the folder would find.
    ASSERT_TRUE(QDir().mkpath(CActionUtils::GetCollectionsFolder()));
    ASSERT_TRUE(
        WriteSettingsFile(CActionUtils::GetSettingsFolder() + "/outside.ini",
                          {{"ActionPrefs", PreferencesMap{{"ActionName", "Delete Pages"}}}}));
    const struct {
        SavedKind kind;
        const char* name;
        Reason reason;
        const char* sentence; ///< a part of it
    } rows[] = {
        {SavedKind::Favourite, "../outside", Reason::FavouriteMissing, "not contain a slash"},
        {list, "../list", Reason::ActionListMissing, "not contain a slash"},
        {list, "gone.xqq", Reason::InputMissing, "no such file"},
        {settings, "/dev/zero", Reason::InputUnreadable, "not a file"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto steps = savedSteps({row.kind, row.name});
        ASSERT_FALSE(steps);
        EXPECT_EQ(steps.error().reason, row.reason);
        EXPECT_THAT(steps.error().sentence, HasSubstr(row.sentence));
    }
}

TEST_F(SavedSteps, AreListedUnderNamesThatFindThem)
{
    saveMyList();
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
    saveMyList();
    const QString folder = CActionUtils::GetSequenceFolder();
    ASSERT_TRUE(QFile::rename(folder + "/My_list.xqq", folder + "/b c.xqq"));
    const auto lists = savedActionLists();
    ASSERT_EQ(lists.size(), 1U);
    EXPECT_TRUE(savedSteps({list, lists[0]->name}));
}

} // namespace
