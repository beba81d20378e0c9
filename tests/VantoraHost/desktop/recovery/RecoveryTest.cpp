#include "VantoraHost/desktop/documents/DocumentCommands.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>

#include <fstream>
#include <map>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;
using testing::Not;

void putInto(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

class Recovery : public OpenWindow {
protected:
    std::string kept() const { return home.home().toStdString() + "/.local/state/vantora/windows"; }

    /// The files in which windows keep their work.
    std::vector<std::string> files() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(kept())) {
            if (entry.path().extension() == ".json") {
                found.push_back(entry.path().string());
            }
        }
        return found;
    }

    /// What a crash leaves: the window is gone, and nothing has said that it is to close.
    void crash()
    {
        bench().keeper.keepNow();
        window.reset();
    }

    bool isOffered() { return part<QPushButton>("recoverButton").isVisible(); }

    void bringBack()
    {
        wait([&] { return isOffered(); });
        press("recoverButton");
        wait([&] { return !bench().list.documents().empty() && allAreRead(); });
    }

    bool allAreRead()
    {
        const auto& all = bench().list.documents();
        return std::none_of(all.begin(), all.end(), [](const Document& document) {
            return document.state == DocumentState::Reading;
        });
    }

    DocumentId idOf(int row)
    {
        return bench().list.documents().at(static_cast<std::size_t>(row)).id;
    }

    void markHere(int row, const QString& range)
    {
        bench().undo.push(
            new MarkCommand(bench().marks, idOf(row), Marks::ofText(range, {}), "marking"));
    }
};

TEST_F(Recovery, BringsBackTheListTheMarksAndTheStepsAsOneStepOfUndo)
{
    add({write("b.pdf", support::documentOfPages(3)), write("a.pdf", support::documentOfPages(4)),
         write("gone.pdf", support::documentOfPages(1))});
    bench().markForAll("2");
    markHere(1, "1,3");
    ListedSteps steps = bench().steps.steps();
    steps.push_back(steps.front());
    steps.back().isOn = false;
    bench().undo.push(new ChangeSteps(bench().steps, steps, "a second step"));
    crash();
    fs::remove(scratch.path("in/gone.pdf"));

    open();
    wait([&] { return isOffered(); });
    EXPECT_THAT(shownIn("recoveryLabel"), HasSubstr("3 "));
    EXPECT_EQ(bench().list.rowCount(), 0) << "it only asks";
    bringBack();
    ASSERT_EQ(bench().list.rowCount(), 3);
    EXPECT_EQ(nameOf(bench().list.documents()[0]), "b.pdf");
    EXPECT_EQ(nameOf(bench().list.documents()[1]), "a.pdf");
    EXPECT_EQ(stateOf(2), DocumentState::Damaged) << "it is listed with the reason";
    EXPECT_EQ(bench().marks.forAll().text, "2");
    EXPECT_FALSE(bench().marks.isOwn(idOf(0)));
    EXPECT_EQ(bench().marks.of(idOf(1)).text, "1,3");
    EXPECT_EQ(bench().steps.steps(), steps);
    EXPECT_FALSE(isOffered());
    bench().undo.undo();
    EXPECT_EQ(bench().list.rowCount(), 0);
    EXPECT_EQ(bench().marks.forAll().text, "");
    EXPECT_EQ(bench().steps.rowCount(), 1);
    EXPECT_FALSE(bench().undo.canUndo());
}

TEST_F(Recovery, IsForWindowsThatWereCutOffAndNotForThoseThatWereClosed)
{
    add({write("a.pdf", support::documentOfPages(1))});
    bench().keeper.keepNow();
    ASSERT_EQ(files().size(), 1U);
    window->close();
    EXPECT_TRUE(fs::is_empty(kept()));
    open();
    add({write("a.pdf", support::documentOfPages(1))});
    crash();
    open();
    wait([&] { return isOffered(); });
    press("dontRecoverButton");
    EXPECT_FALSE(isOffered());
    EXPECT_TRUE(fs::is_empty(kept()));
}

TEST_F(Recovery, OffersWhatEachOfSeveralWindowsHasLeftAndNothingOfThoseThatAreThere)
{
    const auto other = std::make_unique<MainWindow>(installation());
    other->open({write("there.pdf", support::documentOfPages(1))});
    other->workbench().keeper.keepNow();
    for (const char* name : {"one.pdf", "two.pdf"}) {
        add({write(name, support::documentOfPages(1))});
        crash();
        open();
        wait([&] { return isOffered(); });
    }
    ASSERT_EQ(files().size(), 3U);
    bringBack();
    EXPECT_EQ(nameOf(bench().list.documents().at(0)), "two.pdf");
    wait([&] { return isOffered(); });
    press("recoverButton");
    wait([&] { return bench().list.rowCount() == 2; });
    EXPECT_EQ(nameOf(bench().list.documents()[1]), "one.pdf");
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(files().size(), 2U) << "those of the two windows that are there";
}

TEST_F(Recovery, KeepsNoPasswordAndAsksForItAnew)
{
    add({write("locked.pdf",
               support::rewritten(support::documentOfPages(1), "--encrypt geheim owner 256 --"))});
    ASSERT_EQ(stateOf(0), DocumentState::Locked);
    bench().documents.tryPassword(idOf(0), "geheim");
    wait([&] { return stateOf(0) == DocumentState::Ready; });
    crash();
    ASSERT_EQ(files().size(), 1U);
    EXPECT_THAT(support::readFile(files()[0]), Not(HasSubstr("geheim")));
    open();
    bringBack();
    EXPECT_EQ(stateOf(0), DocumentState::Locked);
}

