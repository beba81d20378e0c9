#include "VantoraHost/desktop/run/PastRuns.h"
#include "VantoraHost/desktop/run/ResultsPane.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::ElementsAre;
using testing::HasSubstr;

class PastRunsTest : public testing::Test {
protected:
    QDateTime at(int second) const { return QDateTime({2026, 11, 26}, {10, 0, second}, Qt::UTC); }

    support::ScratchFolder scratch;
    const std::string folder = scratch.path("state/runs");
    const PastRuns runs{folder};
};

TEST_F(PastRunsTest, AreKeptPrivatelyTheLatestFirstAndBoundedInNumber)
{
    EXPECT_TRUE(runs.list().empty());
    for (int i = 0; i < static_cast<int>(PastRuns::most) + 3; ++i) {
        const auto begun = runs.begin(at(i), static_cast<std::size_t>(i));
        ASSERT_TRUE(begun) << begun.error().sentence;
    }
    const auto list = runs.list();
    ASSERT_EQ(list.size(), PastRuns::most);
    EXPECT_EQ(list.front().documents, PastRuns::most + 2);
    EXPECT_EQ(list.front().begun, at(static_cast<int>(PastRuns::most) + 2));
    EXPECT_EQ(list.back().documents, 3U);
    struct stat status = {};
    ASSERT_EQ(::stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(PastRunsTest, OfTwoWindowsInOneMomentHaveReportsOfTheirOwn)
{
    const auto one = runs.begin(at(1), 2);
    const auto other = runs.begin(at(1), 2);
    ASSERT_TRUE(one && other);
    EXPECT_NE(one->path, other->path);
    EXPECT_EQ(runs.list().size(), 2U);
}

TEST_F(PastRunsTest, LeaveAloneWhatIsNoReportOfTheirs)
{
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    scratch.write("state/runs/notes.jsonl", "mine");
    for (int i = 0; i < 30; ++i) {
        ASSERT_TRUE(runs.begin(at(i), 1));
    }
    EXPECT_EQ(support::readFile(folder + "/notes.jsonl"), "mine");
    EXPECT_EQ(runs.list().size(), PastRuns::most);
}

TEST_F(PastRunsTest, AreRefusedAFolderThatOthersMayLookInto)
{
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    const auto begun = runs.begin(at(1), 1);
    ASSERT_FALSE(begun);
    EXPECT_THAT(begun.error().sentence, HasSubstr("nobody else may look into"));
}

class UndoInWindow : public OpenWindow {
protected:
    void addAndRun(int place)
    {
        add({write("a.pdf", support::documentOfPages(3)),
             write("b.pdf", support::documentOfPages(5))});
        bench().markForAll("1");
        choose("placeCombo", place);
        waitForPlan("2 ");
        waitForRun();
    }

    /// Presses a button of the results, once it is there.
    void pressResults(const char* button)
    {
        auto& found = *part<ResultsPane>("ResultsPane").findChild<QPushButton*>(button);
        wait([&] { return found.isVisible(); });
        QTest::mouseClick(&found, Qt::LeftButton);
    }

    /// Undoes the run whose results are shown.
    void undoRun()
    {
        pressResults("undoButton");
        pressResults("undoNowButton");
        wait([&] { return !bench().undoing.isBusy(); });
    }

    std::string outcomeOf(int row)
    {
        return bench().results.index(row, ResultList::Outcome).data().toString().toStdString();
    }

    bool isThere(const char* name) const { return std::filesystem::exists(scratch.path(name)); }
};

TEST_F(UndoInWindow, RemovesTheResultsAfterSayingWhatItWouldDo)
{
    addAndRun(0);
    EXPECT_TRUE(isThere("out/a.pdf"));
    pressResults("undoButton");
    wait([&] { return part<QWidget>("undoNowButton").isVisible(); });
    EXPECT_EQ(shownIn("undoLabel"), "Undo this run? 2 result(s) will be removed.");
    EXPECT_TRUE(isThere("out/a.pdf")) << "it only asks";
    pressResults("keepButton");
    EXPECT_FALSE(part<QWidget>("undoRow").isVisible());
    undoRun();
    EXPECT_FALSE(isThere("out/a.pdf"));
    EXPECT_FALSE(isThere("out/b.pdf"));
    EXPECT_EQ(pagesOf("in/a.pdf"), 3);
    EXPECT_THAT(outcomeOf(0), HasSubstr("the result is removed"));
    EXPECT_EQ(stateOf(0), DocumentState::Ready) << "it can be run again";
    waitForPlan("2 ");
    waitForRun();
    EXPECT_EQ(pagesOf("out/a.pdf"), 2);
}

TEST_F(UndoInWindow, PutsOriginalsBackAndLeavesAloneWhatWasChangedSince)
{
    addAndRun(2);
    EXPECT_EQ(pagesOf("in/a.pdf"), 2);
    write("b.pdf", support::documentOfPages(1));
    undoRun();
    EXPECT_EQ(pagesOf("in/a.pdf"), 3);
    EXPECT_FALSE(isThere("in/a.pdf.bak"));
    EXPECT_EQ(pagesOf("in/b.pdf"), 1);
    EXPECT_TRUE(isThere("in/b.pdf.bak"));
    EXPECT_THAT(shownIn("undoLabel"), HasSubstr("b.pdf: was changed after the run"));
    int leftAlone = 0;
    for (int row = 0; row < bench().results.rowCount(); ++row) {
        leftAlone += outcomeOf(row).find("left alone") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(leftAlone, 1);
    wait([&] { return bench().list.documents()[0].pages == 3; });
}

TEST_F(UndoInWindow, WorksAfterARestartFromTheListOfPastRuns)
{
    addAndRun(2);
    window->close();
    open();
    const auto runs = bench().pastRuns.list();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].documents, 2U);
    bench().showPastRun(runs[0]);
    wait([&] { return part<ResultsPane>("ResultsPane").isVisible(); });
    EXPECT_EQ(bench().results.rowCount(), 2);
    EXPECT_THAT(shownIn("summaryLabel"), HasSubstr("Run of "));
    EXPECT_FALSE(part<QWidget>("commandButton").isVisible()) << "it is known of the last run only";
    undoRun();
    EXPECT_EQ(pagesOf("in/a.pdf"), 3);
    EXPECT_EQ(pagesOf("in/b.pdf"), 5);
    pressResults("undoButton");
    wait([&] { return shownIn("undoLabel").find("Nothing to undo") != std::string::npos; });
}

TEST_F(UndoInWindow, OfARunThatWasGoneOnWithUndoesAllOfIt)
{
    runInPlaceWhereTheFirstFails();
    EXPECT_EQ(bench().results.failed().size(), 1U);
    bench().undo.undo();
    bench().markForAll("2");
    bool over = false;
    QObject::connect(&bench().runs, &RunController::finished, [&over] { over = true; });
    wait([&] {
        const auto& all = bench().list.documents();
        return std::none_of(all.begin(), all.end(), [](const Document& document) {
            return document.state == DocumentState::Reading;
        });
    });
    bench().documents.remove({bench().list.documents()[1].id}); // so that only the other is retried
    pressResults("retryButton");
    wait([&] { return over; });
    EXPECT_EQ(bench().pastRuns.list().size(), 1U) << "both are one run";
    EXPECT_EQ(pagesOf("in/short.pdf"), 1);
    undoRun();
    EXPECT_EQ(pagesOf("in/short.pdf"), 2);
    EXPECT_EQ(pagesOf("in/long.pdf"), 4);
}

TEST_F(UndoInWindow, IsNotOfferedWhereNoReportCouldBeKeptAndItIsSaid)
{
    const std::string state = home.home().toStdString() + "/.local/state/vantora/runs";
    std::filesystem::create_directories(state);
    std::filesystem::permissions(state, std::filesystem::perms::all);
    std::string said;
    QObject::connect(&bench(), &Workbench::noted,
                     [&said](const QString& sentence) { said += sentence.toStdString(); });
    addAndRun(0);
    EXPECT_THAT(said, HasSubstr("This run can't be undone later"));
    EXPECT_FALSE(part<QWidget>("undoButton").isVisible());
    EXPECT_EQ(pagesOf("out/a.pdf"), 2) << "the run goes on without";
}

} // namespace
