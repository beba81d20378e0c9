#include "VantoraApp/CUtils.h"

#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>

namespace {

TEST(ApplicationName, IsTheDefaultUntilANonEmptyOneIsSet)
{
    EXPECT_EQ(CUtils::mApplicationName, QString());
    EXPECT_EQ(CUtils::GetAppName(), "Tollera");
    CUtils::SetAppName("Another");
    EXPECT_EQ(CUtils::GetAppName(), "Another");
    EXPECT_EQ(CUtils::mApplicationName, "Another");
    CUtils::SetAppName("");
    EXPECT_EQ(CUtils::GetAppName(), "Tollera");
}

TEST(InstallationType, IsNotForTheCurrentUserWhereNothingIsStored)
{
    const ScratchHome home;
    CUtils::mInstalationTypeCurrentUser = true;
    CUtils::GetInstalationType();
    EXPECT_FALSE(CUtils::mInstalationTypeCurrentUser);
}

} // namespace
