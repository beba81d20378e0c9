#include "VantoraApp/dialogs/CMsgBoxDialog.h"
#include "tests/support/FakeOpenGL.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/ShownTexts.h"

#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtTest/QTest>

#include <functional>
#include <gtest/gtest.h>

namespace {

const auto pressEscape = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); };

template <class Widget = QWidget>
Widget& child(QDialog& box, const char* name)
{
    return *box.findChild<Widget*>(name);
}

auto press(const char* button)
{
    return [button](QDialog& box) { QTest::mouseClick(&child(box, button), Qt::LeftButton); };
}

class CMsgBoxDialogTest : public testing::Test {
protected:
    ~CMsgBoxDialogTest() override
    {
        CMsgBoxDialog::mGlobalParent = nullptr;
        hasOpenGL = false;
    }

    /// Runs a box of the usual kind, looks at it and leaves it.
    static void look(const std::function<void(CMsgBoxDialog&)>& at,
                     const QString& message = "A message", const QString& title = "Sorrelin",
                     int type = 0)
    {
        OnModal<CMsgBoxDialog> run([&at](CMsgBoxDialog& box) {
            at(box);
            pressEscape(box);
        });
        CMsgBoxDialog::execDialog(type, title, message, "OK", "", "");
    }
};

TEST_F(CMsgBoxDialogTest, StaysInFrontOfTheDialogThatItKeepsFromBeingUsed)
{
    QDialog dialog;
    OnModal<QDialog> run([](QDialog& shown) {
        look([&shown](CMsgBoxDialog& box) {
            EXPECT_EQ(box.parentWidget(), nullptr);
            EXPECT_EQ(box.windowHandle()->transientParent(), shown.windowHandle());
        });
        shown.reject();
    });
    dialog.exec();
}

TEST_F(CMsgBoxDialogTest, ShowsWhichButtonHasTheKeyboard)
{
    look([](CMsgBoxDialog& box) {
        QWidget& ring = child(box, "VDfocusRing");
        EXPECT_FALSE(ring.isVisible());
        QTest::keyClick(&box, Qt::Key_Tab);
        EXPECT_EQ(box.focusWidget(), &child(box, "btn1"));
        EXPECT_TRUE(ring.isVisible());
    });
}

struct ResultRow {
    const char* name;
    std::function<void(QDialog&)> leave;
    int result;
};

TEST_F(CMsgBoxDialogTest, ReturnsTheIndexOfTheButton)
{
    const ResultRow rows[] = {
        {"the first button", press("btn1"), 0},
        {"the third button", press("btn3"), 2},
        {"Escape", pressEscape, 0},
        {"closing the window", [](QDialog& box) { box.close(); }, 0},
        {"Return without a focus on a button",
         [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); }, 0},
        {"Return on the third button",
         [](QDialog& box) {
             child(box, "btn3").setFocus();
             QTest::keyClick(&child(box, "btn3"), Qt::Key_Return);
         },
         2},
        {"Tab to the second button and space",
         [](QDialog& box) {
             child(box, "btn1").setFocus();
             QTest::keyClick(&child(box, "btn1"), Qt::Key_Tab);
             QTest::keyClick(box.focusWidget(), Qt::Key_Space);
         },
         1},
    };
    for (const ResultRow& row : rows) {
        SCOPED_TRACE(row.name);
        OnModal<CMsgBoxDialog> run(row.leave);
        EXPECT_EQ(CMsgBoxDialog::question("Sorrelin", "Well?", "One", "Two", "Three"), row.result);
    }
}

struct ButtonsRow {
    const char* button1;
    const char* button2;
    const char* button3;
    QStringList shown;
};

TEST_F(CMsgBoxDialogTest, ShowsTheButtonsThatHaveATextAndTheirSeparators)
{
    const ButtonsRow rows[] = {
        {"Yes", "No", "", {"btn1", "separator1", "btn2"}},
        {"Yes", "", "Cancel", {"btn1", "separator2", "btn3"}},
        {"Yes", "No", "Cancel", {"btn1", "separator1", "btn2", "separator2", "btn3"}},
        {"", "", "", {"btn1"}},
    };
    for (const ButtonsRow& row : rows) {
        QStringList shown;
        OnModal<CMsgBoxDialog> run([&shown, &row](CMsgBoxDialog& box) {
            QLayout* layout = child(box, "btnBox_widget").layout();
            for (int i = 0; i < layout->count(); ++i) {
                QWidget* widget = layout->itemAt(i)->widget();
                if (widget != nullptr && widget->isVisible())
                    shown << widget->objectName();
            }
            EXPECT_EQ(child<QToolButton>(box, "btn1").text(), row.button1);
            pressEscape(box);
        });
        CMsgBoxDialog::warning("Sorrelin", "", row.button1, row.button2, row.button3);
        EXPECT_EQ(shown, row.shown) << shown.join(' ').toStdString();
    }
}

TEST_F(CMsgBoxDialogTest, HasAnIconForItsFourTypesOnly)
{
    for (const int type : {0, 3, 4, -1}) {
        look(
            [type](CMsgBoxDialog& box) {
                EXPECT_EQ(child(box, "iconLabel").isVisible(), type >= 0 && type <= 3) << type;
            },
            "", "", type);
    }
}

TEST_F(CMsgBoxDialogTest, ShowsItsMessageAsPlainText)
{
    look(
        [](CMsgBoxDialog& box) {
            auto& label = child<QLabel>(box, "messageLabel");
            EXPECT_EQ(label.text(), "<b>1</b>\n& more");
            EXPECT_EQ(label.textFormat(), Qt::PlainText);
            EXPECT_TRUE(label.wordWrap());
            EXPECT_EQ(box.accessibleDescription(), label.text());
        },
        "<b>1</b>\n& more");
}

