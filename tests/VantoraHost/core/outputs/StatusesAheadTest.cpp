#include "VantoraHost/core/outputs/StatusesAhead.h"

#include "tests/support/Inspect.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using namespace vantora;

TEST(StatusesAhead, BelongToTheirPathsHoweverManyAreLookedAt)
{
    constexpr std::size_t many = 9001; // more than are looked at at a time
    const support::ScratchFolder scratch;
    for (std::size_t i = 0; i < many; i += 500) {
        scratch.write(std::to_string(i), std::string(i, 'x'));
    }
    const auto pathOf = [&](std::size_t i) {
        return i == 1 ? std::string() : scratch.path(std::to_string(i));
    };
    StatusesAhead statuses(many, pathOf, Links::Keep);
    for (std::size_t i = 0; i < many; ++i) {
        const LookedAt one = statuses.next();
        EXPECT_EQ(one.path, pathOf(i));
        ASSERT_EQ(one.status.has_value(), i % 500 == 0) << i;
        EXPECT_EQ(one.status ? static_cast<std::size_t>(one.status->st_size) : i, i);
    }
}

TEST(StatusesAhead, FollowLinksOnlyWhereTheyAreTo)
{
    const support::ScratchFolder scratch;
    scratch.write("file", "content");
    std::filesystem::create_symlink("file", scratch.path("link"));
    std::filesystem::create_symlink("nothing", scratch.path("broken"));
    const std::string names[] = {"link", "broken"};
    const auto pathOf = [&](std::size_t i) { return scratch.path(names[i]); };
    StatusesAhead followed(2, pathOf, Links::Follow);
    EXPECT_TRUE(S_ISREG(followed.next().status.value().st_mode));
    EXPECT_FALSE(followed.next().status);
    StatusesAhead kept(2, pathOf, Links::Keep);
    EXPECT_TRUE(S_ISLNK(kept.next().status.value().st_mode));
    EXPECT_TRUE(kept.next().status);
}

} // namespace
