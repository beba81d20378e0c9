#include "VantoraApp/dialogs/CCursorPosCalculator.h"

#include <gtest/gtest.h>
#include <string>

namespace {

/// The zones that a calculator found, as words.
std::string ZonesOf(const CCursorPosCalculator& found)
{
    std::string zones;
    const auto add = [&zones](bool isIn, const char* name) {
        if (isIn)
            zones += zones.empty() ? name : std::string(" ") + name;
    };
    add(found.onLeftEdge, "left");
    add(found.onRightEdge, "right");
    add(found.onTopEdge, "top");
    add(found.onBottomEdge, "bottom");
    add(found.nearLeft, "near-left");
    add(found.nearRight, "near-right");
    add(found.nearTop, "near-top");
    add(found.nearBottom, "near-bottom");
    add(found.onTopLeft, "top-left");
    add(found.onBottomLeft, "bottom-left");
    add(found.onTopRight, "top-right");
    add(found.onBottomRight, "bottom-right");
    add(found.onMoveBar, "bar");
    add(found.onEdges, "edges");
    return zones;
}

struct Row {
    const char* name;
    QPoint pointer;
    const char* zones;
};

// The frame covers x 100 to 499 and y 100 to 399.
const Row rows[] = {
    {"the middle", {300, 250}, ""},
    {"the last pixel of the left edge", {109, 150}, "left near-left edges"},
    {"just inside the left edge", {110, 150}, "near-left"},
    {"beyond its near zone", {119, 150}, ""},
    {"the first pixel of the frame", {100, 250}, "left near-left edges"},
    {"outside on the left", {99, 250}, ""},
    {"the far end of the top left corner", {118, 118}, "near-left near-top top-left bar edges"},
    {"outside the top left corner", {119, 118}, "near-top bar"},
    {"the right edge below its corner", {491, 115}, "right near-right near-top bar edges"},
    {"the near end of the top right corner",
     {491, 109},
     "right top near-right near-top top-right bar edges"},
    {"one past the frame on the right", {500, 250}, "right near-right edges"},
    {"two past the frame on the right", {501, 250}, ""},
    {"the first pixel of the right edge", {491, 250}, "right near-right edges"},
    {"one past the frame at the bottom", {300, 400}, "bottom near-bottom edges"},
    {"two past the frame at the bottom", {300, 401}, ""},
    {"the bottom left corner", {118, 382}, "near-left near-bottom bottom-left edges"},
    {"the bottom right corner", {482, 382}, "near-right near-bottom bottom-right edges"},
    {"the top edge", {300, 109}, "top near-top bar edges"},
    {"the move bar below the top edge", {300, 130}, "bar"},
    {"below the move bar", {300, 131}, ""},
    {"above the frame", {300, 50}, "bar"},
};

TEST(CCursorPosCalculator, FindsTheZonesOfAPointer)
{
    CCursorPosCalculator calculator;
    calculator.borderWidth = 9;
    calculator.moveBarHeight = 30;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        calculator.recalculate(row.pointer, QRect(100, 100, 400, 300));
        EXPECT_EQ(ZonesOf(calculator), row.zones);
    }
}

TEST(CCursorPosCalculator, StartsWithNarrowBandsAndNoBar)
{
    CCursorPosCalculator calculator;
    EXPECT_EQ(ZonesOf(calculator), "");
    EXPECT_EQ(calculator.borderWidth, 5);
    calculator.recalculate({300, 101}, QRect(100, 100, 400, 300));
    EXPECT_FALSE(calculator.onMoveBar);
}

TEST(CCursorPosCalculator, KeepsItsWidthsWhenItIsReset)
{
    CCursorPosCalculator calculator;
    calculator.borderWidth = 9;
    calculator.moveBarHeight = 30;
    calculator.recalculate({105, 105}, QRect(100, 100, 400, 300));
    calculator.reset();
    EXPECT_EQ(ZonesOf(calculator), "");
    EXPECT_EQ(calculator.borderWidth, 9);
    EXPECT_EQ(calculator.moveBarHeight, 30);
}

} // namespace
