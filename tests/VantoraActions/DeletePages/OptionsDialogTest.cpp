#include "VantoraApp/CUtils.h"
#include "VantoraApp/dialogs/CMsgBoxDialog.h"
#include "VantoraApp/interface/ActionInterface.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/ShownTexts.h"

#include <QtCore/QPluginLoader>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QToolButton>

#include <functional>
#include <gtest/gtest.h>

namespace {

const char* const emptyMessage = "No page range found. Please enter a page range and try again.";
const char* const invalidMessage =
    "The page range is invalid. Please enter a valid page range and try again.";

/// The options dialog of the built plug-in, opened and used as the host and the user do.
class OptionsDialog : public testing::Test {
protected:
    ~OptionsDialog() override { delete plugin.instance(); }

    /// Opens the dialog with the options, lets `use` use it, and returns the result.
    int open(const std::function<void()>& use)
    {
        OnModal<QDialog> run("DeletePagesPrefsDialog", [this, &use](QDialog& shown) {
            dialog = &shown;
            use();
        });
        DialogLoadStruct load{};
        load.pPrefs = &prefs;
        load.bHideAddToActionListButton = hideAddToActionListButton;
        return qobject_cast<CActionInterface*>(plugin.instance())->ShowDialogProc(parent, &load);
    }

    template <class Widget = QWidget>
    Widget& child(const char* name)
    {
        return *dialog->findChild<Widget*>(name);
    }

    QPlainTextEdit& edit() { return child<QPlainTextEdit>("byPageRangeTextEdit"); }

    void type(const char* text) { QTest::keyClicks(&edit(), text); }

    void press(const char* button) { QTest::mouseClick(&child(button), Qt::LeftButton); }

    /// Does what brings a message up, and leaves that.
    void expectMessage(const char* message, const std::function<void()>& act)
    {
        OnModal<QDialog> box("vantoraMsgBoxDlg", [message](QDialog& shown) {
            EXPECT_EQ(shown.findChild<QLabel*>("titleLabel")->text(), "Sorrelin");
            EXPECT_EQ(shown.findChild<QLabel*>("messageLabel")->text(), message);
            EXPECT_TRUE(shown.findChild<QWidget*>("btn1")->isVisible());
            EXPECT_FALSE(shown.findChild<QWidget*>("btn2")->isVisible());
            QTest::keyClick(&shown, Qt::Key_Return);
        });
        act();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->focusWidget(), &edit());
    }

    ScratchHome home;
    QPluginLoader plugin{DELETE_PAGES_PLUGIN};
    QWidget* parent = nullptr;
    unsigned char hideAddToActionListButton = 0;
    PreferencesMap prefs;
    QDialog* dialog = nullptr;
};

PreferencesMap accepted(const char* range)
{
    return {{"byPageRangeTextEdit", range}, {"ActionName", "Delete Pages"}};
}

struct RangeRow {
    const char* name;
    const char* typed;
    const char* accepted;
};

TEST_F(OptionsDialog, IsAcceptedWithAValidRangeThatLosesWhatFollowsItsLastDigit)
{
    const RangeRow rows[] = {
        {"a valid range", "1,4-6,9-15,21", "1,4-6,9-15,21"},
        {"a trailing comma and a space", "1,4-6, ", "1,4-6"},
        {"a trailing dash", "3-", "3"},
        {"trailing words", "1-2 and more", "1-2"},
        {"spaces inside, which are kept", "1, 4 - 6", "1, 4 - 6"},
    };
    for (const RangeRow& row : rows) {
        SCOPED_TRACE(row.name);
        prefs.clear();
        EXPECT_EQ(open([&] {
                      type(row.typed);
                      press("okButton");
                  }),
                  1);
        EXPECT_EQ(prefs, accepted(row.accepted));
    }
}

TEST_F(OptionsDialog, ComesWithACopyOfThePluginsOneFile)
{
    const QTemporaryDir elsewhere;
    const QString copy = elsewhere.filePath("libDeletePages.so");
    ASSERT_TRUE(QFile::copy(DELETE_PAGES_PLUGIN, copy));
    plugin.setFileName(copy);
    EXPECT_EQ(open([&] {
                  type("2-3");
                  press("okButton");
              }),
              1);
    EXPECT_EQ(prefs, accepted("2-3"));
}

