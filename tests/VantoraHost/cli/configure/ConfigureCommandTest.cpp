#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraApp/CUtils.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/ScratchHome.h"

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

using testing::HasSubstr;

class Configure : public InOwnFolder {
protected:
    /// Opens the options of Delete Pages and lets `use` use the dialog.
    static terminal::Answer open(const std::string& more, const std::function<void(QDialog&)>& use,
                                 const terminal::Setting& setting = {})
    {
        const OnModal<QDialog> run("DeletePagesPrefsDialog", use);
        return terminal::run("configure 'Delete Pages' " + more, setting);
    }

    static QPlainTextEdit& edit(QDialog& dialog)
    {
        return *dialog.findChild<QPlainTextEdit*>("byPageRangeTextEdit");
    }

    static void press(QDialog& dialog, const char* button)
    {
        QTest::mouseClick(dialog.findChild<QWidget*>(button), Qt::LeftButton);
    }

    ScratchHome home;
};

TEST_F(Configure, PrintsWhatIsAccepted)
{
    const auto answer = open("", [](QDialog& dialog) {
        EXPECT_EQ(edit(dialog).toPlainText(), "");
        QTest::keyClicks(&edit(dialog), "1,4-6,");
        press(dialog, "okButton");
    });
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.out, "{\"ActionName\":\"Delete Pages\",\"byPageRangeTextEdit\":\"1,4-6\"}\n");
    EXPECT_EQ(answer.err, "");
}

TEST_F(Configure, StartsFromTheOptionsGivenAndKeepsThoseThatTheDialogDoesNotKnow)
{
    const auto answer = open("--set byPageRangeTextEdit=7 --set other=a=b", [](QDialog& dialog) {
        EXPECT_EQ(edit(dialog).toPlainText(), "7");
        press(dialog, "okButton");
    });
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.out, HasSubstr("\"byPageRangeTextEdit\":\"7\",\"other\":\"a=b\""));
}

TEST_F(Configure, FailsWithNothingPrintedWhenNotAccepted)
{
    const auto answer =
        open("--set byPageRangeTextEdit=7", [](QDialog& dialog) { press(dialog, "cancelButton"); });
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.out, "");
    EXPECT_EQ(answer.err, "vantora: the options were not accepted\n");
}

TEST_F(Configure, LeavesOutTheButtonForActionListsWhenAsked)
{
    for (const bool hidden : {true, false}) {
        open(hidden ? "--hide-add-to-action-list" : "", [hidden](QDialog& dialog) {
            const auto* button = dialog.findChild<QWidget*>("VDtoolbarAddToActionListButton");
            EXPECT_EQ(button->isVisible(), !hidden);
            press(dialog, "cancelButton");
        });
    }
}

struct Place {
    const char* name;
    std::string arguments;
    bool blue;   ///< the frame, as inside the main window
    bool prefix; ///< whether the header names the product
    bool keepsGeometry;
};

TEST_F(Configure, ShowsTheDialogInsideTheWindowAskedFor)
{
    const Place places[] = {
        {"alone", "", false, true, false},
        {"main window", "--inside main-window", true, false, false},
        {"preview", "--inside preview", false, false, true},
    };
    for (const Place& place : places) {
        SCOPED_TRACE(place.name);
        open(place.arguments, [&place](QDialog& dialog) {
            const auto* frame = dialog.findChild<QWidget*>("VDmainFrame");
            EXPECT_EQ(frame->styleSheet().contains("rgb(50,50,170)"), place.blue);
            EXPECT_EQ(dialog.findChild<QLabel*>("VDPrefixLabel")->isVisible(), place.prefix);
            EXPECT_EQ(dialog.parentWidget() != nullptr && dialog.parentWidget()->isVisible(),
                      !place.arguments.empty());
            press(dialog, "cancelButton");
        });
        EXPECT_EQ(QFile::exists(CUtils::GetSettingsFolder() + "/VantoraViewerSettings.vsf"),
                  place.keepsGeometry);
    }
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty()) << "a window was left behind";
}

TEST_F(Configure, EndsWhenInterrupted)
{
    bool stop = false;
    terminal::Setting setting;
    setting.interrupted = [&stop] { return stop; };
    const auto answer = open(
        "", [&stop](QDialog&) { stop = true; }, setting);
    EXPECT_EQ(answer.status, 130);
    EXPECT_EQ(answer.out, "");
}

TEST_F(Configure, NamesTheActionsThatThereAre)
{
    const auto answer = terminal::run("configure 'Rotate Pages'");
    EXPECT_EQ(answer.status, 2);
    EXPECT_THAT(answer.err, HasSubstr("no action \"Rotate Pages\" is installed, only: "));
}

/// Saves the options of the dialog under a name by one of its header's buttons.
void saveBy(QDialog& dialog, const char* button, const char* saver, const char* nameEdit)
{
    const OnModal<QDialog> save(saver, [nameEdit](QDialog& shown) {
        QTest::keyClicks(shown.findChild<QLineEdit*>(nameEdit), "Middle pages");
        QTest::mouseClick(shown.findChild<QPushButton*>("saveButton"), Qt::LeftButton);
    });
    QTest::mouseClick(dialog.findChild<QWidget*>(button), Qt::LeftButton);
}

TEST_F(Configure, SavesWhatRunThenRuns)
{
    scratch.write("in.pdf", support::documentOfPages(5));

    open("", [](QDialog& dialog) {
        QTest::keyClicks(&edit(dialog), "2-4");
        saveBy(dialog, "VDtoolbarAddToActionListButton", "saveAsActionlistDialog",
               "actionListNameLineEdit");
        saveBy(dialog, "VDtoolbarAddToCollectionsButton", "saveAsCollectionDialog",
               "collectionNameLineEdit");
    });
    for (const char* option : {"--list", "--favourite"}) {
        const auto answer = terminal::run(std::string("run in.pdf -o out.pdf --overwrite ") +
                                          option + " 'Middle pages'");
        EXPECT_EQ(answer.status, 0) << option << answer.err;
        EXPECT_EQ(support::pageTexts(support::readFile("out.pdf")), support::pagesNamed({1, 5}));
    }
    EXPECT_THAT(terminal::run("lists").out, HasSubstr("Middle pages  (Default, Delete Pages"));
    EXPECT_THAT(terminal::run("favourites").out, HasSubstr("Middle pages  (Delete Pages"));
}

} // namespace
