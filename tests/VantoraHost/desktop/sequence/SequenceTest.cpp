#include "VantoraHost/core/actions/StepStore.h"
#include "VantoraHost/desktop/sequence/Favourites.h"
#include "VantoraHost/desktop/sequence/SequencePane.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>

#include <gmock/gmock.h>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::ElementsAre;
using testing::HasSubstr;

/// Three favourites of Delete Pages, of one minute each, and one of an action that isn't there.
class SavedOptions : public OpenWindow {
protected:
    SavedOptions()
    {
        save("oldest", "1", Qt::red, 0);
        save("newest & best", "3", Qt::blue, 2);
        save("between", "2", Qt::green, 1);
        WriteSettingsFile(FavouritePath("of another"),
                          {{"ActionPrefs", QVariantMap{{"ActionName", "Turn Pages"}}}});
        add({write("a.pdf", support::documentOfPages(9))});
    }

    const InstalledAction& deletion() { return bench().actions.front(); }

    void save(const char* name, const char* range, QColor color, int minute)
    {
        QPixmap picture(42, 42);
        picture.fill(color);
        const Step step = {deletion().action, {{"byPageRangeTextEdit", range}}};
        ASSERT_TRUE(
            stepstore::makeFavourite(name, step, QIcon(picture), stepstore::Existing::Refuse));
        QFile file(FavouritePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(1700000000 + 60 * minute),
                                     QFileDevice::FileModificationTime));
    }

    /// The favourite that is shown, and what is marked.
    std::string shown()
    {
        return part<QToolButton>("favouriteButton").accessibleName().toStdString() + ", " +
               bench().marks.forAll().text.toStdString();
    }

    std::string own(std::size_t row)
    {
        return bench()
            .steps.steps()[row]
            .preferences.value("byPageRangeTextEdit")
            .toString()
            .toStdString();
    }

    std::string message()
    {
        return pane().findChild<QLabel*>("messageLabel")->text().toStdString();
    }

    void chooseRow(int row)
    {
        auto* view = pane().findChild<QListView*>("view");
        view->setCurrentIndex(view->model()->index(row, 0));
    }

    SequencePane& pane() { return *window->findChild<SequencePane*>(); }
};

TEST_F(SavedOptions, OfTheActionAreSteppedThroughFromTheNewestAndUndone)
{
    EXPECT_EQ(shown(), "Favourites, ");
    const struct {
        const char* button;
        const char* shown;
    } rows[] = {
        {"olderButton", "Favourite: newest & best, 3"},
        {"olderButton", "Favourite: between, 2"},
        {"olderButton", "Favourite: oldest, 1"},
        {"olderButton", "Favourite: oldest, 1"}, // there is none
        {"newerButton", "Favourite: between, 2"},
    };
    for (const auto& row : rows) {
        part<QWidget>(row.button).setFocus();
        QTest::keyClick(window->focusWidget(), Qt::Key_Space);
        EXPECT_EQ(shown(), row.shown);
    }
    bench().undo.undo();
    EXPECT_EQ(shown(), "Favourite: oldest, 1");
    bench().undo.setIndex(1); // after adding the document
    EXPECT_EQ(shown(), "Favourites, ");
    press("newerButton");
    EXPECT_EQ(message(), "There is no newer favourite.");
    bench().undo.redo();
    EXPECT_EQ(shown(), "Favourite: newest & best, 3");
}

TEST_F(SavedOptions, AreShownWithTheirPicturesAndChosenFromAMenu)
{
    QMenu& menu = *part<QToolButton>("favouriteButton").menu();
    emit menu.aboutToShow();
    std::vector<std::string> entries;
    for (const QAction* entry : menu.actions()) {
        entries.push_back(
            entry->text().toStdString() + ' ' +
            entry->icon().pixmap(20, 20).toImage().pixelColor(9, 9).name().toStdString());
    }
    EXPECT_THAT(entries,
                ElementsAre("newest && best #0000ff", "between #00ff00", "oldest #ff0000"));
    menu.actions().at(1)->trigger();
    EXPECT_EQ(shown(), "Favourite: between, 2");
    EXPECT_EQ(part<QToolButton>("favouriteButton").icon().pixmap(20, 20).toImage().pixelColor(9, 9),
              QColor(Qt::green));
}

