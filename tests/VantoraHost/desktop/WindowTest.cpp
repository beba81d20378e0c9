#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;

class Window : public OpenWindow {};

TEST_F(Window, HasTheNamesThatActionsLookForAndSaysWhatToDo)
{
    EXPECT_EQ(window->objectName(), "VantoraClass");
    EXPECT_EQ(window->windowTitle(), "Sorrelin");
    EXPECT_NE(window->findChild<QWidget*>("VantoraPreviewClass"), nullptr);
    EXPECT_TRUE(part<QLabel>("titleLabel").isVisible());
    EXPECT_FALSE(part<QWidget>("runButton").isEnabled());
}

TEST_F(Window, RemovesTwoPagesFromTwentyDocumentsThatAreDroppedOnIt)
{
    QMimeData dropped;
    QList<QUrl> urls;
    for (int i = 1; i <= 20; ++i) {
        urls << QUrl::fromLocalFile(
            write("scan " + std::to_string(i) + ".pdf", support::documentOfPages(i == 20 ? 3 : 6)));
    }
    dropped.setUrls(urls);
    QDropEvent drop({10, 10}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    static_cast<QObject&>(*window).event(&drop); // as if it had been dragged there
    EXPECT_TRUE(drop.isAccepted());
    waitForPlan("Mark the pages");
    bench().markForAll("2,5");
    waitForPlan("39 ");
    waitForRun();
    EXPECT_THAT(shownIn("summaryLabel"), HasSubstr("39 "));
    EXPECT_EQ(pagesOf("out/scan 1.pdf"), 4);
    EXPECT_EQ(pagesOf("out/scan 20.pdf"), 2);
    EXPECT_EQ(pagesOf("in/scan 1.pdf"), 6);
    EXPECT_EQ(stateOf(0), DocumentState::Done);
    waitForPlan("are done");
    EXPECT_FALSE(part<QWidget>("runButton").isEnabled()) << "all is done, until something changes";
    bench().markForAll("3");
    waitForPlan("exists already");
}

TEST_F(Window, GoesOnWithWhatAStoppedRunHasLeft)
{
    QStringList files;
    for (int i = 1; i <= 12; ++i) {
        files << write(std::to_string(i) + ".pdf", support::documentOfPages(3));
    }
    add(files);
    bench().markForAll("1");
    waitForPlan("12 ");
    const auto stop =
        QObject::connect(&bench().runs, &RunController::started, [&] { bench().runs.cancel(); });
    waitForRun();
    QObject::disconnect(stop);
    // However many were done by then, those are whole, and the others are not begun.
    for (const auto& output : std::filesystem::directory_iterator(scratch.path("out"))) {
        EXPECT_EQ(pagesOf("out/" + output.path().filename().string()), 2);
    }
    if (bench().runs.summary().finished() < 12) {
        EXPECT_THAT(shownIn("summaryLabel"), HasSubstr("Stopped"));
        waitForPlan(" will go from");
        waitForRun();
    }
    for (int row = 0; row < 12; ++row) {
        EXPECT_EQ(stateOf(row), DocumentState::Done);
    }
}

TEST_F(Window, AsksForThePasswordOnceAndTriesItOnTheOtherLockedDocuments)
{
    const std::string locked =
        support::rewritten(support::documentOfPages(3), "--encrypt secret owner 256 --");
    add({write("a.pdf", locked), write("b.pdf", locked)});
    EXPECT_EQ(stateOf(0), DocumentState::Locked);
    ASSERT_TRUE(part<QWidget>("passwordEdit").isVisible());
    part<QLineEdit>("passwordEdit").setText("wrong");
    press("passwordButton");
    wait([&] { return shownIn("detailLabel").find("does not open") != std::string::npos; });
    part<QLineEdit>("passwordEdit").setText("secret");
    press("passwordButton");
    wait([&] { return stateOf(0) == DocumentState::Ready && stateOf(1) == DocumentState::Ready; });
    EXPECT_FALSE(part<QWidget>("passwordEdit").isVisible());
    window->close();
    for (const auto& file :
         std::filesystem::recursive_directory_iterator(home.data().toStdString())) {
        if (file.is_regular_file()) {
            EXPECT_THAT(support::readFile(file.path()), testing::Not(HasSubstr("secret")));
        }
    }
}

TEST_F(Window, ShowsWhyADocumentCannotBeReadAndLeavesItOut)
{
    add({write("broken.pdf", "no PDF at all"), write("good.pdf", support::documentOfPages(2)),
         QString::fromStdString(scratch.path("in/missing.pdf"))});
    EXPECT_EQ(stateOf(0), DocumentState::Damaged);
    EXPECT_EQ(stateOf(2), DocumentState::Damaged);
    EXPECT_THAT(bench().list.index(2, DocumentList::State).data().toString().toStdString(),
                HasSubstr("no such file"));
    bench().markForAll("1");
    waitForPlan("are left out");
    waitForRun();
    EXPECT_EQ(pagesOf("out/good.pdf"), 1);
}

TEST_F(Window, ReadsADocumentAnewThatHasChangedAndNeverRunsItAsItWas)
{
    add({write("a.pdf", support::documentOfPages(3))});
    bench().markForAll("1");
    waitForPlan("1 ");
    write("a.pdf", support::documentOfPages(7));
    press("runButton");
    EXPECT_FALSE(bench().runs.isRunning());
    wait([&] { return bench().list.documents()[0].pages == 7; });
}

TEST_F(Window, SaysWhatToDoAboutAFailureAndRetriesIt)
{
    runInPlaceWhereTheFirstFails();
    EXPECT_EQ(stateOf(0), DocumentState::Failed) << "no page would be left of it";
    EXPECT_EQ(bench().results.failed().size(), 1U);
    wait([&] { return stateOf(1) == DocumentState::Done; });
    EXPECT_EQ(bench().list.documents()[1].pages, 2) << "the replaced file is shown as it is";
    EXPECT_TRUE(QFile::exists(QString::fromStdString(scratch.path("in/long.pdf.bak"))));
    bench().undo.undo(); // nothing is marked any more
    bench().markForAll("2");
    EXPECT_EQ(stateOf(1), DocumentState::Ready) << "other pages are another run";
    ASSERT_TRUE(part<QWidget>("retryButton").isVisible());
    bool over = false;
    QObject::connect(&bench().runs, &RunController::finished, [&over] { over = true; });
    press("retryButton");
    wait([&] { return over; });
    EXPECT_EQ(pagesOf("in/short.pdf"), 1);
}

TEST_F(Window, DoesDamagedDocumentsWithLossesWhereThatIsChosenOnceForAll)
{
    support::PagedDocument file(4);
    const std::string content = "\n" + std::to_string(file.pages[2] - 1) + " 0 ";
    const std::string whole = file.build();
    const std::string damaged = support::replaced(whole, content + "obj", content + "xxx");
    add({write("a.pdf", damaged), write("b.pdf", damaged), write("whole.pdf", whole)});
    bench().markForAll("1");
    bool over = false;
    QObject::connect(&bench().runs, &RunController::finished, [&over] { over = true; });
    bench().startRun();
    wait([&] { return std::exchange(over, false); });
    EXPECT_EQ(bench().results.damaged().size(), 2U);
    ASSERT_TRUE(part<QWidget>("salvageButton").isVisible());
    press("salvageButton");
    wait([&] { return std::exchange(over, false); });
    EXPECT_TRUE(bench().results.failed().empty());
    EXPECT_FALSE(part<QWidget>("salvageButton").isVisible());
    EXPECT_THAT(bench().commands().toStdString(), testing::HasSubstr(" --salvage -- "));
    const ResultList& results = bench().results;
    for (int row = 0; row < 2; ++row) {
        EXPECT_THAT(results.index(row, ResultList::Outcome).data().toString().toStdString(),
                    testing::HasSubstr("done; lost of page 3: content"));
    }
    EXPECT_EQ(pagesOf("out/a.pdf") + pagesOf("out/b.pdf") + pagesOf("out/whole.pdf"), 9);
}

TEST_F(Window, UndoesWhatWasDoneToTheListTheMarksAndTheSteps)
{
    add({write("a.pdf", support::documentOfPages(3)), write("b.pdf", support::documentOfPages(3))});
    bench().documents.remove({bench().list.documents()[0].id});
    bench().markForAll("2");
    part<QWidget>("removeButton").setFocus();
    press("removeButton");
    EXPECT_EQ(bench().steps.rowCount(), 0);
    waitForPlan("No step is switched on");
    bench().undo.undo();
    EXPECT_EQ(bench().steps.rowCount(), 1);
    bench().undo.undo();
    EXPECT_EQ(bench().marks.forAll().text, "");
    bench().undo.undo();
    EXPECT_EQ(bench().list.rowCount(), 2);
    EXPECT_EQ(bench().list.index(0, 0).data().toString(), "a.pdf");
    bench().undo.undo();
    EXPECT_EQ(bench().list.rowCount(), 0);
    bench().undo.redo();
    EXPECT_EQ(bench().list.rowCount(), 2);
}

TEST_F(Window, OpensThePlugInsOwnDialogWhosePagesBecomeTheMarks)
{
    add({write("a.pdf", support::documentOfPages(3))});
    bench().markForAll("1");
    {
        const OnModal<QDialog> configure("DeletePagesPrefsDialog", [](QDialog& dialog) {
            auto* edit = dialog.findChild<QPlainTextEdit*>("byPageRangeTextEdit");
            EXPECT_EQ(edit->toPlainText(), "1");
            edit->setPlainText("2-3");
            QTest::mouseClick(dialog.findChild<QWidget*>("okButton"), Qt::LeftButton);
        });
        press("configureButton");
    }
    EXPECT_EQ(bench().marks.forAll().text, "2-3");
    bench().undo.undo();
    EXPECT_EQ(bench().marks.forAll().text, "1");
}

TEST_F(Window, FindsTheDocumentsInFoldersAndMirrorsTheirSubfolders)
{
    std::filesystem::create_directories(scratch.path("in/2026/may"));
    write("a.pdf", support::documentOfPages(3));
    write("2026/may/b.pdf", support::documentOfPages(3));
    window->open({QString::fromStdString(scratch.path("in"))});
    bench().markForAll("1");
    waitForPlan("2 ");
    waitForRun();
    EXPECT_EQ(pagesOf("out/a.pdf"), 2);
    EXPECT_EQ(pagesOf("out/2026/may/b.pdf"), 2);
}

TEST_F(Window, AsksBeforeItClosesDuringARun)
{
    QStringList files;
    for (int i = 1; i <= 5; ++i) {
        files << write(std::to_string(i) + ".pdf", support::documentOfPages(3));
    }
    add(files);
    bench().markForAll("1");
    waitForPlan("5 ");
    bool asked = false;
    QObject::connect(&bench().runs, &RunController::started, [&] {
        window->close();
        asked = window->isVisible();
    });
    waitForRun();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(window->close());
}

TEST_F(Window, RemembersWhereResultsGoButNotToReplaceDocuments)
{
    choose("placeCombo", 1); // beside
    part<QLineEdit>("nameEdit").setText("{name}-short{ext}");
    window->close();
    open();
    EXPECT_EQ(part<QComboBox>("placeCombo").currentIndex(), 1);
    EXPECT_EQ(part<QLineEdit>("nameEdit").text(), "{name}-short{ext}");
    choose("placeCombo", 2); // in place
    window->close();
    open();
    EXPECT_EQ(part<QComboBox>("placeCombo").currentIndex(), 0);
}

TEST(DesktopProgram, NeedsADisplayForItsWindowAlone)
{
    const struct {
        const char* name;
        const char* arguments;
        int status;
        const char* said;
    } rows[] = {
        {"help", "--help", 0, "vantora-desktop [--new-window] [FILE...]"},
        {"version", "--version", 0, "vantora-desktop "},
        {"a wrong option", "--fast", 2, "vantora-desktop: there is no option --fast"},
        {"a window", "", 1,
         "vantora-desktop: error: no display can be reached; run it in a desktop session"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = support::runCommand(
            std::string("env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb " BUILT_DESKTOP
                        " ") +
            row.arguments + " 2>&1");
        EXPECT_EQ(result.status, row.status);
        EXPECT_THAT(result.output, HasSubstr(row.said));
    }
}

} // namespace
