#include "VantoraApp/dialogs/CFramelessHandler.h"
#include "tests/support/Pointer.h"

#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

namespace {

/// A window with the slots that the handler looks for.
class Window : public QWidget {
    Q_OBJECT

public:
    Window() : QWidget(nullptr, Qt::FramelessWindowHint) {}

    int toggled = 0;

public slots:
    void on_MaxRestore() { ++toggled; }
    void on_MoveMaximized() {}
};

/// A window of 400 x 300 at (100, 100) with a border of 9 and a move bar of 30 pixels.
class CFramelessHandlerTest : public testing::Test {
protected:
    CFramelessHandlerTest()
    {
        handler.activateOn(&window);
        handler.setBorderWidth(9);
        handler.setMoveBarHeight(30);
        window.setMinimumSize(120, 90);
        place();
        window.show();
    }

    void place() { window.setGeometry(100, 100, 400, 300); }

    Qt::CursorShape cursorAt(QPoint at)
    {
        pointer.move(at);
        return window.cursor().shape();
    }

    Window window;
    CFramelessHandler handler;
    Pointer pointer{window};
};

struct DragRow {
    const char* name;
    QPoint from;
    QPoint to;
    QRect result;
};

const DragRow drags[] = {
    {"the top left corner inward", {105, 105}, {125, 135}, {125, 135, 375, 265}},
    {"the top left corner outward by its near zone", {115, 115}, {95, 90}, {95, 90, 405, 310}},
    {"the bottom left corner", {105, 395}, {125, 380}, {125, 100, 375, 281}},
    {"the top right corner", {495, 105}, {479, 120}, {100, 120, 380, 280}},
    {"the left edge", {105, 250}, {150, 20}, {150, 100, 350, 300}},
    {"the right edge beside the top right corner", {492, 115}, {549, 20}, {100, 100, 450, 300}},
    {"the top edge", {300, 103}, {20, 150}, {100, 150, 400, 250}},
    {"the bottom edge", {300, 397}, {20, 449}, {100, 100, 400, 350}},
    {"the left edge past the minimum width", {105, 250}, {400, 250}, {100, 100, 400, 300}},
    {"the left edge to the minimum width", {105, 250}, {380, 250}, {380, 100, 120, 300}},
    {"the top edge past the minimum height", {300, 103}, {300, 350}, {100, 100, 400, 300}},
    {"a corner past the minimum width only", {495, 395}, {150, 349}, {100, 100, 400, 250}},
    {"the left edge past the right one", {105, 250}, {600, 250}, {100, 100, 400, 300}},
    {"the move bar to above the screen", {300, 120}, {300, 10}, {100, -10, 400, 300}},
    {"the middle", {300, 250}, {350, 300}, {100, 100, 400, 300}},
};

TEST_F(CFramelessHandlerTest, MovesOrResizesByWhereTheButtonWentDown)
{
    for (const DragRow& row : drags) {
        SCOPED_TRACE(row.name);
        place();
        pointer.drag(row.from, row.to);
        EXPECT_EQ(window.geometry(), row.result);
    }
}

TEST_F(CFramelessHandlerTest, FollowsTheEdgeOfThePressThroughAllOfADrag)
{
    pointer.press({105, 250});
    for (const int x : {130, 490, 200, 160})
        pointer.move({x, 250});
    EXPECT_EQ(window.geometry(), QRect(160, 100, 340, 300));
    pointer.release({160, 250});
    pointer.move({200, 250});
    EXPECT_EQ(window.geometry(), QRect(160, 100, 340, 300));
}

TEST_F(CFramelessHandlerTest, StaysWithTheMoveBarWhenAMoveEndsAtAnEdge)
{
    pointer.press({300, 120});
    pointer.move({500, 300});
    pointer.move({320, 140});
    EXPECT_EQ(window.geometry(), QRect(120, 120, 400, 300));
}

TEST_F(CFramelessHandlerTest, DoesNotConsultTheMaximumSize)
{
    window.setMaximumWidth(410);
    pointer.drag({105, 250}, {80, 250});
    // The window system bounds the size, but the place shows what was asked for.
    EXPECT_EQ(window.pos(), QPoint(80, 100));
}

TEST_F(CFramelessHandlerTest, DoesOnlyWhatItIsAllowedTo)
{
    handler.setWidgetResizable(false);
    pointer.drag({105, 250}, {150, 250});
    EXPECT_EQ(window.geometry(), QRect(100, 100, 400, 300));
    pointer.drag({300, 120}, {310, 120});
    EXPECT_EQ(window.geometry(), QRect(110, 100, 400, 300));

    place();
    handler.setWidgetResizable(true);
    handler.setWidgetMovable(false);
    pointer.drag({300, 120}, {310, 120});
    EXPECT_EQ(window.geometry(), QRect(100, 100, 400, 300));
    pointer.drag({105, 250}, {150, 250});
    EXPECT_EQ(window.geometry(), QRect(150, 100, 350, 300));
}

TEST_F(CFramelessHandlerTest, IgnoresOtherButtons)
{
    pointer.press({105, 250}, Qt::RightButton);
    pointer.move({150, 250});
    EXPECT_EQ(window.geometry(), QRect(100, 100, 400, 300));
    pointer.release({150, 250}, Qt::RightButton);
}

TEST_F(CFramelessHandlerTest, StopsADragWhenAnotherButtonIsReleased)
{
    for (const QPoint from : {QPoint(105, 250), QPoint(300, 120)}) {
        place();
        pointer.press(from);
        pointer.press(from, Qt::RightButton);
        pointer.release(from, Qt::RightButton);
        pointer.move(from + QPoint(30, 30));
        EXPECT_EQ(window.geometry(), QRect(100, 100, 400, 300));
        pointer.release(from);
    }
}

TEST_F(CFramelessHandlerTest, ShowsWhatADragWouldDo)
{
    const std::pair<QPoint, Qt::CursorShape> rows[] = {
        {{300, 250}, Qt::ArrowCursor},     {{105, 105}, Qt::SizeFDiagCursor},
        {{495, 395}, Qt::SizeFDiagCursor}, {{495, 105}, Qt::SizeBDiagCursor},
        {{105, 395}, Qt::SizeBDiagCursor}, {{105, 250}, Qt::SizeHorCursor},
        {{495, 250}, Qt::SizeHorCursor},   {{300, 103}, Qt::SizeVerCursor},
        {{300, 397}, Qt::SizeVerCursor},   {{300, 120}, Qt::ArrowCursor},
    };
    for (const auto& [place, shape] : rows)
        EXPECT_EQ(cursorAt(place), shape) << place.x() << ", " << place.y();
}

TEST_F(CFramelessHandlerTest, LeavesTheCursorAloneWhenItDoesNotResize)
{
    handler.setWidgetResizable(false);
    EXPECT_EQ(cursorAt({105, 250}), Qt::ArrowCursor);

    window.setCursor(Qt::CrossCursor);
    handler.setWidgetResizable(true);
    EXPECT_EQ(cursorAt({300, 250}), Qt::CrossCursor) << "a cursor that is not the handler's";
}

TEST_F(CFramelessHandlerTest, TakesItsCursorBackOnLeaveUnlessThereIsADrag)
{
    QEvent leave(QEvent::Leave);
    ASSERT_EQ(cursorAt({105, 250}), Qt::SizeHorCursor);
    pointer.press({105, 250});
    QCoreApplication::sendEvent(&window, &leave);
    EXPECT_EQ(window.cursor().shape(), Qt::SizeHorCursor);
    pointer.release({105, 250});
    QCoreApplication::sendEvent(&window, &leave);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(CFramelessHandlerTest, TellsOfDoubleClicksOnTheMoveBar)
{
    const auto doubleClick = [this](QPoint at, Qt::MouseButton button) {
        window.toggled = 0;
        QTest::mouseDClick(window.windowHandle(), button, {}, at - window.pos());
        return window.toggled;
    };
    EXPECT_EQ(doubleClick({300, 120}, Qt::LeftButton), 1);
    EXPECT_EQ(doubleClick({103, 103}, Qt::LeftButton), 1) << "in a corner within the bar";
    EXPECT_EQ(doubleClick({300, 250}, Qt::LeftButton), 0);
    EXPECT_EQ(doubleClick({300, 120}, Qt::RightButton), 0);
}

/// Counts the update requests that a window gets.
class UpdateRequests : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count += event->type() == QEvent::UpdateRequest ? 1 : 0;
        return false;
    }
};

