#include "VantoraApp/dialogs/CSaveAsActionlistDialog.h"
#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/dialogs/CMsgBoxDialog.h"
#include "tests/support/FakeOpenGL.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/ShownTexts.h"

#include <QtCore/QSettings>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>
#include <gtest/gtest.h>

namespace {

/// The dialog as a user meets it, with its widgets by their names.
class SaveAsActionlist : public testing::Test {
protected:
    SaveAsActionlist()
    {
        QDir().mkpath(folder());
        dialog.LoadPrefsData(&prefs);
    }

    static QString folder() { return CActionUtils::GetSequenceFolder(); }

    static QStringList lists() { return QDir(folder()).entryList(QDir::Files); }

    static QVariant stored(const QString& list, const QString& key)
    {
        return QSettings(folder() + "/" + list, QSettings::IniFormat).value(key);
    }

    template <class Widget = QWidget>
    Widget& child(const char* name)
    {
        return *dialog.findChild<Widget*>(name);
    }

    QLineEdit& name() { return child<QLineEdit>("actionListNameLineEdit"); }
    QComboBox& category() { return child<QComboBox>("categoryComboBox"); }
    QWidget& saveButton() { return child("saveButton"); }

    void type(const QString& text) { QTest::keyClicks(&name(), text); }

    void press(const char* button) { QTest::mouseClick(&child(button), Qt::LeftButton); }

    /// Chooses by the keyboard to add to an existing list.
    void chooseToAdd()
    {
        child("newActionListRadioButton").setFocus();
        QTest::keyClick(&child("newActionListRadioButton"), Qt::Key_Down);
        EXPECT_TRUE(child<QRadioButton>("addToActionListRadioButton").isChecked());
    }

    /// Runs the dialog while `use` uses it, and returns how it ended.
    int run(const std::function<void()>& use)
    {
        OnModal<CSaveAsActionlistDialog> modal([&use](CSaveAsActionlistDialog&) { use(); });
        return dialog.exec();
    }

