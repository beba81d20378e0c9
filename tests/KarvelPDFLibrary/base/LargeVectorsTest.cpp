#include "KarvelPDFLibrary/base/LargeVectors.h"

#include "tests/support/MemoryFlags.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>

namespace karvel {
namespace {

TEST(LargeVectors, KeepWhatIsInThemAsTheyGrow)
{
    std::vector<std::uint32_t> appended;
    std::vector<std::uint32_t> expected(3'000'000);
    std::iota(expected.begin(), expected.end(), 0);
    for (const std::uint32_t number : expected) {
        appendLarge(appended, number);
    }
    EXPECT_EQ(appended, expected);
    growLarge(appended, appended.capacity() + 1);
    EXPECT_EQ(appended, expected);
}

TEST(LargeVectors, GrowAtLeastTwofoldAndNeverShrink)
{
    std::vector<int> vector;
    reserveLarge(vector, 1000);
    growLarge(vector, 1001);
    EXPECT_GE(vector.capacity(), 2000U);
    const std::size_t before = vector.capacity();
    reserveLarge(vector, 10);
    growLarge(vector, 10);
    EXPECT_EQ(vector.capacity(), before);
}

#ifndef VANTORA_SANITIZED // whose allocator is another one
TEST(LargeVectors, AskForHugePagesBeforeAnythingIsInThem)
{
    if (!hasHugePages()) {
        GTEST_SKIP() << "this system has no huge pages";
    }
    constexpr std::size_t size = 64 * 1024 * 1024;
    std::vector<char> vector = {'a', 'b'};
    reserveLarge(vector, size);
    EXPECT_EQ(std::string(vector.begin(), vector.end()), "ab");
    EXPECT_TRUE(isForHugePages(vector.data() + size / 2));
}
#endif

} // namespace
} // namespace karvel
