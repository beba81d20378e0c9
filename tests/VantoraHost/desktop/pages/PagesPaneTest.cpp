#include "VantoraHost/desktop/pages/PagesPane.h"

#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "VantoraHost/desktop/pages/PageGridView.h"
#include "VantoraHost/desktop/pages/Pictures.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Pointer.h"

#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QUndoStack>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// The real pane, with real processes that make the pictures.
namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::ElementsAre;
using testing::HasSubstr;

PictureSettings settingsWith(const char* program)
{
    PictureSettings settings;
    settings.program = program;
    settings.library = PDF_LIBRARY;
    settings.timeout = std::chrono::seconds(0);
    return settings;
}

class PagesPaneTest : public testing::Test {
protected:
    explicit PagesPaneTest(const char* program = BUILT_PROGRAM)
        : pictures(settingsWith(program)), pane(marks, undo, pictures),
          grid(*pane.findChild<PageGridView*>("pageGrid")),
          rangeEdit(*pane.findChild<QLineEdit*>("rangeEdit"))
    {
        pane.resize(900, 700);
        pane.show();
        pane.activateWindow();
    }

    ShownDocument documentOf(DocumentId id, int pages)
    {
        const std::string name = "document" + std::to_string(id) + ".pdf";
        const std::string path = scratch.write(name, support::documentOfPages(pages));
        return {id, QString::fromStdString(path), QString::fromStdString(name), {}, 1, 0};
    }

    void show(const ShownDocument& document)
    {
        pane.showDocument(document);
        waitUntil([&] { return grid.model()->rowCount() > 0; });
    }

    /// However long that takes.
    static void waitUntil(const std::function<bool()>& holds)
    {
        while (!holds()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
    }

    QVariant at(int row, int role) const { return grid.model()->index(row, 0).data(role); }
    bool goes(int row) const { return at(row, PageGridModel::GoesRole).toBool(); }
    QPoint middleOf(int row) const { return grid.visualRect(grid.model()->index(row, 0)).center(); }
    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, middleOf(row));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&grid, key, modifiers);
    }
    std::string range() const { return rangeEdit.text().toStdString(); }
    std::string label(const char* name) const
    {
        return pane.findChild<QLabel*>(name)->text().toStdString();
    }
    QAction& action(const char* name) const { return *pane.findChild<QAction*>(name); }

    /// "1 2x 3" for three pages of which the second goes; brackets around neighbours.
    std::string rows() const
    {
        std::string all;
        for (int row = 0; row < grid.model()->rowCount(); ++row) {
            const std::string page = at(row, Qt::DisplayRole).toString().toStdString();
            const std::string heading =
                at(row, PageGridModel::HeadingRole).toString().toStdString();
            all += heading.empty() ? "" : heading + ": ";
            all += at(row, PageGridModel::NeighbourRole).toBool() ? "(" + page + ") "
                   : goes(row)                                    ? page + "x "
                                                                  : page + " ";
        }
        return all;
    }

    support::ScratchFolder scratch;
    Marks marks;
    QUndoStack undo;
    Pictures pictures;
    PagesPane pane;
    PageGridView& grid;
    QLineEdit& rangeEdit;
};

TEST_F(PagesPaneTest, ShowsWhatATypedRangeTakesAwayWhileItIsTyped)
{
    show(documentOf(1, 6));
    QTest::keyClicks(&rangeEdit, "2,4-");
    EXPECT_EQ(rows(), "1 2x 3 4x 5 6 ");
    EXPECT_TRUE(pane.findChild<QLabel*>("faultLabel")->isVisible());
    EXPECT_THAT(label("faultLabel"), HasSubstr("no page after the dash"));
    QTest::keyClicks(&rangeEdit, "5");
    EXPECT_EQ(rows(), "1 2x 3 4x 5x 6 ");
    EXPECT_FALSE(pane.findChild<QLabel*>("faultLabel")->isVisible());
    EXPECT_THAT(label("summaryLabel"), HasSubstr("3"));
    undo.undo();
    EXPECT_EQ(range(), "") << "what was typed in one go is undone in one go";
    EXPECT_EQ(rows(), "1 2 3 4 5 6 ");
}