    ScratchHome home;
    QVariantMap prefs{{"byPageRangeTextEdit", "1,3"}, {"ActionName", "Delete Pages"}};
    CSaveAsActionlistDialog dialog{nullptr, {}};
};

TEST_F(SaveAsActionlist, EnablesSaveForAVisibleCharacter)
{
    run([this] {
        EXPECT_FALSE(saveButton().isEnabled());
        type("   ");
        EXPECT_FALSE(saveButton().isEnabled());
        QTest::keyClick(&name(), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        type("x ");
        EXPECT_TRUE(saveButton().isEnabled());
        QTest::keyClick(&name(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&name(), Qt::Key_Delete);
        EXPECT_FALSE(saveButton().isEnabled());
        press("cancelButton");
    });
    EXPECT_EQ(lists(), QStringList());
}

TEST_F(SaveAsActionlist, CreatesAList)
{
    QSignalSpy changed(&dialog, &CSaveAsActionlistDialog::actionListChanged);
    EXPECT_EQ(run([this] {
                  type(" my list");
                  category().lineEdit()->selectAll();
                  QTest::keyClicks(&category(), "Work");
                  press("saveButton");
              }),
              QDialog::Accepted);
    EXPECT_EQ(lists(), QStringList{"_my_list.xqq"});
    EXPECT_EQ(stored("_my_list.xqq", "SequenceName"), " my list");
    EXPECT_EQ(stored("_my_list.xqq", "SequenceCategory"), "Work");
    EXPECT_EQ(prefs, (QVariantMap{{"byPageRangeTextEdit", "1,3"}}));
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(SaveAsActionlist, AddsToAListWithTheCategoryOfTheDisabledBox)
{
    CActionUtils::SaveAsCustomActionList(&prefs);
    prefs["ActionName"] = "Delete Pages";
    QSignalSpy changed(&dialog, &CSaveAsActionlistDialog::actionListChanged);
    EXPECT_EQ(run([this] {
                  category().setCurrentText("Work");
                  chooseToAdd();
                  EXPECT_FALSE(category().isEnabled());
                  press("newActionListRadioButton");
                  EXPECT_TRUE(category().isEnabled());
                  press("addToActionListRadioButton");
                  type("Action");
                  QTest::keyClick(&name(), Qt::Key_Return);
              }),
              QDialog::Accepted);
    EXPECT_EQ(stored("Action.xqq", "ActionName1"), "Delete Pages");
    EXPECT_FALSE(stored("Action.xqq", "ActionName2").isValid());
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.first().first(), "Action");
    EXPECT_EQ(prefs.value("ActionListOverwrite"), false);
    EXPECT_EQ(prefs.value("ActionListCategory"), "Work");
}

struct KeyRow {
    const char* name;
    const char* focus; ///< null for the dialog itself
    int key;
};

TEST_F(SaveAsActionlist, SavesOnceByReturnWhateverHasTheFocus)
{
    const KeyRow rows[] = {
        {"in the name field", "actionListNameLineEdit", Qt::Key_Return},
        {"by Enter in the name field", "actionListNameLineEdit", Qt::Key_Enter},
        {"in the category box", "categoryComboBox", Qt::Key_Return},
        {"on a radio button", "addToActionListRadioButton", Qt::Key_Return},
        {"on the Save button", "saveButton", Qt::Key_Return},
        {"on the dialog", nullptr, Qt::Key_Enter},
    };
    for (const KeyRow& row : rows) {
        SCOPED_TRACE(row.name);
        QDir(folder()).removeRecursively();
        CSaveAsActionlistDialog shown(nullptr, {});
        QVariantMap step{{"ActionName", "Delete Pages"}};
        shown.LoadPrefsData(&step);
        QSignalSpy changed(&shown, &CSaveAsActionlistDialog::actionListChanged);
        OnModal<CSaveAsActionlistDialog> modal([&row](CSaveAsActionlistDialog& open) {
            open.findChild<QRadioButton*>("addToActionListRadioButton")->setChecked(true);
            QTest::keyClicks(open.findChild<QLineEdit*>("actionListNameLineEdit"), "list");
            QWidget* focus = row.focus == nullptr ? &open : open.findChild<QWidget*>(row.focus);
            focus->setFocus();
            QTest::keyClick(focus, static_cast<Qt::Key>(row.key));
        });
        EXPECT_EQ(shown.exec(), QDialog::Accepted);
        EXPECT_EQ(changed.count(), 1);
        EXPECT_TRUE(stored("list.xqq", "ActionPrefs0").isValid());
        EXPECT_FALSE(stored("list.xqq", "ActionPrefs1").isValid());
    }
}

TEST_F(SaveAsActionlist, CancelsWithoutWriting)
{
    const QVariantMap before = prefs;
    EXPECT_EQ(run([this] {
                  type("list");
                  QTest::keyClick(&child("cancelButton"), Qt::Key_Return);
              }),
              QDialog::Rejected);
    EXPECT_EQ(lists(), QStringList());
    EXPECT_EQ(prefs, before);
}

TEST_F(SaveAsActionlist, RefusesANameThatLeadsElsewhereAndTakesTheNextOne)
{
    const QVariantMap before = prefs;
    const auto refuse = [this](const std::function<void()>& save) {
        name().clear();
        type("a/b");
        int boxes = 0;
        OnModal<CMsgBoxDialog> refusal([&boxes](CMsgBoxDialog& box) {
            ++boxes;
            EXPECT_EQ(box.findChild<QLabel*>("titleLabel")->text(), "Sorrelin");
            EXPECT_TRUE(box.findChild<QLabel*>("messageLabel")
                            ->text()
                            .endsWith("Please enter another name and try again."));
            QTest::keyClick(&box, Qt::Key_Return);
        });
        save();
        EXPECT_EQ(boxes, 1);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(name().selectedText(), "a/b");
        EXPECT_EQ(dialog.focusWidget(), &name());
    };
    EXPECT_EQ(run([&] {
                  refuse([this] { press("saveButton"); });
                  refuse([this] { QTest::keyClick(&name(), Qt::Key_Return); });
                  EXPECT_EQ(prefs, before);
                  type("good");
                  QTest::keyClick(&name(), Qt::Key_Return);
              }),
              QDialog::Accepted);
    EXPECT_EQ(lists(), QStringList{"good.xqq"});
}

TEST_F(SaveAsActionlist, OffersTheCategoriesOfOtherLists)
{
    QVariantMap other{{"ActionListName", "x"}, {"ActionListCategory", "Work"}};
    CActionUtils::SaveAsCustomActionList(&other);
    CSaveAsActionlistDialog later(nullptr, {});
    auto& box = *later.findChild<QComboBox*>("categoryComboBox");
    EXPECT_EQ(box.count(), 3);
    EXPECT_EQ(box.itemText(2), "Work");
    EXPECT_EQ(box.currentText(), "Default");
}

TEST_F(SaveAsActionlist, ShowsAllOfItsTextsInItsFixedSize)
{
    inShownFonts([] {
        CSaveAsActionlistDialog shown(nullptr, {});
        shown.show();
        EXPECT_EQ(shown.findChild<QLabel*>("VDtitleLabel")->text(), "Add To Action");
        EXPECT_EQ(shown.minimumSize(), shown.maximumSize());
        EXPECT_EQ(cutTexts(shown), QStringList()) << cutTexts(shown).join(' ').toStdString();
    });
}

TEST_F(SaveAsActionlist, IsWalkedThroughByTabInTheOrderOfTheForm)
{
    run([this] {
        type("x");
        EXPECT_EQ(tabOrder(dialog, 5),
                  (QStringList{"actionListNameLineEdit", "categoryComboBox", "saveButton",
                               "cancelButton", "newActionListRadioButton"}));
        press("cancelButton");
    });
}

} // namespace
