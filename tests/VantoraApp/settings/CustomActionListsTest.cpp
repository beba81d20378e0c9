#include "VantoraApp/CActionUtils.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QSettings>

#include <gtest/gtest.h>

namespace {

class CustomActionLists : public testing::Test {
protected:
    CustomActionLists() { QDir().mkpath(folder()); }

    static QString folder() { return CActionUtils::GetSequenceFolder(); }

    static QStringList files() { return ScratchHome::entriesOf(folder()); }

    static QVariantMap request(const QString& name, const QString& category, bool overwrite,
                               const QString& range = "1,3")
    {
        return {{"ActionListName", name},
                {"ActionListCategory", category},
                {"ActionListOverwrite", overwrite},
                {"ActionName", "Delete Pages"},
                {"byPageRangeTextEdit", range}};
    }

    /// Saves, and returns the options as they are then.
    static QVariantMap save(QVariantMap prefs)
    {
        CActionUtils::SaveAsCustomActionList(&prefs);
        return prefs;
    }

    static void put(const QString& name, const QByteArray& text)
    {
        ScratchHome::touch(folder() + "/" + name, text);
    }

    static QByteArray textOf(const QString& name)
    {
        return ScratchHome::bytesOf(folder() + "/" + name);
    }

    /// A list as the host reads it.
    static QVariantMap list(const QString& name)
    {
        const QSettings settings(folder() + "/" + name, QSettings::IniFormat);
        QVariantMap values;
        for (const QString& key : settings.allKeys())
            values[key] = settings.value(key);
        return values;
    }

