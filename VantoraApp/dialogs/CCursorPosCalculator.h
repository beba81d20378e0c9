#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>

/// Tells in which zones of a window's frame a pointer is: the bands along its edges, its corners
/// and the bar along its top by which it is moved. All measures are pixels of the screen.
class CCursorPosCalculator {
public:
    /// Clears what the last evaluation found; the widths stay.
    void reset();

    /// Finds the zones of `globalPos` in `frameRect`. Bands include the pixel one past the frame on
    /// the right and at the bottom.
    void recalculate(const QPoint& globalPos, const QRect& frameRect);

    bool onEdges = false; ///< on any edge or corner

    bool onLeftEdge = false; ///< within the border width
    bool onRightEdge = false;
    bool onTopEdge = false;
    bool onBottomEdge = false;

    bool nearLeft = false; ///< within twice the border width
    bool nearRight = false;
    bool nearTop = false;
    bool nearBottom = false;

    bool onTopLeft = false;
    bool onBottomLeft = false;
    bool onTopRight = false; ///< a smaller zone than the others, which leaves room for a button
    bool onBottomRight = false;

    bool onMoveBar = false; ///< at or above the lower end of the move bar

    int borderWidth = 5;
    int moveBarHeight = 0;
};