struct PlaceRow {
    const char* name;
    std::vector<const char*> coveredAndAncestors; ///< from the covered window up
    bool openGL;
    const char* title;
    QRect geometry;
    const char* shownTitle;
    bool dark;
};

// The covered window lies at (100, 50) and has 601 x 401 pixels.
TEST_F(CMsgBoxDialogTest, IsPlacedAndTitledByTheWindowItCovers)
{
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    const QRect onScreen(screen.width() / 2 - 220, screen.height() / 2 - 90, 440, 180);
    const QRect centred(400 - 220, 250 - 90, 440, 180);
    const QRect covering(108, 58, 585, 385);
    const char* const none = "MessageBox Title";
    const PlaceRow rows[] = {
        {"nothing", {}, false, "Title", onScreen, "Title", false},
        {"nothing, translucent", {}, true, none, onScreen, none, false},
        {"a window", {"VantoraClass"}, false, none, centred, none, false},
        {"a titled box over it", {"VantoraClass"}, true, "Title", covering, "Title", false},
        {"the preview", {"VantoraPreviewClass"}, true, none, covering, "Sorrelin", true},
        {"another window", {"Other"}, true, none, covering, "Sorrelin", true},
        {"one inside it", {"Other", "VantoraClass"}, true, none, covering, "Sorrelin", false},
    };
    for (const PlaceRow& row : rows) {
        SCOPED_TRACE(row.name);
        hasOpenGL = row.openGL;
        QWidget outer;
        QWidget covered(row.coveredAndAncestors.size() > 1 ? &outer : nullptr, Qt::Window);
        covered.setGeometry(100, 50, 601, 401);
        if (!row.coveredAndAncestors.empty()) {
            covered.setObjectName(row.coveredAndAncestors.front());
            outer.setObjectName(row.coveredAndAncestors.back());
        }
        CMsgBoxDialog::mGlobalParent = row.coveredAndAncestors.empty() ? nullptr : &covered;
        look(
            [&row](CMsgBoxDialog& box) {
                EXPECT_EQ(box.geometry(), row.geometry);
                EXPECT_EQ(box.parentWidget(), CMsgBoxDialog::mGlobalParent);
                EXPECT_EQ(box.testAttribute(Qt::WA_TranslucentBackground), row.openGL);
                auto& title = child<QLabel>(box, "titleLabel");
                EXPECT_EQ(title.text(), row.shownTitle);
                for (const char* name : {"titleLabel", "btnBox_widget"})
                    EXPECT_EQ(child(box, name).styleSheet().contains("rgb(40,36,36)"), row.dark);
                EXPECT_EQ(child(box, "mainDlg_frame").geometry().center(),
                          child(box, "mainOpaqueFrame").rect().center());
            },
            "A message", row.title);
    }
}

TEST_F(CMsgBoxDialogTest, GrowsAroundItsCentreForALongMessageButNotBeyondTheScreen)
{
    const QString message = QString("A page range names pages of the document. ").repeated(20);
    QPoint usualCentre;
    look([&usualCentre](CMsgBoxDialog& box) { usualCentre = box.geometry().center(); });
    for (const bool openGL : {false, true}) {
        hasOpenGL = openGL;
        look(
            [usualCentre](CMsgBoxDialog& box) {
                auto& label = child<QLabel>(box, "messageLabel");
                EXPECT_GE(label.height(), label.heightForWidth(label.width()));
                EXPECT_GT(box.height(), 180);
                EXPECT_LE((box.geometry().center() - usualCentre).manhattanLength(), 1);
            },
            message);
    }
    const int most = QGuiApplication::primaryScreen()->availableGeometry().height();
    look([most](CMsgBoxDialog& box) { EXPECT_LE(box.height(), most); }, message.repeated(200));
}

TEST_F(CMsgBoxDialogTest, ShowsAllOfItsTexts)
{
    inShownFonts([] {
        look(
            [](CMsgBoxDialog& box) {
                auto& title = child<QLabel>(box, "titleLabel");
                EXPECT_GE(title.height(), title.fontMetrics().height());
                title.clear(); // its padding may be cut
                EXPECT_EQ(cutTexts(box), QStringList()) << cutTexts(box).join(' ').toStdString();
            },
            "The page range is invalid. Please enter a valid page range and try again.");
    });
}

TEST_F(CMsgBoxDialogTest, HasOneCallForEachTypeWithRoomForLongButtonTexts)
{
    using Call = int (*)(QString, QString, QString, QString, QString);
    for (const Call call : {CMsgBoxDialog::information, CMsgBoxDialog::question,
                            CMsgBoxDialog::warning, CMsgBoxDialog::error}) {
        OnModal<CMsgBoxDialog> run([](CMsgBoxDialog& box) {
            EXPECT_EQ(child<QLabel>(box, "titleLabel").text(), "title");
            EXPECT_EQ(child<QLabel>(box, "messageLabel").text(), "message");
            for (const char* name : {"btn1", "btn2", "btn3"})
                EXPECT_GE(child(box, name).width(), child(box, name).sizeHint().width()) << name;
            press("btn3")(box);
        });
        EXPECT_EQ(call("title", "message", "Replace all of the files",
                       "Leave the files as they are", "Ask for each"),
                  2);
    }
}

} // namespace
