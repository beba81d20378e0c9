#include "VantoraApp/CActionUtils.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

struct DashRow {
    const char* sentence;
    int style;
    double width;
    const char* pattern;
};

TEST(BorderDash, HasTheLengthsOfItsStyleAndWidth)
{
    const DashRow rows[] = {{"dash", 1, 1, "10 4"},
                            {"dot", 2, 1, "6 4"},
                            {"dash dot", 3, 1, "10 4 4 4"},
                            {"dash dot dot", 4, 1, "10 4 4 4 4 4"},
                            {"half a point dash", 1, 0.5, "7 3"},
                            {"half a point dot", 2, 0.5, "4 3"},
                            {"half a point dash dot", 3, 0.5, "7 3 3 3"},
                            {"half a point dash dot dot", 4, 0.5, "7 3 3 3 3 3"},
                            {"fractions are cut off", 1, 0.19, "5 2"},
                            {"fractions are cut off towards zero", 1, -1.3, "-1 0"},
                            {"no width", 4, 0, "5 2 2 2 2 2"},
                            {"negative width", 1, -2, "-5 -2"},
                            {"a product just below an integer", 2, 0.7, "5 3"},
                            {"solid", 0, 1, "invalid"},
                            {"behind the last", 5, 1, "invalid"},
                            {"negative style", -1, 1, "invalid"},
                            {"wider than integers", 1, 1e300, "2147483647 2147483647"},
                            {"narrower than integers", 2, -HUGE_VAL, "-2147483648 -2147483648"},
                            {"no number", 2, std::nan(""), "0 0"}};
    for (const DashRow& row : rows)
        EXPECT_EQ(CActionUtils::GetBorderDash(row.style, row.width), row.pattern) << row.sentence;
}

} // namespace
