#include "KarvelPDFLibrary/io/Folder.h"

#include "tests/support/Inspect.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

using namespace karvel::io;
namespace fs = std::filesystem;

TEST(FolderOf, IsWhereThePathNamesAFile)
{
    EXPECT_EQ(folderOf("a"), ".");
    EXPECT_EQ(folderOf("a/b"), "a");
    EXPECT_EQ(folderOf("/a"), "/");
    EXPECT_EQ(folderOf("/a/b"), "/a");
    EXPECT_EQ(nameIn("a"), "a");
    EXPECT_EQ(nameIn("/a/b"), "b");
}

TEST(FolderBelow, IsReachedWithoutALinkOrNotAtAll)
{
    const support::ScratchFolder scratch;
    fs::create_directories(scratch.path("root/a/b"));
    fs::create_directory(scratch.path("root/a/outside"));
    fs::create_directory_symlink("a", scratch.path("root/link"));
    fs::create_directory_symlink("/", scratch.path("root/a/out"));
    fs::create_directory_symlink("root", scratch.path("named"));
    scratch.write("root/file", "");
    const struct {
        const char* path;
        Missing missing;
        int error;
        const char* same; ///< as this folder
    } rows[] = {
        {"", Missing::Refuse, 0, "root"},
        {"a/b/", Missing::Refuse, 0, "root/a/b"},
        {"a//./b", Missing::Refuse, 0, "root/a/b"},
        {"link/b", Missing::Refuse, ELOOP, ""},
        {"a/out/tmp", Missing::Make, ELOOP, ""},
        {"a/..", Missing::Refuse, ELOOP, ""},
        {"file/b", Missing::Make, ENOTDIR, ""},
        {"new/one", Missing::Refuse, ENOENT, ""},
        {"new/one", Missing::Make, 0, "root/new/one"},
        {"new/one", Missing::Make, 0, "root/new/one"},
    };
    const auto root = Folder::open(scratch.path("named")).value(); // somebody's word for it
    for (const auto& row : rows) {
        const auto folder = root->below(row.path, row.missing);
        EXPECT_EQ(folder ? 0 : folder.error(), row.error) << row.path;
        if (folder && *row.same != 0) {
            const auto same = Folder::open(scratch.path(row.same)).value();
            EXPECT_TRUE((*folder)->version()->isOf(*same->version())) << row.path;
        }
    }
}

TEST(FolderHeld, RemovesAFileOnlyWhileItHasTheName)
{
    const support::ScratchFolder scratch;
    const auto folder = Folder::open(scratch.path("")).value();
    scratch.write("a", "ours");
    const FileVersion ours = folder->versionAt("a").value();
    fs::rename(scratch.path("a"), scratch.path("b"));
    scratch.write("a", "theirs");
    EXPECT_NE(folder->remove("a", ours), 0);
    EXPECT_EQ(support::readFile(scratch.path("a")), "theirs");
    EXPECT_EQ(folder->remove("b", ours), 0);
    EXPECT_EQ(folder->remove("b", ours), ENOENT);
}

TEST(FolderHeld, TakesNoNameThatIsTaken)
{
    const support::ScratchFolder scratch;
    const auto folder = Folder::open(scratch.path("")).value();
    scratch.write("a", "a");
    scratch.write("b", "b");
    EXPECT_EQ(folder->renameToFree("a", "b"), EEXIST);
    EXPECT_EQ(folder->link("a", "b"), EEXIST);
    EXPECT_EQ(folder->exchange("a", "c"), ENOENT);
    EXPECT_EQ(folder->exchange("a", "b"), 0);
    EXPECT_EQ(support::readFile(scratch.path("b")), "a");
}

} // namespace
