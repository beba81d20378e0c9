#include "VantoraHost/desktop/pages/PictureCache.h"

#include <gtest/gtest.h>

namespace {

using namespace vantora::desktop;

QPixmap picture()
{
    return QPixmap(10, 10); // 400 bytes
}

TEST(PictureCache, ForgetsWhatWasNotLookedAtForLongest)
{
    PictureCache cache(1600);
    for (int page = 1; page <= 4; ++page) {
        cache.put({1, page}, 10, picture());
    }
    EXPECT_FALSE(cache.picture({1, 1}).isNull()); // which counts as a look
    cache.put({1, 5}, 10, picture());
    EXPECT_LE(cache.bytes(), 1600);
    EXPECT_TRUE(cache.picture({1, 2}).isNull());
    EXPECT_FALSE(cache.picture({1, 1}).isNull());
    EXPECT_FALSE(cache.picture({1, 5}).isNull());
    EXPECT_EQ(cache.side({1, 2}), 0);
}

TEST(PictureCache, CountsAPictureThatTakesThePlaceOfAnotherOnce)
{
    PictureCache cache(1000);
    for (int i = 0; i < 20; ++i) {
        cache.put({1, 1}, 10, picture());
    }
    EXPECT_EQ(cache.bytes(), 400);
    cache.put({2, 1}, 10, picture());
    cache.forget(1);
    EXPECT_EQ(cache.bytes(), 400);
}

TEST(PictureCache, KeepsTheLatestHoweverLargeItIs)
{
    PictureCache cache(100);
    cache.put({1, 1}, 10, picture());
    EXPECT_FALSE(cache.picture({1, 1}).isNull());
    cache.put({1, 2}, 10, picture());
    EXPECT_FALSE(cache.picture({1, 2}).isNull());
    EXPECT_TRUE(cache.picture({1, 1}).isNull());
}

} // namespace