TEST_F(PagesPaneTest, WritesTheShortestRangeOfWhatIsMarkedByKeys)
{
    struct Row {
        const char* name;
        std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys;
        const char* range; ///< of six pages
    };
    const Row keyRows[] = {
        {"space marks the first", {{Qt::Key_Space, {}}}, "1"},
        {"space again keeps it", {{Qt::Key_Space, {}}, {Qt::Key_Space, {}}}, ""},
        {"an arrow goes to the second", {{Qt::Key_Right, {}}, {Qt::Key_Delete, {}}}, "2"},
        {"shift and an arrow take two",
         {{Qt::Key_Right, Qt::ShiftModifier}, {Qt::Key_Delete, {}}},
         "1-2"},
        {"end goes to the last", {{Qt::Key_End, {}}, {Qt::Key_Space, {}}}, "6"},
        {"all", {{Qt::Key_A, Qt::ControlModifier}, {Qt::Key_Delete, {}}}, "1-6"},
        {"all but the current one",
         {{Qt::Key_Delete, {}}, {Qt::Key_I, Qt::ControlModifier}},
         "2-6"},
        {"one of all is kept",
         {{Qt::Key_A, Qt::ControlModifier},
          {Qt::Key_Delete, {}},
          {Qt::Key_Right, {}},
          {Qt::Key_Delete, Qt::ShiftModifier}},
         "1,3-6"},
        {"from here to the end",
         {{Qt::Key_4, {}}, {Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier}},
         "4-6"},
    };
    show(documentOf(1, 6));
    for (const Row& row : keyRows) {
        SCOPED_TRACE(row.name);
        marks.put(std::nullopt, RangeMarks());
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(0, 0));
        for (const auto& [key, modifiers] : row.keys) {
            press(key, modifiers);
        }
        EXPECT_EQ(range(), row.range);
    }
}

TEST_F(PagesPaneTest, TakesPagesByTheMouse)
{
    show(documentOf(1, 8));
    grid.setFocus();
    click(2);
    click(4, Qt::ControlModifier);
    press(Qt::Key_Delete);
    EXPECT_EQ(range(), "3,5");
    click(0);
    click(2, Qt::ShiftModifier);
    press(Qt::Key_Delete);
    EXPECT_EQ(range(), "1-3,5");
}

TEST_F(PagesPaneTest, TakesPagesByABandAroundThem)
{
    show(documentOf(1, 8));
    const QPoint from = grid.visualRect(grid.model()->index(7, 0)).bottomRight() + QPoint(-20, 30);
    const QPoint to = middleOf(1);
    PageSet within;
    for (int row = 0; row < 8; ++row) {
        if (QRect(to, from).intersects(grid.visualRect(grid.model()->index(row, 0)))) {
            within = within.united(PageSet(PageRun{row + 1, row + 1}));
        }
    }
    ASSERT_GT(within.countIn(8), 2);
    Pointer mouse(pane);
    const auto global = [&](QPoint point) { return grid.viewport()->mapToGlobal(point); };
    mouse.press(global(from));
    mouse.move(global(to + QPoint(30, 30)));
    mouse.move(global(to));
    mouse.release(global(to));
    press(Qt::Key_Delete);
    EXPECT_EQ(range(), within.text().toStdString());
}

TEST_F(PagesPaneTest, MarksOneDocumentOnlyWhereThatIsSaid)
{
    show(documentOf(1, 4));
    QTest::keyClicks(&rangeEdit, "1");
    auto& onlyHere = *pane.findChild<QCheckBox*>("onlyHere");
    onlyHere.click();
    QTest::keyClicks(&rangeEdit, ",3");
    EXPECT_EQ(marks.of(1).text, "1,3");
    EXPECT_EQ(marks.of(2).text, "1");
    show(documentOf(2, 4));
    EXPECT_FALSE(onlyHere.isChecked());
    EXPECT_EQ(range(), "1");
    show(documentOf(1, 4));
    EXPECT_TRUE(onlyHere.isChecked());
    onlyHere.click();
    EXPECT_EQ(range(), "1");
    undo.undo();
    EXPECT_EQ(range(), "1,3");
}

