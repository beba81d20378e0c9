#include "VantoraHost/core/workers/HugePages.h"

#include "tests/support/MemoryFlags.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#ifndef VANTORA_SANITIZED // whose allocator is another one
namespace vantora {
namespace {

TEST(HugePages, AreAskedForWhereLargeThingsWillBe)
{
    if (!hasHugePages()) {
        GTEST_SKIP() << "this system has no huge pages";
    }
    useHugePages();
    const std::vector<char> large(16 * 1024 * 1024);
    EXPECT_TRUE(isForHugePages(large.data() + large.size() - 1));
    // What is small, too, and in a copy at the beginning of one that nothing else is in.
    leaveSharedHugePage();
    const std::vector<char> smaller(300'000);
    EXPECT_TRUE(isForHugePages(smaller.data()));
    EXPECT_LT(reinterpret_cast<std::uintptr_t>(smaller.data()) % (2 * 1024 * 1024), 64U);
}

TEST(HugePages, AreGivenBackWhereMemoryIsShort)
{
    if (!hasHugePages()) {
        GTEST_SKIP() << "this system has no huge pages";
    }
    constexpr std::ptrdiff_t most = 32 * 1024 * 1024;
    useHugePages();
    const char* const before = static_cast<char*>(sbrk(0));
    giveRoomBackFor(std::uint64_t{1} << 40);
    EXPECT_EQ(static_cast<char*>(sbrk(0)), before) << "there is enough";
    giveRoomBackFor(1);
    EXPECT_GT(before - static_cast<char*>(sbrk(0)), most);
}

} // namespace
} // namespace vantora
#endif