TEST_F(OptionsDialog, StaysOpenWithAMessageForWhatIsNoRange)
{
    EXPECT_EQ(open([this] {
                  expectMessage(emptyMessage, [this] { press("okButton"); });
                  type("6-4");
                  expectMessage(invalidMessage, [this] { press("okButton"); });
                  EXPECT_EQ(edit().toPlainText(), "6-4");
                  type(",x");
                  expectMessage(invalidMessage, [this] { press("okButton"); });
                  EXPECT_EQ(edit().toPlainText(), "6-4") << "trimmed";
                  edit().clear();
                  type("abc");
                  expectMessage(invalidMessage, [this] { press("okButton"); });
                  EXPECT_EQ(edit().toPlainText(), "");
                  expectMessage(emptyMessage, [this] { press("okButton"); });
                  type("7");
                  press("okButton");
              }),
              1);
    EXPECT_EQ(prefs, accepted("7"));
}

TEST_F(OptionsDialog, ShowsItsMessagesOverTheWindowThatTheHostNames)
{
    QWidget hostWindow;
    for (QWidget* window : {&hostWindow, static_cast<QWidget*>(nullptr)}) {
        CMsgBoxDialog::mGlobalParent = window;
        open([this, window] {
            OnModal<QDialog> box("vantoraMsgBoxDlg", [window](QDialog& shown) {
                EXPECT_EQ(shown.parentWidget(), window);
                shown.reject();
            });
            press("okButton");
            press("cancelButton");
        });
    }
}

TEST_F(OptionsDialog, LeavesTheOptionsAloneWhenItIsNotAccepted)
{
    const PreferencesMap before{{"byPageRangeTextEdit", "1"}, {"other", 2}};
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"Cancel", [this] { press("cancelButton"); }},
        {"the close button", [this] { press("vantoraHeaderCloseBtn"); }},
        {"Escape", [this] { QTest::keyClick(&edit(), Qt::Key_Escape); }},
        {"closing the window", [this] { dialog->close(); }},
    };
    for (const auto& [name, leave] : ways) {
        prefs = before;
        EXPECT_EQ(open([this, leave = leave] {
                      type("2,");
                      leave();
                  }),
                  0)
            << name;
        EXPECT_EQ(prefs, before) << name;
    }
}

TEST_F(OptionsDialog, StartsWithTheOptionsAndKeepsOthers)
{
    for (const QVariant& range : {QVariant("1-2"), QVariant(5)}) {
        prefs = {{"byPageRangeTextEdit", range}, {"ActionName", "x"}, {"other", 2}};
        EXPECT_EQ(open([&] {
                      EXPECT_EQ(edit().toPlainText(), range.toString());
                      press("okButton");
                  }),
                  1);
        EXPECT_EQ(prefs, (PreferencesMap{{"byPageRangeTextEdit", range.toString()},
                                         {"ActionName", "Delete Pages"},
                                         {"other", 2}}));
    }
}

TEST_F(OptionsDialog, HidesTheActionListButtonWhenTheHostAsksForIt)
{
    for (const unsigned char hide : {0, 1, 255}) {
        hideAddToActionListButton = hide;
        open([this, hide] {
            EXPECT_EQ(child("VDtoolbarAddToActionListButton").isVisible(), hide == 0);
            EXPECT_TRUE(child("VDtoolbarAddToCollectionsButton").isVisible());
            EXPECT_TRUE(child("vantoraHeaderCloseBtn").isVisible());
            EXPECT_EQ(child<QLabel>("VDtitleLabel").text(), "Delete Pages");
            EXPECT_FALSE(dialog->windowIcon().isNull());
            press("cancelButton");
        });
    }
}

struct IconRow {
    QIcon::Mode mode;
    const char* file;
};

TEST_F(OptionsDialog, HasTheIconOfTheActionInEachMode)
{
    const IconRow rows[] = {
        {QIcon::Normal, "Action_DeletePages.png"},
        {QIcon::Selected, "Action_DeletePages_Selected.png"},
        {QIcon::Active, "Action_DeletePages_Selected.png"},
        {QIcon::Disabled, "Action_DeletePages_Disabled.png"},
    };
    open([&] {
        for (const IconRow& row : rows) {
            const QPixmap file(QString(":/Vantora/Resources/Tools/") + row.file);
            ASSERT_FALSE(file.isNull()) << row.file;
            const QIcon icon = dialog->windowIcon();
            EXPECT_EQ(icon.availableSizes(row.mode, QIcon::Off).value(0), file.size()) << row.file;
            EXPECT_EQ(icon.pixmap(file.size(), row.mode, QIcon::Off).toImage(), file.toImage())
                << row.file;
        }
        press("cancelButton");
    });
}

