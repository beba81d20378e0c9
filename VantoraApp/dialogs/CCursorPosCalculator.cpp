#include "VantoraApp/dialogs/CCursorPosCalculator.h"

namespace {

bool IsWithin(int position, int first, int last)
{
    return first <= position && position <= last;
}

} // namespace

void CCursorPosCalculator::reset()
{
    CCursorPosCalculator empty;
    empty.borderWidth = borderWidth;
    empty.moveBarHeight = moveBarHeight;
    *this = empty;
}

void CCursorPosCalculator::recalculate(const QPoint& globalPos, const QRect& frameRect)
{
    const int left = frameRect.x();
    const int top = frameRect.y();
    const int right = left + frameRect.width();
    const int bottom = top + frameRect.height();
    const int x = globalPos.x();
    const int y = globalPos.y();

    onLeftEdge = IsWithin(x, left, left + borderWidth);
    onRightEdge = IsWithin(x, right - borderWidth, right);
    onTopEdge = IsWithin(y, top, top + borderWidth);
    onBottomEdge = IsWithin(y, bottom - borderWidth, bottom);

    nearLeft = IsWithin(x, left, left + 2 * borderWidth);
    nearRight = IsWithin(x, right - 2 * borderWidth, right);
    nearTop = IsWithin(y, top, top + 2 * borderWidth);
    nearBottom = IsWithin(y, bottom - 2 * borderWidth, bottom);

    onTopLeft = nearTop && nearLeft;
    onBottomLeft = nearBottom && nearLeft;
    onBottomRight = nearBottom && nearRight;
    onTopRight = onTopEdge && onRightEdge;

    onMoveBar = y <= top + moveBarHeight;

    onEdges = onLeftEdge || onRightEdge || onTopEdge || onBottomEdge || onTopLeft || onBottomLeft ||
              onTopRight || onBottomRight;
}
