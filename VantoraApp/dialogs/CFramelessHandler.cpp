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
    if (pressed.onTopLeft)
        return {true, true, false, false};
    if (pressed.onBottomLeft)
        return {true, false, false, true};
    if (pressed.onTopRight)
        return {false, true, true, false};
    if (pressed.onBottomRight)
        return {false, false, true, true};
    if (pressed.onLeftEdge)
        return {true, false, false, false};
    if (pressed.onRightEdge)
        return {false, false, true, false};
    if (pressed.onTopEdge)
        return {false, true, false, false};
    if (pressed.onBottomEdge)
        return {false, false, false, true};
    return {false, false, false, false};
}

} // namespace

CFramelessHandler::CFramelessHandler(QObject* parent) : QObject(parent) {}

void CFramelessHandler::activateOn(QWidget* widget)
{
    if (widget == nullptr)
        return;
    widget_ = widget;
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
    pressed_.borderWidth = width;
    hovered_.borderWidth = width;
}

void CFramelessHandler::setMoveBarHeight(int height)
{
    pressed_.moveBarHeight = height;
    hovered_.moveBarHeight = height;
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
    leftButtonPressed_ = true;
    pressed_.recalculate(event->globalPos(), widget_->frameGeometry());
    dragOffset_ = event->globalPos() - widget_->frameGeometry().topLeft();
    pressedOnEdges_ = pressed_.onEdges;
    if (!pressedOnEdges_)
        pressedOnMoveBar_ = pressed_.onMoveBar;
}

void CFramelessHandler::handleMouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        leftButtonPressed_ = false;
        pressed_.reset();
    }
    pressedOnMoveBar_ = false;
    pressedOnEdges_ = false;
}

void CFramelessHandler::handleMouseMoveEvent(QMouseEvent* event)
{
    if (!leftButtonPressed_) {
        if (resizable_)
            updateCursorShape(event->globalPos());
    } else if (resizable_ && pressedOnEdges_ && !pressedOnMoveBar_) {
        resizeWidget(event->globalPos());
    } else if (movable_ && !pressedOnEdges_ && pressedOnMoveBar_) {
        moveWidget(event->globalPos());
    }
}

void CFramelessHandler::handleLeaveEvent(QEvent* /*event*/)
{
    if (!leftButtonPressed_)
        widget_->unsetCursor();
}

void CFramelessHandler::handleHoverMoveEvent(QHoverEvent* event)
{
    if (resizable_)
        updateCursorShape(widget_->mapToGlobal(event->pos()));
}

void CFramelessHandler::handleDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    pressed_.recalculate(event->globalPos(), widget_->frameGeometry());
    if (pressed_.onMoveBar)
        emit toggleMaximize();
}

void CFramelessHandler::handleStateChangeEvent(QWindowStateChangeEvent* event)
{
    // A frameless window that comes back from being minimised may stay unpainted otherwise.
    widget_->setAttribute(Qt::WA_Mapped, event->oldState() == Qt::WindowMinimized);
    widget_->setFocus(Qt::OtherFocusReason);
    widget_->raise();
    QCoreApplication::postEvent(widget_, new QEvent(QEvent::UpdateRequest), Qt::HighEventPriority);
}

void CFramelessHandler::resizeWidget(const QPoint& globalPos)
{
    const QRect frame = widget_->frameGeometry();
    const PulledSides pulled = SidesPulledAt(pressed_);
    int left = pulled.left ? globalPos.x() : frame.left();
    int top = pulled.top ? globalPos.y() : frame.top();
    int right = pulled.right ? globalPos.x() : frame.right();
    int bottom = pulled.bottom ? globalPos.y() : frame.bottom();
    if (left > right || top > bottom)
        return;

    const QSize minimum = widget_->minimumSize();
    if (right - left + 1 < minimum.width()) {
        left = frame.left();
        right = frame.right();
    }
    if (bottom - top + 1 < minimum.height()) {
        top = frame.top();
        bottom = frame.bottom();
    }
    widget_->move(left, top);
    widget_->resize(right - left + 1, bottom - top + 1);
}

void CFramelessHandler::moveWidget(const QPoint& globalPos)
{
    pressed_.recalculate(globalPos, widget_->frameGeometry());
    if (pressedOnMoveBar_)
        widget_->move(globalPos - dragOffset_);
}

void CFramelessHandler::updateCursorShape(const QPoint& globalPos)
{
    hovered_.recalculate(globalPos, widget_->frameGeometry());
    if (hovered_.onTopLeft || hovered_.onBottomRight) {
        setResizeCursor(Qt::SizeFDiagCursor);
    } else if (hovered_.onTopRight || hovered_.onBottomLeft) {
        setResizeCursor(Qt::SizeBDiagCursor);
    } else if (hovered_.onLeftEdge || hovered_.onRightEdge) {
        setResizeCursor(Qt::SizeHorCursor);
    } else if (hovered_.onTopEdge || hovered_.onBottomEdge) {
        setResizeCursor(Qt::SizeVerCursor);
    } else if (cursorChanged_) {
        widget_->unsetCursor();
        cursorChanged_ = false;
    }
}

void CFramelessHandler::setResizeCursor(Qt::CursorShape shape)
{
    widget_->setCursor(shape);
    cursorChanged_ = true;
}