TEST_F(OptionsDialog, AddsTheTypedOptionsToAnActionListAndStaysOpen)
{
    EXPECT_EQ(open([this] {
                  type("3-1");
                  OnModal<QDialog> list("saveAsActionlistDialog", [](QDialog& shown) {
                      auto* name = shown.findChild<QLineEdit*>("actionListNameLineEdit");
                      QTest::keyClicks(name, "my list");
                      QTest::keyClick(name, Qt::Key_Return);
                  });
                  press("VDtoolbarAddToActionListButton");
                  EXPECT_TRUE(dialog->isVisible());
                  press("cancelButton");
              }),
              0);
    EXPECT_EQ(prefs, PreferencesMap());
    const QSettings list(CUtils::GetSequenceFolder() + "/my_list.xqq", QSettings::IniFormat);
    EXPECT_EQ(list.value("ActionName0"), "Delete Pages");
    EXPECT_EQ(list.value("ActionPrefs0").toMap(), (QVariantMap{{"byPageRangeTextEdit", "3-1"}}));
}

TEST_F(OptionsDialog, ClosesOnceAFavouriteIsSaved)
{
    EXPECT_EQ(open([this] {
                  type("1,3");
                  QPixmap picture(200, 200);
                  picture.fill(Qt::red);
                  QIcon icon;
                  icon.addPixmap(picture, QIcon::Selected);
                  dialog->setWindowIcon(icon);
                  OnModal<QDialog> favourite("saveAsCollectionDialog", [](QDialog& shown) {
                      const QIcon icon = shown.findChild<QToolButton*>("icon_toolButton")->icon();
                      EXPECT_EQ(icon.availableSizes(), QList<QSize>{QSize(128, 128)});
                      auto* name = shown.findChild<QLineEdit*>("collectionNameLineEdit");
                      QTest::keyClicks(name, "Delete odd");
                      QTest::keyClick(name, Qt::Key_Return);
                  });
                  press("VDtoolbarAddToCollectionsButton");
              }),
              0);
    EXPECT_EQ(prefs, PreferencesMap());
    const QSettings favourite(CUtils::GetCollectionsFolder() + "/Delete odd.ini",
                              QSettings::IniFormat);
    EXPECT_EQ(favourite.value("ActionPrefs").toMap(),
              (QVariantMap{{"byPageRangeTextEdit", "1,3"},
                           {"ActionName", "Delete Pages"},
                           {"CollectionName", "Delete odd"}}));
    EXPECT_EQ(favourite.value("ActionIcon").value<QImage>().pixelColor(20, 20), QColor(Qt::red));
}

/// The dialog in the preview, which remembers its place.
class OptionsDialogInPreview : public OptionsDialog {
protected:
    OptionsDialogInPreview()
    {
        preview.setObjectName("VantoraPreviewClass");
        preview.setGeometry(100, 100, 500, 400);
        parent = &preview;
    }

    static QString file() { return CUtils::GetSettingsFolder() + "/VantoraViewerSettings.vsf"; }

    QWidget preview;
};

TEST_F(OptionsDialogInPreview, ComesBackWhereItWasAndNeitherReadsNorKeepsItsPlaceElsewhere)
{
    const QRect place(30, 40, 500, 400);
    open([this, place] {
        dialog->setGeometry(place);
        press("cancelButton");
    });
    const QByteArray before = ScratchHome::bytesOf(file());
    QWidget mainWindow;
    mainWindow.setObjectName("VantoraClass");
    for (QWidget* elsewhere : {static_cast<QWidget*>(nullptr), &mainWindow}) {
        parent = elsewhere;
        open([this] {
            EXPECT_EQ(dialog->geometry().center(),
                      QGuiApplication::primaryScreen()->availableGeometry().center());
            dialog->setGeometry(10, 10, 600, 500);
            press("cancelButton");
        });
        EXPECT_EQ(ScratchHome::bytesOf(file()), before);
    }
    parent = &preview;
    open([this, place] {
        EXPECT_EQ(dialog->geometry(), place);
        press("cancelButton");
    });
}