TEST_F(Recovery, SaysInOneSentenceThatWhatIsThereIsNothingOfOurs)
{
    add({write("a.pdf", support::documentOfPages(1))});
    crash();
    putInto(files().at(0), "{\"format\":1,\"documents\":[{\"path\":\"../x\"}]}");
    open();
    std::string said;
    QObject::connect(&bench(), &Workbench::noted,
                     [&said](const QString& sentence) { said += sentence.toStdString(); });
    wait([&] { return !said.empty(); });
    EXPECT_THAT(said, HasSubstr("is not what a window of this version keeps."));
    EXPECT_FALSE(isOffered());
    EXPECT_TRUE(fs::is_empty(kept()));
}

TEST_F(Recovery, DoesNotDoDocumentsTwiceThatWereDoneInTheirPlace)
{
    add({write("a.pdf", support::documentOfPages(3)), write("b.pdf", support::documentOfPages(5))});
    bench().markForAll("1");
    choose("placeCombo", 2);
    waitForPlan("2 ");
    waitForRun();
    wait([&] { return allAreRead(); });
    crash();
    write("b.pdf", support::documentOfPages(7));
    open();
    bringBack();
    EXPECT_EQ(stateOf(0), DocumentState::Done);
    EXPECT_EQ(stateOf(1), DocumentState::Ready) << "it is another one now";
    EXPECT_EQ(part<QComboBox>("placeCombo").currentIndex(), 0) << "never where a window begins";
    EXPECT_THAT(shownIn("summaryLabel"), HasSubstr("Run of "));
    EXPECT_TRUE(part<QWidget>("undoButton").isVisible());
}

/// A run over three documents that is cut off after one of them. Which is that one doesn't matter.
class CutOffRun : public Recovery {
protected:
    void cutOff(int place)
    {
        for (const char* name : names) {
            originals[name] = support::documentOfPages(4);
            add({write(name, originals[name])});
        }
        bench().markForAll("1-2");
        choose("placeCombo", place);
        waitForPlan("3 ");
        std::string before;
        QObject::connect(&bench().runs, &RunController::started,
                         [&] { before = support::readFile(files().at(0)); });
        waitForRun();
        const std::string file = files().at(0);
        window.reset();
        putInto(file, before);
        keepOnlyTheFirstLine(place);
    }

    // Of the others it is as if they had not been done; of those in place the line may stand there
    // before the output has its name.
    void keepOnlyTheFirstLine(int place)
    {
        const std::string runs = home.home().toStdString() + "/.local/state/vantora/runs";
        const std::string report = fs::directory_iterator(runs)->path().string();
        const std::string lines = support::readFile(report);
        const std::string first = lines.substr(0, lines.find('\n') + 1);
        const bool inPlace = place == 2;
        if (!inPlace) {
            putInto(report, first + first.substr(0, 40));
        }
        for (const char* name : names) {
            if (first.find(std::string("in/") + name) != std::string::npos) {
                continue;
            }
            if (inPlace) {
                fs::rename(scratch.path(std::string("in/") + name + ".bak"),
                           scratch.path(std::string("in/") + name));
            } else {
                fs::remove(scratch.path(std::string("out/") + name));
            }
        }
    }

    void goOn()
    {
        bool over = false;
        QObject::connect(&bench().runs, &RunController::finished, [&over] { over = true; });
        press("recoverButton");
        wait([&] { return over; });
    }

    const std::vector<const char*> names = {"a.pdf", "b.pdf", "c.pdf"};
    std::map<std::string, std::string> originals;
};

TEST_F(CutOffRun, IsGoneOnWithAfterItIsSaidWhatThatDoes)
{
    for (const int place : {0, 2}) {
        SCOPED_TRACE(place == 0 ? "into a folder" : "in place");
        fs::remove_all(home.home().toStdString() + "/.local/state/vantora/runs");
        open();
        cutOff(place);
        open();
        wait([&] { return isOffered(); });
        EXPECT_THAT(shownIn("recoveryLabel"), HasSubstr("A run was going on"));
        bringBack();
        wait([&] { return part<QPushButton>("recoverButton").isEnabled() && isOffered(); });
        EXPECT_THAT(shownIn("recoveryLabel"), HasSubstr("was cut off after 1 of 3 "));
        EXPECT_THAT(shownIn("recoveryLabel"), HasSubstr("4 page(s) will go from 2 document(s)."));
        EXPECT_EQ(part<QComboBox>("placeCombo").currentIndex(), place);
        EXPECT_EQ(bench().results.rowCount(), 1) << "the report of those in place is ahead";
        goOn();
        EXPECT_FALSE(isOffered());
        for (const char* name : names) {
            EXPECT_EQ(pagesOf((place == 0 ? "out/" : "in/") + std::string(name)), 2);
        }
        EXPECT_EQ(bench().results.rowCount(), 3);
        EXPECT_EQ(bench().pastRuns.list().size(), 1U) << "both are one run, to be undone as one";
        window->close();
    }
}

TEST_F(CutOffRun, IsNotGoneOnWithWhereNothingTellsWhatItHasDone)
{
    cutOff(2);
    fs::remove_all(home.home().toStdString() + "/.local/state/vantora/runs");
    open();
    std::string said;
    QObject::connect(&bench(), &Workbench::noted,
                     [&said](const QString& sentence) { said += sentence.toStdString(); });
    bringBack();
    EXPECT_THAT(said, HasSubstr("can't be told which documents it has done"));
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(part<QComboBox>("placeCombo").currentIndex(), 0);
}

} // namespace