    ScratchHome home;
};

TEST_F(CustomActionLists, AreCreatedWithTheirFirstStep)
{
    const QVariantMap step{{"byPageRangeTextEdit", "1,3"}};
    const QVariantMap left = save(request("My list of", "Work", true));
    EXPECT_EQ(files(), QStringList{"My_list_of.xqq"});
    EXPECT_EQ(list("My_list_of.xqq"), (QVariantMap{{"SequenceName", "My list of"},
                                                   {"SequenceCategory", "Work"},
                                                   {"IOSettings", "0"},
                                                   {"ActionName0", "Delete Pages"},
                                                   {"ActionPrefs0", step}}));
    EXPECT_EQ(left, step) << "the request is taken out of the options";
}

TEST_F(CustomActionLists, AreCalledActionWithoutAName)
{
    save({{"byPageRangeTextEdit", "1"}});
    EXPECT_EQ(list("Action.xqq"),
              (QVariantMap{{"SequenceName", ""},
                           {"SequenceCategory", "Favorites"},
                           {"IOSettings", "0"},
                           {"ActionName0", ""},
                           {"ActionPrefs0", QVariantMap{{"byPageRangeTextEdit", "1"}}}}));
}

TEST_F(CustomActionLists, TakeFurtherStepsWithTheWholeRequest)
{
    save(request("a b", "Work", true));
    const QVariantMap second = request("a_b", "Other", false, "2");
    EXPECT_EQ(save(second), second);
    const QVariantMap values = list("a_b.xqq");
    EXPECT_EQ(values.value("SequenceName"), "a b");
    EXPECT_EQ(values.value("SequenceCategory"), "Work");
    EXPECT_EQ(values.value("ActionName1"), "Delete Pages");
    EXPECT_EQ(values.value("ActionPrefs1").toMap(), second);
    EXPECT_EQ(values.size(), 7);
}

TEST_F(CustomActionLists, TakeAStepWhereOneIsMissing)
{
    put("a.xqq", "[General]\nActionName0=First\nActionName2=Third\nActionName02=x\n");
    save(request("a", "", false));
    EXPECT_EQ(list("a.xqq").value("ActionName1"), "Delete Pages");
    save(request("a", "", false));
    EXPECT_EQ(list("a.xqq").value("ActionName3"), "Delete Pages");
    EXPECT_EQ(list("a.xqq").value("ActionName2"), "Third");
}

TEST_F(CustomActionLists, AreCreatedWhenThereIsNoneToAddTo)
{
    save(request("a", "Work", false));
    EXPECT_EQ(list("a.xqq").value("SequenceCategory"), "Work");
    EXPECT_TRUE(list("a.xqq").contains("ActionPrefs0"));
}

TEST_F(CustomActionLists, AreReplacedWholeWhenOverwritten)
{
    put("a.xqq", "[General]\nActionName0=x\nActionName7=y\n[g]\nk=1\n");
    save(request("a", "Work", true));
    EXPECT_EQ(list("a.xqq").size(), 5);
    EXPECT_EQ(list("a.xqq").value("ActionName0"), "Delete Pages");
}

TEST_F(CustomActionLists, KeepWhatOthersWroteIntoThem)
{
    const QByteArray foreign = "[General]\nActionName0=Other\n"
                               "ActionPrefs0=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)\n"
                               "Note=\"; = ,\"\n";
    put("a.xqq", foreign + "\n[g]\nk=1\n");
    save(request("a", "", false));
    const QByteArray text = textOf("a.xqq");
    EXPECT_TRUE(text.startsWith(foreign));
    EXPECT_TRUE(text.endsWith("\n[g]\nk=1\n"));
    EXPECT_TRUE(text.contains("\nActionName1=Delete Pages\n"));
}

TEST_F(CustomActionLists, AreLeftAloneWhenTheyCanNotBeReadOrReplaced)
{
    QDir().mkpath(folder() + "/a.xqq/inside");
    for (const bool overwrite : {true, false}) {
        const QVariantMap prefs = request("a", "", overwrite);
        EXPECT_EQ(save(prefs), prefs) << "nothing is taken out of the options";
    }
    EXPECT_EQ(files(), QStringList{"a.xqq"});

    const QByteArray huge(5 * 1024 * 1024, 'x');
    put("b.xqq", huge);
    save(request("b", "", false));
    EXPECT_EQ(textOf("b.xqq"), huge);
}

TEST_F(CustomActionLists, AreNotWrittenUnderANameThatLeadsElsewhere)
{
    for (const bool overwrite : {true, false}) {
        const QVariantMap prefs = request("../out", "", overwrite);
        EXPECT_EQ(save(prefs), prefs);
        EXPECT_FALSE(QFile::exists(folder() + "/../out.xqq"));
    }
}

TEST_F(CustomActionLists, OfferTheirCategories)
{
    const QStringList always{"Default", "Favorites"};
    QDir(folder()).removeRecursively();
    EXPECT_EQ(CActionUtils::GetActionListCategories(), always);
    QDir().mkpath(folder());

    put("B.xqq", "SequenceCategory=work\n");
    put("a.xqq", "SequenceCategory=Work\n");
    put("c.xqq", "SequenceCategory=favorites\n");
    put("d.xqq", "SequenceCategory=Ablage\n");
    put("e.xqq", "SequenceCategory=\n");
    put("f.txt", "SequenceCategory=Text\n");
    put("g.xqq", "[Group]\nSequenceCategory=Grouped\n");
    EXPECT_EQ(CActionUtils::GetActionListCategories(), always + QStringList({"Work", "Ablage"}));
}

TEST_F(CustomActionLists, OfferNoCategoryOfAFileThatIsNoList)
{
    put("a.xqq", "SequenceCategory=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)\n");
    put("b.xqq", "SequenceCategory=" + QByteArray(100000, 'x'));
    put("c.xqq", QByteArray(5 * 1024 * 1024, 'x'));
    put("d.xqq", QByteArray("\0\xff\x80", 3));
    QDir().mkpath(folder() + "/e.xqq");
    QFile::link("/nonexistent", folder() + "/f.xqq");
    put("g.xqq", "k=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)\nSequenceCategory=Good\n");
    EXPECT_EQ(CActionUtils::GetActionListCategories(),
              (QStringList{"Default", "Favorites", "Good"}));
}

} // namespace