TEST_F(OptionsDialogInPreview, KeepsWhatTheHostHasInTheFileForPlaces)
{
    QDir().mkpath(CUtils::GetSettingsFolder());
    const QByteArray foreign = "[General]\nOther=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)\n"
                               "DeletePagesPrefsDialoggeometry=@ByteArray(\\xff\\0 no place)\n"
                               "[Viewer]\nzoom=1\n";
    ScratchHome::touch(file(), foreign);
    open([this] { press("cancelButton"); });
    const QByteArray text = ScratchHome::bytesOf(file());
    EXPECT_TRUE(text.startsWith(foreign.left(foreign.indexOf("DeletePages")))) << text.data();
    EXPECT_TRUE(text.endsWith("[Viewer]\nzoom=1\n")) << text.data();
    EXPECT_EQ(text.count("DeletePagesPrefsDialoggeometry="), 1);
    EXPECT_FALSE(text.contains("no place"));
}

TEST_F(OptionsDialog, IsUsedByTheKeyboardAlone)
{
    EXPECT_EQ(open([this] {
                  EXPECT_EQ(dialog->focusWidget(), &edit());
                  type("1,3");
                  EXPECT_EQ(
                      tabOrder(*dialog, 6),
                      (QStringList{"byPageRangeTextEdit", "okButton", "cancelButton",
                                   "VDtoolbarAddToActionListButton",
                                   "VDtoolbarAddToCollectionsButton", "vantoraHeaderCloseBtn"}));
                  QTest::keyClick(&edit(), Qt::Key_Tab);
                  QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
              }),
              1);
    EXPECT_EQ(prefs, accepted("1,3"));
}

TEST_F(OptionsDialog, IsAcceptedAndLeftByKeysFromTheRange)
{
    const auto typeAnd = [this](int key, Qt::KeyboardModifier modifier) {
        return open([=] {
            edit().clear();
            type("1,3");
            QTest::keyClick(&edit(), static_cast<Qt::Key>(key), modifier);
            EXPECT_TRUE(QTest::qWaitFor([this] { return !dialog->isVisible(); }, 20000));
        });
    };
    EXPECT_EQ(typeAnd(Qt::Key_Return, Qt::ControlModifier), 1);
    EXPECT_EQ(typeAnd(Qt::Key_Enter, Qt::ControlModifier), 1);
    EXPECT_EQ(prefs, accepted("1,3"));
    EXPECT_EQ(typeAnd(Qt::Key_O, Qt::AltModifier), 1);
    EXPECT_EQ(typeAnd(Qt::Key_C, Qt::AltModifier), 0);
}

/// Where the right edge of a widget of the dialog is.
int rightOf(const QWidget& widget)
{
    return widget.mapTo(widget.window(), widget.rect().bottomRight()).x();
}

TEST_F(OptionsDialog, HasItsButtonsEndWhereTheBorderOfTheGroupDoes)
{
    constexpr int marginInStyleSheet = 4;
    const auto endsWithGroup = [](QWidget& shown) {
        EXPECT_EQ(rightOf(*shown.findChild<QWidget*>("cancelButton")),
                  rightOf(*shown.findChild<QWidget*>("groupBox")) - marginInStyleSheet)
            << shown.objectName().toStdString();
    };
    open([&] {
        endsWithGroup(*dialog);
        for (const auto& [button, saver] :
             {std::pair("VDtoolbarAddToActionListButton", "saveAsActionlistDialog"),
              std::pair("VDtoolbarAddToCollectionsButton", "saveAsCollectionDialog")}) {
            OnModal<QDialog> run(saver, [&](QDialog& shown) {
                endsWithGroup(shown);
                shown.reject();
            });
            press(button);
        }
    });
}

TEST_F(OptionsDialog, ShowsAllOfItsTextsInAnyFontAndDirection)
{
    inShownFonts([this] {
        for (const Qt::LayoutDirection direction : {Qt::RightToLeft, Qt::LeftToRight}) {
            QApplication::setLayoutDirection(direction);
            open([this] {
                EXPECT_EQ(cutTexts(*dialog), QStringList())
                    << cutTexts(*dialog).join(' ').toStdString();
                EXPECT_EQ(child("okButton").width(), 70);
                press("cancelButton");
            });
        }
    });
}

TEST_F(OptionsDialog, HasTheSizeOfItsFormWithTheUsualFont)
{
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPixelSize(13);
    QApplication::setFont(font);
    open([this] {
        EXPECT_EQ(dialog->size(), QSize(351, 301 + 35));
        EXPECT_EQ(dialog->minimumSize(), dialog->size());
        press("cancelButton");
    });
    QApplication::setFont(before);
}

} // namespace
