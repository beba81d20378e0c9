#include "KarvelPDFLibrary/instance/Buffers.h"

#include <gtest/gtest.h>

namespace {

using karvel::Buffers;

TEST(Buffers, GrowByAppendingUpToTheirSize)
{
    Buffers buffers;
    char* buffer = buffers.create(4);
    EXPECT_TRUE(buffers.append(buffer, "ab", 2));
    EXPECT_TRUE(buffers.append(buffer, "\0c", 2));
    EXPECT_FALSE(buffers.append(buffer, "d", 1));
    EXPECT_EQ(buffers.bytes(buffer), std::string_view("ab\0c", 4));
}

TEST(Buffers, RefuseWhatDoesNotFit)
{
    Buffers buffers;
    EXPECT_EQ(buffers.create(-1), nullptr);
    char* buffer = buffers.create(1);
    EXPECT_FALSE(buffers.append(buffer, "a", -1));
    EXPECT_FALSE(buffers.append(buffer, nullptr, 1));
    EXPECT_FALSE(buffers.append(buffer + 1, "a", 1));
}

TEST(Buffers, AreGoneAfterRelease)
{
    Buffers buffers;
    char* first = buffers.create(0);
    char* second = buffers.create(0);
    EXPECT_NE(first, second);
    EXPECT_TRUE(buffers.release(first));
    EXPECT_FALSE(buffers.release(first));
    EXPECT_FALSE(buffers.bytes(first).has_value());
    EXPECT_EQ(buffers.bytes(second), std::string_view());
}

} // namespace
