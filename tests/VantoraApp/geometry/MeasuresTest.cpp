#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(Round, GivesTheNearestIntegerAndTheLowerOfTwo)
{
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    const std::pair<double, int> rows[] = {{0, 0},
                                           {-0.0, 0},
                                           {2.5, 2},
                                           {2.51, 3},
                                           {2.49, 2},
                                           {-2.4, -2},
                                           {-2.5, -3},
                                           {-2.6, -3},
                                           {0.5, 0},
                                           {-0.5, -1},
                                           {std::nextafter(0.5, 1.0), 1},
                                           {highest - 0.4, highest},
                                           {lowest + 0.4, lowest},
                                           {1e300, highest},
                                           {-1e300, lowest},
                                           {INFINITY, highest},
                                           {-INFINITY, lowest},
                                           {NAN, 0}};
    for (const auto& [number, rounded] : rows)
        EXPECT_EQ(CActionUtils::Round(number), rounded) << number;
}

struct LengthRow {
    long from;
    double value;
    long to;
    double converted;
};

// Values for which another order of the operations, or a factor worked out beforehand, gives
// another result.
TEST(Length, IsConvertedToTheLastBit)
{
    const LengthRow rows[] = {{0, 254.25, 1, 645.795},
                              {0, 229.16, 2, 5820.664000000001},
                              {0, 236.64, 3, 17038.079999999998},
                              {1, 28.25, 0, 11.122047244094489},
                              {1, 8.6, 2, 86.0},
                              {1, 250.75, 3, 7107.8740157480315},
                              {2, 129.89, 0, 5.113779527559055},
                              {2, 9.27, 1, 0.9269999999999999},
                              {2, 131.42, 3, 372.52913385826776},
                              {3, 87.01, 0, 1.2084722222222224},
                              {3, 6.54, 1, 0.23071666666666665},
                              {3, 251.29, 2, 88.64952777777779}};
    for (const LengthRow& row : rows)
        EXPECT_EQ(CUtils::Convert(row.from, row.value, row.to), row.converted) << row.value;
}

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