TEST_F(CFramelessHandlerTest, PaintsAWindowThatComesBackFromBeingMinimised)
{
    QCoreApplication::processEvents();
    UpdateRequests requests;
    window.installEventFilter(&requests);

    QWindowStateChangeEvent back(Qt::WindowMinimized);
    QCoreApplication::sendEvent(&window, &back);
    EXPECT_TRUE(window.testAttribute(Qt::WA_Mapped));
    QCoreApplication::sendPostedEvents(&window, QEvent::UpdateRequest);
    EXPECT_GE(requests.count, 1);

    QWindowStateChangeEvent other(Qt::WindowMinimized | Qt::WindowMaximized);
    QCoreApplication::sendEvent(&window, &other);
    EXPECT_FALSE(window.testAttribute(Qt::WA_Mapped));
}

TEST_F(CFramelessHandlerTest, ChecksTheBorderWidthButNotTheMoveBarHeight)
{
    handler.setBorderWidth(-1);
    EXPECT_EQ(handler.borderWidth(), 9);
    handler.setBorderWidth(0);
    EXPECT_EQ(handler.borderWidth(), 0);
    handler.setMoveBarHeight(-1);
    EXPECT_EQ(handler.moveBarHeight(), -1);
    pointer.drag({300, 101}, {310, 111});
    EXPECT_EQ(window.geometry(), QRect(100, 100, 400, 300));
}

TEST(CFramelessHandler, DoesNothingWithoutAWidget)
{
    CFramelessHandler().activateOn(nullptr);
}

} // namespace

#include "CFramelessHandlerTest.moc"