TEST_F(PagesPaneTest, ReviewsWhatGoesFromAllDocumentsAndRescuesByAClick)
{
    pane.setReviewed({documentOf(1, 4), documentOf(2, 2), documentOf(3, 9), documentOf(4, 1)});
    marks.put(std::nullopt, Marks::ofText("2-3", {}));
    marks.put(3, Marks::ofText("1,5", {}));
    pane.setReview(true);
    const std::string before = "document1.pdf: (1) 2x 3x (4) document2.pdf: (1) 2x "
                               "document3.pdf: 1x (2) (4) 5x (6) ";
    waitUntil([&] { return rows() == before; });
    EXPECT_THAT(label("summaryLabel"), HasSubstr("5"));
    click(2);
    EXPECT_EQ(rows(), "document1.pdf: (1) 2x 3 (4) document2.pdf: (1) 2x "
                      "document3.pdf: 1x (2) (4) 5x (6) ");
    EXPECT_EQ(marks.of(1).text, "2");
    EXPECT_EQ(marks.forAll().text, "2-3") << "the others keep theirs";
    click(0);
    EXPECT_EQ(marks.of(1).text, "2") << "a neighbour is only there to be seen";
    undo.undo();
    EXPECT_EQ(rows(), before);
    EXPECT_FALSE(marks.isOwn(1));
    pane.showDocument(documentOf(2, 2));
    EXPECT_FALSE(pane.isReview()) << "a document that is chosen is shown";
}

TEST_F(PagesPaneTest, KeepsWhatIsRescuedAndChosenWhileAReviewGrows)
{
    const ShownDocument first = documentOf(1, 4);
    const ShownDocument second = documentOf(2, 3);
    const ShownDocument third = documentOf(3, 2);
    marks.put(std::nullopt, Marks::ofText("2", {}));
    pane.setReviewed({first});
    pane.setReview(true);
    waitUntil([&] { return rows() == "document1.pdf: (1) 2x (3) "; });
    click(1);
    const std::string rescued = "document1.pdf: (1) 2 (3) ";
    EXPECT_EQ(rows(), rescued);

    const QPoint place = middleOf(1);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, place);
    pane.setReviewed({first, third});
    waitUntil([&] { return rows() == rescued + "document3.pdf: (1) 2x "; });
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(rows(), "document1.pdf: (1) 2x (3) document3.pdf: (1) 2x ") << "a click isn't lost";
    click(1);

    pane.setReviewed({first, second, third});
    waitUntil(
        [&] { return rows() == rescued + "document2.pdf: (1) 2x (3) document3.pdf: (1) 2x "; });
    EXPECT_EQ(grid.currentIndex().row(), 1);
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 1);
    pane.setReviewed({second});
    EXPECT_EQ(rows(), "document2.pdf: (1) 2x (3) ");
}

TEST_F(PagesPaneTest, ShowsInAReviewWhatIsTypedThere)
{
    pane.setReviewed({documentOf(1, 3)});
    pane.setReview(true);
    QTest::keyClicks(&rangeEdit, "2-3");
    waitUntil([&] { return rows() == "document1.pdf: (1) 2x 3x "; });
    undo.undo();
    EXPECT_EQ(rows(), "");
}

