#include "VantoraHost/core/PageNumbers.h"

#include <gtest/gtest.h>

namespace {

using namespace vantora;

TEST(PageNumbers, AreRunsForPeople)
{
    EXPECT_EQ(pageNumbersText({}), "");
    EXPECT_EQ(pageNumbersText({7}), "7");
    EXPECT_EQ(pageNumbersText({1, 2, 4, 6, 7, 8}), "1-2, 4, 6-8");
    EXPECT_EQ(pageNumbersText({1, 3, 5, 7}, 3), "1, 3, 5, ...");
    EXPECT_EQ(pageNumbersText({1, 3, 5}, 3), "1, 3, 5");
}

TEST(PageNumbers, AreTheShortestRange)
{
    EXPECT_EQ(pageRangeText({}), "");
    EXPECT_EQ(pageRangeText({1, 2, 4, 6, 7, 8}), "1-2,4,6-8");
}

} // namespace
