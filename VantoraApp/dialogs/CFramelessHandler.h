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

    void setWidgetMovable(bool movable) { mMovable = movable; }
    bool isWidgetMovable() const { return mMovable; }
    void setWidgetResizable(bool resizable) { mResizable = resizable; }
    bool isWidgetResizable() const { return mResizable; }

    /// The width in pixels of the bands that resize; a negative one is ignored.
    void setBorderWidth(int width);
    int borderWidth() const { return mPressed.mBorderWidth; }

    /// The height in pixels of the bar that moves; with a negative one there is none.
    void setMoveBarHeight(int height);
    int moveBarHeight() const { return mPressed.mMoveBarHeight; }

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

    CCursorPosCalculator mPressed; ///< where the button went down: the edge that a drag pulls
    CCursorPosCalculator mHovered;
    QPoint mDragOffset; ///< from the frame's top left corner to where the button went down
    QWidget* mWidget = nullptr;
    bool mMovable = true;
    bool mResizable = true;
    bool mCursorChanged = false;
    bool mLeftButtonPressed = false;
    bool mPressedOnMoveBar = false;
    bool mPressedOnEdges = false;
};
