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

    bool mOnEdges = false; ///< on any edge or corner

    bool mOnLeftEdge = false; ///< within the border width
    bool mOnRightEdge = false;
    bool mOnTopEdge = false;
    bool mOnBottomEdge = false;

    bool mNearLeft = false; ///< within twice the border width
    bool mNearRight = false;
    bool mNearTop = false;
    bool mNearBottom = false;

    bool mOnTopLeft = false;
    bool mOnBottomLeft = false;
    bool mOnTopRight = false; ///< a smaller zone than the others, which leaves room for a button
    bool mOnBottomRight = false;

    bool mOnMoveBar = false; ///< at or above the lower end of the move bar

    int mBorderWidth = 5;
    int mMoveBarHeight = 0;
};