TEST_F(PagesPaneTest, AsksForPicturesOfWhatCanBeSeenAndOfNothingElse)
{
    std::vector<int> made;
    QObject::connect(&pictures, &Pictures::made,
                     [&](DocumentId, int page, int, const QImage&) { made.push_back(page); });
    show(documentOf(1, 400));
    const auto allSeen = [&] {
        const std::vector<int> seen = grid.visibleRows();
        return !seen.empty() && std::all_of(seen.begin(), seen.end(), [&](int row) {
            return !at(row, PageGridModel::PictureRole).value<QPixmap>().isNull();
        });
    };
    waitUntil(allSeen);
    const std::size_t atFirst = grid.visibleRows().size();
    EXPECT_EQ(made.size(), atFirst);
    EXPECT_LT(atFirst, 60U);
    EXPECT_EQ(made.front(), 1) << "the first is made first, whatever processes there are";
    grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum());
    waitUntil(allSeen);
    EXPECT_EQ(grid.visibleRows().back(), 399);
    EXPECT_LE(made.size(), 2 * atFirst + 10);
}

TEST_F(PagesPaneTest, GoesToAPageByItsNumberOrItsLabel)
{
    support::PagedDocument labelled(12);
    labelled.catalogEntries = "/PageLabels << /Nums [0 << /S /r >> 4 << /S /D >>] >>";
    const std::string path = scratch.write("labelled.pdf", labelled.build());
    show({9, QString::fromStdString(path), "labelled.pdf", {}, 1, 12});
    waitUntil([&] { return at(3, PageGridModel::LabelRole).toString() == "iv"; });
    auto& jump = *pane.findChild<QLineEdit*>("jumpEdit");
    const std::pair<const char*, int> jumps[] = {{"7", 7}, {"iii", 3}, {" 12 ", 12}, {"13", 12}};
    for (const auto& [text, page] : jumps) {
        SCOPED_TRACE(text);
        jump.setFocus();
        jump.setText(text);
        QTest::keyClick(&jump, Qt::Key_Return);
        EXPECT_EQ(grid.currentIndex().row() + 1, page);
    }
    EXPECT_EQ(at(4, PageGridModel::LabelRole).toString(), "1");
}

TEST_F(PagesPaneTest, SaysToThoseWhoCannotSeeWhatBecomesOfAPage)
{
    support::PagedDocument labelled(5);
    labelled.catalogEntries = "/PageLabels << /Nums [0 << /S /r >>] >>";
    const std::string path = scratch.write("labelled.pdf", labelled.build());
    show({9, QString::fromStdString(path), "labelled.pdf", {}, 1, 5});
    waitUntil([&] { return !at(4, PageGridModel::LabelRole).toString().isEmpty(); });
    marks.put(std::nullopt, Marks::ofText("4", {}));
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&grid);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    ASSERT_EQ(list->childCount(), 5);
    EXPECT_EQ(list->child(3)->text(QAccessible::Name), "page 4, iv, will be removed");
    EXPECT_EQ(list->child(4)->text(QAccessible::Name), "page 5, v, stays");
}

TEST_F(PagesPaneTest, ZoomsFromThumbnailsToOnePageAtATime)
{
    show(documentOf(1, 30));
    auto& slider = *pane.findChild<QSlider*>("zoomSlider");
    slider.setValue(slider.minimum());
    const std::size_t many = grid.visibleRows().size();
    action("zoomIn").trigger();
    EXPECT_LE(grid.visibleRows().size(), many);
    EXPECT_EQ(slider.value(), 1);
    grid.goTo(14);
    action("wholePage").trigger();
    EXPECT_LE(grid.visibleRows().size(), 2U);
    EXPECT_EQ(grid.visibleRows().front(), 14) << "where one was";
    EXPECT_GE(grid.visualRect(grid.model()->index(14, 0)).height(), grid.viewport()->height() - 10);
    const QByteArray state = pane.saveState();
    action("wholePage").trigger();
    EXPECT_EQ(slider.value(), 1) << "as large as before";
    EXPECT_TRUE(pane.restoreState(state));
    EXPECT_EQ(slider.value(), slider.maximum());
    EXPECT_FALSE(pane.restoreState("nonsense"));
}

