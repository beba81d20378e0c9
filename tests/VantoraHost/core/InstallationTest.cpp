#include "VantoraHost/core/Installation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using vantora::Installation;
using vantora::installationOf;

TEST(Installation, IsFoundFromTheProgramItBelongsTo)
{
    const Installation found = installationOf("/opt/v/bin/vantora", nullptr);
    EXPECT_EQ(found.library, "/opt/v/lib/vantora/KarvelPDFLibraryCPDylib1311.dylib");
    EXPECT_EQ(found.guiPart, "/opt/v/lib/vantora/vantora_gui.so");
    EXPECT_EQ(found.verifier, "/opt/v/lib/vantora/vantora_verifier.so");
    EXPECT_THAT(found.actionFolders, ElementsAre("/opt/v/lib/vantora/actions"));
}

TEST(Installation, TakesOtherActionFoldersInTheirPlace)
{
    EXPECT_THAT(installationOf("/v/bin/vantora", "/one::/two:").actionFolders,
                ElementsAre("/one", "/two"));
    EXPECT_THAT(installationOf("/v/bin/vantora", "").actionFolders,
                ElementsAre("/v/lib/vantora/actions"));
    EXPECT_THAT(installationOf("/v/bin/vantora", ":").actionFolders,
                ElementsAre("/v/lib/vantora/actions"));
}

} // namespace
