#include "VantoraApp/dialogs/CCursorPosCalculator.h"

namespace {

bool IsWithin(int position, int first, int last)
{
    return first <= position && position <= last;
}

} // namespace

void CCursorPosCalculator::reset()
{
    const int borderWidth = mBorderWidth;
    const int moveBarHeight = mMoveBarHeight;
    *this = CCursorPosCalculator();
    mBorderWidth = borderWidth;
    mMoveBarHeight = moveBarHeight;
}

void CCursorPosCalculator::recalculate(const QPoint& globalPos, const QRect& frameRect)
{
    const int left = frameRect.x();
    const int top = frameRect.y();
    const int right = left + frameRect.width();
    const int bottom = top + frameRect.height();
    const int x = globalPos.x();
    const int y = globalPos.y();

    mOnLeftEdge = IsWithin(x, left, left + mBorderWidth);
    mOnRightEdge = IsWithin(x, right - mBorderWidth, right);
    mOnTopEdge = IsWithin(y, top, top + mBorderWidth);
    mOnBottomEdge = IsWithin(y, bottom - mBorderWidth, bottom);

    mNearLeft = IsWithin(x, left, left + 2 * mBorderWidth);
    mNearRight = IsWithin(x, right - 2 * mBorderWidth, right);
    mNearTop = IsWithin(y, top, top + 2 * mBorderWidth);
    mNearBottom = IsWithin(y, bottom - 2 * mBorderWidth, bottom);

    mOnTopLeft = mNearTop && mNearLeft;
    mOnBottomLeft = mNearBottom && mNearLeft;
    mOnBottomRight = mNearBottom && mNearRight;
    mOnTopRight = mOnTopEdge && mOnRightEdge;

    mOnMoveBar = y <= top + mMoveBarHeight;

    mOnEdges = mOnLeftEdge || mOnRightEdge || mOnTopEdge || mOnBottomEdge || mOnTopLeft ||
               mOnBottomLeft || mOnTopRight || mOnBottomRight;
}
