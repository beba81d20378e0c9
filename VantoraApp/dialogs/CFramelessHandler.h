#pragma once

#include "VantoraApp/binding/Shared.h"
#include "VantoraApp/dialogs/CCursorPosCalculator.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>

class QHoverEvent;
class QMouseEvent;
class QWidget;
class QWindowStateChangeEvent;

/// Lets the user move and resize a window without a system frame: it is dragged by a bar along its
/// top and pulled by its edges and corners. Only watches the window's events and consumes none.
class VANTORA_SHARED CFramelessHandler : public QObject {
    Q_OBJECT

public:
    explicit CFramelessHandler(QObject* parent = nullptr);

    /// Starts to watch the widget, which must outlive the handler's use and stays the caller's.
    /// Its slots on_MaxRestore() and on_MoveMaximized(), if it has them, are connected to the
    /// signals. Null is ignored.
    void activateOn(QWidget* widget);

    void setWidgetMovable(bool movable) { movable_ = movable; }
    bool isWidgetMovable() const { return movable_; }
    void setWidgetResizable(bool resizable) { resizable_ = resizable; }
    bool isWidgetResizable() const { return resizable_; }

    /// The width in pixels of the bands that resize; a negative one is ignored.
    void setBorderWidth(int width);
    int borderWidth() const { return pressed_.borderWidth; }

    /// The height in pixels of the bar that moves; with a negative one there is none.
    void setMoveBarHeight(int height);
    int moveBarHeight() const { return pressed_.moveBarHeight; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The move bar was double-clicked.
    void toggleMaximize();
    /// Never emitted here: for windows that can be dragged out of their maximised state.
    void movingMaximized();

private:
    void handleMousePressEvent(QMouseEvent* event);
    void handleMouseReleaseEvent(QMouseEvent* event);
    void handleMouseMoveEvent(QMouseEvent* event);
    void handleLeaveEvent(QEvent* event);
    void handleHoverMoveEvent(QHoverEvent* event);
    void handleDoubleClickEvent(QMouseEvent* event);
    void handleStateChangeEvent(QWindowStateChangeEvent* event);

    void resizeWidget(const QPoint& globalPos);
    void moveWidget(const QPoint& globalPos);
    void updateCursorShape(const QPoint& globalPos);
    void setResizeCursor(Qt::CursorShape shape);

    CCursorPosCalculator pressed_; ///< where the button went down: the edge that a drag pulls
    CCursorPosCalculator hovered_;
    QPoint dragOffset_; ///< from the frame's top left corner to where the button went down
    QWidget* widget_ = nullptr;
    bool movable_ = true;
    bool resizable_ = true;
    bool cursorChanged_ = false;
    bool leftButtonPressed_ = false;
    bool pressedOnMoveBar_ = false;
    bool pressedOnEdges_ = false;
};
