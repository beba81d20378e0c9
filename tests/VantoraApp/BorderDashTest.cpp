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

class BorderDash : public testing::TestWithParam<DashRow> {};

TEST_P(BorderDash, HasTheLengthsOfItsStyleAndWidth)
{
    EXPECT_EQ(CActionUtils::GetBorderDash(GetParam().style, GetParam().width), GetParam().pattern);
}

INSTANTIATE_TEST_SUITE_P(
    , BorderDash,
    testing::Values(
        DashRow{"dash", 1, 1, "10 4"}, DashRow{"dot", 2, 1, "6 4"},
        DashRow{"dash_dot", 3, 1, "10 4 4 4"}, DashRow{"dash_dot_dot", 4, 1, "10 4 4 4 4 4"},
        DashRow{"half_a_point_dash", 1, 0.5, "7 3"}, DashRow{"half_a_point_dot", 2, 0.5, "4 3"},
        DashRow{"half_a_point_dash_dot", 3, 0.5, "7 3 3 3"},
        DashRow{"half_a_point_dash_dot_dot", 4, 0.5, "7 3 3 3 3 3"},
        DashRow{"fractions_are_cut_off", 1, 0.19, "5 2"},
        DashRow{"fractions_are_cut_off_towards_zero", 1, -1.3, "-1 0"},
        DashRow{"no_width", 4, 0, "5 2 2 2 2 2"}, DashRow{"negative_width", 1, -2, "-5 -2"},
        DashRow{"a_product_just_below_an_integer", 2, 0.7, "5 3"},
        DashRow{"solid", 0, 1, "invalid"}, DashRow{"behind_the_last", 5, 1, "invalid"},
        DashRow{"negative_style", -1, 1, "invalid"},
        DashRow{"wider_than_integers", 1, 1e300, "2147483647 2147483647"},
        DashRow{"narrower_than_integers", 2, -HUGE_VAL, "-2147483648 -2147483648"},
        DashRow{"no_number", 2, std::nan(""), "0 0"}),
    [](const auto& info) { return std::string(info.param.sentence); });

} // namespace
