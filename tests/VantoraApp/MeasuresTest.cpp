#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

struct RoundRow {
    double number;
    int rounded;
};

class Round : public testing::TestWithParam<RoundRow> {};

TEST_P(Round, GivesTheNearestIntegerAndTheLowerOfTwo)
{
    EXPECT_EQ(CActionUtils::Round(GetParam().number), GetParam().rounded);
}

constexpr int highest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();

INSTANTIATE_TEST_SUITE_P(, Round,
                         testing::Values(RoundRow{0, 0}, RoundRow{-0.0, 0}, RoundRow{2.5, 2},
                                         RoundRow{2.51, 3}, RoundRow{2.49, 2}, RoundRow{-2.4, -2},
                                         RoundRow{-2.5, -3}, RoundRow{-2.6, -3}, RoundRow{0.5, 0},
                                         RoundRow{-0.5, -1}, RoundRow{std::nextafter(0.5, 1.0), 1},
                                         RoundRow{highest - 0.4, highest},
                                         RoundRow{lowest + 0.4, lowest}, RoundRow{1e300, highest},
                                         RoundRow{-1e300, lowest}, RoundRow{INFINITY, highest},
                                         RoundRow{-INFINITY, lowest}, RoundRow{NAN, 0}));

struct LengthRow {
    long from;
    double value;
    long to;
    double converted;
};

class Length : public testing::TestWithParam<LengthRow> {};

TEST_P(Length, IsConvertedToTheLastBit)
{
    const LengthRow& row = GetParam();
    EXPECT_EQ(CUtils::Convert(row.from, row.value, row.to), row.converted);
}

// Values for which another order of the operations, or a factor worked out beforehand, gives
// another result.
INSTANTIATE_TEST_SUITE_P(
    , Length,
    testing::Values(
        LengthRow{0, 254.25, 1, 645.795}, LengthRow{0, 229.16, 2, 5820.664000000001},
        LengthRow{0, 236.64, 3, 17038.079999999998}, LengthRow{1, 28.25, 0, 11.122047244094489},
        LengthRow{1, 8.6, 2, 86.0}, LengthRow{1, 250.75, 3, 7107.8740157480315},
        LengthRow{2, 129.89, 0, 5.113779527559055}, LengthRow{2, 9.27, 1, 0.9269999999999999},
        LengthRow{2, 131.42, 3, 372.52913385826776}, LengthRow{3, 87.01, 0, 1.2084722222222224},
        LengthRow{3, 6.54, 1, 0.23071666666666665}, LengthRow{3, 251.29, 2, 88.64952777777779}));

TEST(LengthUnits, ThatAreUnknownOrEqualLeaveTheValue)
{
    const double value = 0.1 + 0.2;
    for (const long known : {0L, 1L, 2L, 3L}) {
        EXPECT_EQ(CUtils::Convert(known, value, known), value);
        for (const long unknown : {4L, -1L, 1L << 32, std::numeric_limits<long>::min()}) {
            EXPECT_EQ(CUtils::Convert(known, value, unknown), value);
            EXPECT_EQ(CUtils::Convert(unknown, value, known), value);
        }
    }
}

} // namespace
