#include "VantoraHost/core/Installation.h"

#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

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

TEST(OwnActions, LieWhereTheSystemKeepsTheDataOfUsers)
{
    using vantora::ownActionFolder;
    EXPECT_EQ(ownActionFolder(nullptr, "/home/a"), "/home/a/.local/share/vantora/actions");
    EXPECT_EQ(ownActionFolder("/data", "/home/a"), "/data/vantora/actions");
    EXPECT_EQ(ownActionFolder("data", "/home/a"), "/home/a/.local/share/vantora/actions");
    EXPECT_EQ(ownActionFolder(nullptr, nullptr), "");
}

struct Permission {
    const char* name;
    const char* changed; ///< below the folder that others may list, given these permissions
    unsigned mode;
    bool counts;
};

class OwnActionFolder : public testing::TestWithParam<Permission> {};

// Each is as a careful user has it but for one file or folder.
TEST_P(OwnActionFolder, CountsOnlyWhereNobodyElseCanChangeIt)
{
    namespace fs = std::filesystem;
    const support::ScratchFolder scratch;
    const fs::path home = scratch.path("home");
    const fs::path folder = home / "vantora/actions";
    fs::create_directories(folder);
    fs::create_directory(home / "elsewhere");
    fs::copy_file(scratch.write("plug-in", "bytes"), home / "elsewhere/real.so");
    fs::copy_file(scratch.path("plug-in"), folder / "plain.so");
    fs::create_symlink("../../elsewhere/real.so", folder / "linked.so");
    for (const auto& entry : fs::recursive_directory_iterator(home)) {
        fs::permissions(entry.path(), fs::perms(entry.is_directory() ? 0755 : 0644));
    }
    fs::permissions(home, fs::perms(0755));
    fs::permissions(home / GetParam().changed, fs::perms(GetParam().mode));

    vantora::Installation installation;
    vantora::addOwnActions(installation, folder);
    EXPECT_EQ(installation.actionFolders.size(), GetParam().counts ? 1U : 0U);
    EXPECT_EQ(installation.leftOut.has_value(), !GetParam().counts);
    if (installation.leftOut) {
        EXPECT_EQ(installation.leftOut->file, folder);
        EXPECT_THAT(installation.leftOut->sentence,
                    testing::HasSubstr((home / GetParam().changed).lexically_normal().string() +
                                       "; forbid it by chmod go-w"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Permissions, OwnActionFolder,
    testing::Values(Permission{"allForTheUserAlone", "vantora/actions", 0700, true},
                    Permission{"othersMayPutFilesThere", "vantora/actions", 0757, false},
                    Permission{"theGroupMayPutFilesThere", "vantora/actions", 0775, false},
                    Permission{"othersMayExchangeTheFolderAbove", "vantora", 0777, false},
                    Permission{"inAFolderLikeTheOneForTemporaryFiles", "vantora", 01777, true},
                    Permission{"othersMayWriteAFile", "vantora/actions/plain.so", 0646, false},
                    Permission{"othersMayWriteWhatIsLinked", "elsewhere/real.so", 0666, false},
                    Permission{"othersMayExchangeWhatIsLinked", "elsewhere", 0777, false}),
    [](const auto& row) { return row.param.name; });

TEST(OwnActions, ThatAreNotThereAreNoneWithoutAWord)
{
    vantora::Installation installation;
    vantora::addOwnActions(installation, "/nowhere/at/all");
    vantora::addOwnActions(installation, "");
    EXPECT_THAT(installation.actionFolders, testing::IsEmpty());
    EXPECT_FALSE(installation.leftOut);
}

} // namespace
