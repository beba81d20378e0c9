#include "Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using support::pagesNamed;
using support::pageTexts;
using support::readFile;

class InPlace : public InOwnFolder {
protected:
    static struct stat statusOf(const std::string& path)
    {
        struct stat status = {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status;
    }

    const std::string original = support::documentOfPages(3);
    const std::string input = scratch.write("in.pdf", original);
};

TEST_F(InPlace, ReplacesByRenamingSoThatAReaderOfTheOldFileKeepsIt)
{
    fs::create_hard_link("in.pdf", "other-name.pdf");
    EXPECT_EQ(terminal::run("run -p 2 in.pdf --in-place").status, 0);
    EXPECT_EQ(readFile("other-name.pdf"), original);
    EXPECT_EQ(support::problems(readFile("in.pdf")), "");
    EXPECT_EQ(pageTexts(readFile("in.pdf")), pagesNamed({1, 3}));
    EXPECT_EQ(terminal::contents(".").size(), 2U) << "nothing else is left";
}

TEST_F(InPlace, FollowsALinkToItsTargetAndKeepsTheOriginalAsBackup)
{
    fs::create_directory("elsewhere");
    fs::create_symlink("../in.pdf", "elsewhere/link.pdf");
    const auto answer = terminal::run("run -p 2 elsewhere/link.pdf --in-place --backup");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(fs::read_symlink("elsewhere/link.pdf"), "../in.pdf");
    EXPECT_EQ(pageTexts(readFile("in.pdf")), pagesNamed({1, 3}));
    EXPECT_EQ(readFile("in.pdf.bak"), original);
    EXPECT_EQ(terminal::contents(".").size(), 4U) << "nothing else is left";
}

TEST_F(InPlace, KeepsModeAndOwner)
{
    ASSERT_EQ(::chmod("in.pdf", 0640), 0);
    const bool mayGiveAway = ::geteuid() == 0;
    if (mayGiveAway) {
        ASSERT_EQ(::chown("in.pdf", 1234, 4321), 0);
        ASSERT_EQ(::chmod("in.pdf", 0640), 0);
    }
    const struct stat before = statusOf("in.pdf");
    EXPECT_EQ(terminal::run("run -p 2 in.pdf --in-place").status, 0);
    const struct stat after = statusOf("in.pdf");
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST_F(InPlace, ReplacesAnOlderBackupOnlyWhenAsked)
{
    scratch.write("in.pdf.bak", "older");
    EXPECT_EQ(terminal::run("run -p 2 in.pdf --in-place --backup --overwrite").status, 0);
    EXPECT_EQ(readFile("in.pdf.bak"), original);
    EXPECT_EQ(terminal::contents(".").size(), 2U);
}

TEST_F(InPlace, LeavesFileAndFolderAsTheyWereWhenAnActionFailsOrTheFileIsNamedTwice)
{
    const auto before = terminal::contents(".");
    for (const char* line :
         {"run -p 2 --action Scripted --set work=fail in.pdf --in-place --backup",
          "run -p 2 in.pdf ./in.pdf --in-place"}) {
        EXPECT_EQ(terminal::run(line).status, 1);
        EXPECT_EQ(terminal::contents("."), before);
    }
}

} // namespace