TEST_F(PagesPaneTest, ShowsADocumentThatIsAnotherAnewAndWhereItWas)
{
    ShownDocument document = documentOf(1, 6);
    document.pages = 6;
    show(document);
    grid.goTo(3);
    document = documentOf(1, 5);
    document.pages = 5;
    document.state = 2;
    pane.showDocument(document);
    EXPECT_EQ(grid.model()->rowCount(), 5);
    EXPECT_EQ(grid.currentIndex().row(), 3);
}

TEST_F(PagesPaneTest, ForgetsDocumentsThatAreNotListedAnyMoreButTheOneThatIsShown)
{
    const auto& model = *dynamic_cast<PageGridModel*>(grid.model());
    const std::vector<ShownDocument> documents = {documentOf(1, 4), documentOf(2, 3),
                                                  documentOf(3, 2)};
    pane.setReviewed(documents);
    for (const ShownDocument& document : documents) {
        show(document);
    }
    pane.setReviewed({documents[1]});
    EXPECT_EQ(model.pagesOf(1), 0);
    EXPECT_EQ(model.pagesOf(2), 3);
    EXPECT_EQ(model.pagesOf(3), 2) << "it is shown";
    std::vector<DocumentId> made;
    QObject::connect(&pictures, &Pictures::made,
                     [&](DocumentId id, int, int, const QImage&) { made.push_back(id); });
    pictures.wish(PictureAsker::Report, {{1, PictureTask{1, 77, 0}}, {2, PictureTask{1, 77, 0}}});
    waitUntil([&] { return std::count(made.begin(), made.end(), 2U) > 0; });
    EXPECT_EQ(std::count(made.begin(), made.end(), 1U), 0) << "it is closed";
    show(documents[0]);
    EXPECT_EQ(model.pagesOf(1), 4) << "as when its removal is undone";
}

TEST_F(PagesPaneTest, SaysWhatToDoOrWhatIsWrongWhereThereAreNoPages)
{
    EXPECT_THAT(label("emptyLabel"), HasSubstr("Choose a document"));
    const std::string path = scratch.write("letter.pdf", "Dear Sir");
    std::string told;
    QObject::connect(&pane, &PagesPane::cannotBeShown,
                     [&](DocumentId, const QString& reason) { told = reason.toStdString(); });
    pane.showDocument(ShownDocument{1, QString::fromStdString(path), "letter.pdf", {}, 1, 0});
    EXPECT_THAT(label("emptyLabel"), HasSubstr("Reading letter.pdf"));
    waitUntil([&] { return !told.empty(); });
    EXPECT_THAT(told, HasSubstr("is no PDF"));
    EXPECT_THAT(label("emptyLabel"), HasSubstr("letter.pdf can't be shown: is no PDF"));
    pane.setReview(true);
    EXPECT_THAT(label("emptyLabel"), HasSubstr("No page goes"));
}

/// A script makes the pictures, as badly as its document is called.
class PagesPaneWithABadWorker : public PagesPaneTest {
protected:
    PagesPaneWithABadWorker() : PagesPaneTest(FAKE_PICTURES_PROGRAM) {}
};

TEST_F(PagesPaneWithABadWorker, LosesOneThumbnailAndSaysWhy)
{
    show({1, "crashes over page 2", "bad.pdf", {}, 1, 0});
    const auto hasPicture = [&](int row) {
        return !at(row, PageGridModel::PictureRole).value<QPixmap>().isNull();
    };
    waitUntil([&] { return hasPicture(0) && hasPicture(2); });
    waitUntil([&] { return !at(1, PageGridModel::ReasonRole).toString().isEmpty(); });
    EXPECT_FALSE(hasPicture(1));
    EXPECT_THAT(at(1, Qt::AccessibleTextRole).toString().toStdString(),
                HasSubstr("it can't be shown: the worker process that was at it ended: Segm"));
    action("retryPictures").trigger();
    EXPECT_TRUE(at(1, PageGridModel::ReasonRole).toString().isEmpty()) << "it is tried again";
    waitUntil([&] { return !at(1, PageGridModel::ReasonRole).toString().isEmpty(); });
}

} // namespace
