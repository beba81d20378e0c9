#include "VantoraApp/dialogs/CFramelessHandler.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindowStateChangeEvent>
#include <QtWidgets/QWidget>

namespace {

/// The sides of a window that follow the pointer in a drag.
struct PulledSides {
    bool left;
    bool top;
    bool right;
    bool bottom;
};

// Corners go before edges, since a pointer on a corner is near both of its edges.
PulledSides SidesPulledAt(const CCursorPosCalculator& pressed)
{
    if (pressed.mOnTopLeft)
        return {true, true, false, false};
    if (pressed.mOnBottomLeft)
        return {true, false, false, true};
    if (pressed.mOnTopRight)
        return {false, true, true, false};
    if (pressed.mOnBottomRight)
        return {false, false, true, true};
    if (pressed.mOnLeftEdge)
        return {true, false, false, false};
    if (pressed.mOnRightEdge)
        return {false, false, true, false};
    if (pressed.mOnTopEdge)
        return {false, true, false, false};
    if (pressed.mOnBottomEdge)
        return {false, false, false, true};
    return {false, false, false, false};
}

} // namespace

CFramelessHandler::CFramelessHandler(QObject* parent) : QObject(parent) {}

void CFramelessHandler::activateOn(QWidget* widget)
{
    if (widget == nullptr)
        return;
    mWidget = widget;
    widget->installEventFilter(this);
    widget->setAttribute(Qt::WA_Hover);
    // By name, because a window need not have these slots.
    connect(this, SIGNAL(toggleMaximize()), widget, SLOT(on_MaxRestore()));
    connect(this, SIGNAL(movingMaximized()), widget, SLOT(on_MoveMaximized()));
}

void CFramelessHandler::setBorderWidth(int width)
{
    if (width < 0)
        return;
    mPressed.mBorderWidth = width;
    mHovered.mBorderWidth = width;
}

void CFramelessHandler::setMoveBarHeight(int height)
{
    mPressed.mMoveBarHeight = height;
    mHovered.mMoveBarHeight = height;
}

bool CFramelessHandler::eventFilter(QObject* /*watched*/, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        handleMousePressEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        handleMouseReleaseEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonDblClick:
        handleDoubleClickEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        handleMouseMoveEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::Leave:
        handleLeaveEvent(event);
        break;
    case QEvent::HoverMove:
        handleHoverMoveEvent(static_cast<QHoverEvent*>(event));
        break;
    case QEvent::WindowStateChange:
        handleStateChangeEvent(static_cast<QWindowStateChangeEvent*>(event));
        break;
    default:
        break;
    }
    return false;
}

void CFramelessHandler::handleMousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    mLeftButtonPressed = true;
    mPressed.recalculate(event->globalPos(), mWidget->frameGeometry());
    mDragOffset = event->globalPos() - mWidget->frameGeometry().topLeft();
    mPressedOnEdges = mPressed.mOnEdges;
    if (!mPressedOnEdges)
        mPressedOnMoveBar = mPressed.mOnMoveBar;
}

void CFramelessHandler::handleMouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        mLeftButtonPressed = false;
        mPressed.reset();
    }
    mPressedOnMoveBar = false;
    mPressedOnEdges = false;
}

void CFramelessHandler::handleMouseMoveEvent(QMouseEvent* event)
{
    if (!mLeftButtonPressed) {
        if (mResizable)
            updateCursorShape(event->globalPos());
    } else if (mResizable && mPressedOnEdges && !mPressedOnMoveBar) {
        resizeWidget(event->globalPos());
    } else if (mMovable && !mPressedOnEdges && mPressedOnMoveBar) {
        moveWidget(event->globalPos());
    }
}

void CFramelessHandler::handleLeaveEvent(QEvent* /*event*/)
{
    if (!mLeftButtonPressed)
        mWidget->unsetCursor();
}

void CFramelessHandler::handleHoverMoveEvent(QHoverEvent* event)
{
    if (mResizable)
        updateCursorShape(mWidget->mapToGlobal(event->pos()));
}

void CFramelessHandler::handleDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    mPressed.recalculate(event->globalPos(), mWidget->frameGeometry());
    if (mPressed.mOnMoveBar)
        emit toggleMaximize();
}

void CFramelessHandler::handleStateChangeEvent(QWindowStateChangeEvent* event)
{
    // A frameless window that comes back from being minimised may stay unpainted otherwise.
    mWidget->setAttribute(Qt::WA_Mapped, event->oldState() == Qt::WindowMinimized);
    mWidget->setFocus(Qt::OtherFocusReason);
    mWidget->raise();
    QCoreApplication::postEvent(mWidget, new QEvent(QEvent::UpdateRequest), Qt::HighEventPriority);
}

void CFramelessHandler::resizeWidget(const QPoint& globalPos)
{
    const QRect frame = mWidget->frameGeometry();
    const PulledSides pulled = SidesPulledAt(mPressed);
    int left = pulled.left ? globalPos.x() : frame.left();
    int top = pulled.top ? globalPos.y() : frame.top();
    int right = pulled.right ? globalPos.x() : frame.right();
    int bottom = pulled.bottom ? globalPos.y() : frame.bottom();
    if (left > right || top > bottom)
        return;

    const QSize minimum = mWidget->minimumSize();
    if (right - left + 1 < minimum.width()) {
        left = frame.left();
        right = frame.right();
    }
    if (bottom - top + 1 < minimum.height()) {
        top = frame.top();
        bottom = frame.bottom();
    }
    mWidget->move(left, top);
    mWidget->resize(right - left + 1, bottom - top + 1);
}

void CFramelessHandler::moveWidget(const QPoint& globalPos)
{
    mPressed.recalculate(globalPos, mWidget->frameGeometry());
    if (mPressedOnMoveBar)
        mWidget->move(globalPos - mDragOffset);
}

void CFramelessHandler::updateCursorShape(const QPoint& globalPos)
{
    mHovered.recalculate(globalPos, mWidget->frameGeometry());
    if (mHovered.mOnTopLeft || mHovered.mOnBottomRight) {
        setResizeCursor(Qt::SizeFDiagCursor);
    } else if (mHovered.mOnTopRight || mHovered.mOnBottomLeft) {
        setResizeCursor(Qt::SizeBDiagCursor);
    } else if (mHovered.mOnLeftEdge || mHovered.mOnRightEdge) {
        setResizeCursor(Qt::SizeHorCursor);
    } else if (mHovered.mOnTopEdge || mHovered.mOnBottomEdge) {
        setResizeCursor(Qt::SizeVerCursor);
    } else if (mCursorChanged) {
        mWidget->unsetCursor();
        mCursorChanged = false;
    }
}

void CFramelessHandler::setResizeCursor(Qt::CursorShape shape)
{
    mWidget->setCursor(shape);
    mCursorChanged = true;
}
