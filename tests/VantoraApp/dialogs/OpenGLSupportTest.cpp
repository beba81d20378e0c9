#include "VantoraApp/CUtils.h"
#include "VantoraApp/dialogs/OpenGLVersions.h"

#include <gtest/gtest.h>

namespace {

TEST(OpenGLVersionsSuffice, BetweenTheirLimits)
{
    const std::pair<int, bool> rows[] = {
        {0, false},   {31, false},   {32, true},   {63, true},   {64, true},  {65, false},
        {127, false}, {2047, false}, {2048, true}, {4223, true}, {-1, false},
    };
    for (const auto& [flags, suffice] : rows)
        EXPECT_EQ(OpenGLVersionsSuffice(flags), suffice) << flags;
}

// Whatever the answer is on this display, it comes back, and comes back the same.
TEST(CheckOpenGLSupport, AnswersOnEveryPlatform)
{
    EXPECT_EQ(CUtils::CheckOpenGLSupport(), CUtils::CheckOpenGLSupport());
}

} // namespace
