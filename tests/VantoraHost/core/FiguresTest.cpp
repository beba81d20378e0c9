#include "VantoraHost/core/Figures.h"

#include <gtest/gtest.h>

namespace {

using namespace vantora;

TEST(Sizes, AreRoundedInTheirUnit)
{
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(1), "1 byte");
    EXPECT_EQ(sizeText(999), "999 bytes");
    EXPECT_EQ(sizeText(1000), "1.0 kB");
    EXPECT_EQ(sizeText(12345), "12.3 kB");
    EXPECT_EQ(sizeText(999949), "999.9 kB");
    EXPECT_EQ(sizeText(999950), "1.0 MB");
    EXPECT_EQ(sizeText(5000000000), "5.0 GB");
    EXPECT_EQ(sizeText(18446744073709551615U), "18446744.1 TB");
}

TEST(Numbers, AreGrouped)
{
    EXPECT_EQ(grouped(7), "7");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(1234567), "1,234,567");
}

TEST(Durations, AreRoundedUpToWhatMatters)
{
    EXPECT_EQ(durationText(0), "0 s");
    EXPECT_EQ(durationText(98.2), "99 s");
    EXPECT_EQ(durationText(99.1), "2 min");
    EXPECT_EQ(durationText(5999), "1 h 40 min");
}

} // namespace