TEST_F(SavedOptions, OfAStepThatTheMarksAreNotOfStayItsOwn)
{
    bench().markForAll("7");
    ListedSteps steps = bench().steps.steps();
    steps.push_back(steps.front());
    bench().steps.set(steps);
    chooseRow(1);
    press("olderButton");
    EXPECT_EQ(shown(), "Favourite: newest & best, 7");
    EXPECT_EQ(own(1), "3");
    chooseRow(0);
    EXPECT_EQ(shown(), "Favourites, 7") << "each step has its own";
}

TEST_F(SavedOptions, AreWrittenIntoAFileAndReadIntoTheStepOrAsAStepMore)
{
    const QString file = QString::fromStdString(scratch.path("second.tsf"));
    bench().markForAll("2,5");
    pane().saveToolSettings(file);
    EXPECT_EQ(message(), "Saved in “second.tsf”.");
    bench().markForAll("9");
    pane().loadToolSettings(file);
    EXPECT_EQ(bench().steps.rowCount(), 1);
    EXPECT_EQ(bench().marks.forAll().text, "2,5");
    bench().undo.undo();
    EXPECT_EQ(bench().marks.forAll().text, "9");
    bench().steps.set({});
    pane().loadToolSettings(file);
    EXPECT_EQ(bench().steps.rowCount(), 1);
    EXPECT_EQ(bench().marks.forAll().text, "2,5");

    const std::string broken = scratch.write("broken.tsf", "[General]\nSomething=1\n");
    pane().loadToolSettings(QString::fromStdString(broken));
    EXPECT_THAT(message(), HasSubstr("broken.tsf: not a tool-settings file"));
    pane().saveToolSettings(QString::fromStdString(broken));
    EXPECT_THAT(message(), HasSubstr("broken.tsf: not a tool-settings file"));
    EXPECT_EQ(support::readFile(broken), "[General]\nSomething=1\n") << "it is somebody else's";
}

TEST_F(SavedOptions, BecomeStepsWhenTheirFileIsOpenedAsDocumentsAre)
{
    const QString settings = QString::fromStdString(scratch.path("third.tsf"));
    bench().markForAll("3");
    pane().saveToolSettings(settings);
    const Step step = {deletion().action, {{"byPageRangeTextEdit", "4-5"}}};
    ASSERT_TRUE(stepstore::makeActionList("List", step, "Mine"));
    const QString list = CActionUtils::GetSequenceFolder() + "/List.xqq";
    const QString broken = QString::fromStdString(scratch.write("odd.xqq", "no list"));
    QDir(QString::fromStdString(scratch.path(""))).mkdir("folder.xqq");

    window->open({list});
    EXPECT_EQ(bench().marks.forAll().text, "4-5");
    window->open({settings});
    EXPECT_EQ(bench().marks.forAll().text, "3");
    EXPECT_EQ(bench().steps.rowCount(), 1);
    window->open({broken});
    EXPECT_THAT(message(), testing::StartsWith("odd.xqq: "));
    EXPECT_EQ(bench().marks.forAll().text, "3");
    EXPECT_EQ(bench().list.rowCount(), 1) << "none of them is a document";
    EXPECT_FALSE(pane().loadFile(QString::fromStdString(scratch.path("folder.xqq"))));
    EXPECT_FALSE(pane().loadFile("a.pdf"));
}

TEST_F(SavedOptions, AreAskedForWithoutHoldingUpTheWindow)
{
    QMenu& saved = *part<QToolButton>("savedButton").menu();
    emit saved.aboutToShow();
    for (QAction* entry : saved.actions()) {
        if (entry->text() == "Save &Tool Settings…") {
            entry->trigger();
        }
    }
    auto* dialog = window->findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    dialog->selectFile(QString::fromStdString(scratch.path("named")));
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_TRUE(QFile::exists(QString::fromStdString(scratch.path("named.tsf"))));
}

} // namespace
