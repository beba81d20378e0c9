#include "VantoraHost/core/outputs/Backup.h"

#include "tests/support/Inspect.h"
#include "tests/support/RefusedCall.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <filesystem>

namespace {

namespace fs = std::filesystem;
using karvel::io::FileVersion;
using karvel::io::Folder;
using vantora::Backup;
using vantora::Reason;

class BackupOfAFile : public testing::Test {
protected:
    vantora::Result<Backup> made() const
    {
        const auto folder = Folder::open(scratch.path("")).value();
        return Backup::of(folder, file, name, version);
    }

    void replaceFile()
    {
        scratch.write("new", "new");
        fs::rename(scratch.path("new"), file);
    }

    std::size_t files() const
    {
        return static_cast<std::size_t>(std::distance(
            fs::directory_iterator(fs::path(file).parent_path()), fs::directory_iterator()));
    }

    support::ScratchFolder scratch;
    const std::string file = scratch.write("a.pdf", "original");
    const std::string name = scratch.path("a.pdf.bak");
    const FileVersion version = Folder::open(scratch.path("")).value()->versionAt("a.pdf").value();
};

TEST_F(BackupOfAFile, KeepsTheOriginalFromBeforeItIsReplaced)
{
    auto backup = made();
    ASSERT_TRUE(backup);
    EXPECT_EQ(support::readFile(name), "original");
    replaceFile();
    backup->keep();
    EXPECT_EQ(support::readFile(name), "original");
    EXPECT_EQ(support::readFile(file), "new");
    EXPECT_EQ(files(), 2U);
}

TEST_F(BackupOfAFile, GoesAwayWhenTheFileWasNotReplaced)
{
    ASSERT_TRUE(made());
    EXPECT_EQ(files(), 1U);
    EXPECT_EQ(support::readFile(file), "original");
}

TEST_F(BackupOfAFile, NeverReplacesAnotherOne)
{
    for (const char* older : {"older", "of the same length"}) {
        scratch.write("a.pdf.bak", std::string(older).substr(0, 8));
        const auto backup = made();
        ASSERT_FALSE(backup);
        EXPECT_EQ(backup.error().reason, Reason::BackupExists);
        EXPECT_EQ(support::readFile(name), std::string(older).substr(0, 8));
    }
}

TEST_F(BackupOfAFile, IsDoneWhereAKilledRunHadMadeIt)
{
    for (const bool linked : {true, false}) {
        fs::remove(name);
        if (linked) {
            fs::create_hard_link(file, name);
        } else {
            scratch.write("a.pdf.bak", "original");
        }
        ASSERT_TRUE(made()) << linked;
        EXPECT_EQ(support::readFile(name), "original") << "not this run's to remove";
    }
}

TEST_F(BackupOfAFile, IsNoneOfANewerVersion)
{
    replaceFile();
    const auto backup = made();
    ASSERT_FALSE(backup);
    EXPECT_EQ(backup.error().reason, Reason::ChangedMeanwhile);
    EXPECT_EQ(files(), 1U);
}

TEST_F(BackupOfAFile, IsACopyWhereThereAreNoHardLinks)
{
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    support::inAnotherProcess([&] {
        support::refuseCall(SYS_linkat, EPERM);
        auto backup = made();
        ASSERT_TRUE(backup);
        replaceFile();
        backup->keep();
    });
    EXPECT_EQ(support::readFile(name), "original");
    EXPECT_EQ(support::readFile(file), "new");
    EXPECT_EQ(files(), 2U);
    struct stat copy = {};
    ASSERT_EQ(::stat(name.c_str(), &copy), 0);
    EXPECT_EQ(copy.st_mode & 0777U, 0640U);
    EXPECT_EQ(karvel::io::versionOf(copy).modified, version.modified);
}

TEST_F(BackupOfAFile, NamesTheSystemsReasonWhenItCannotBeMade)
{
    const auto folder = Folder::open(scratch.path("")).value();
    const std::string tooLong = scratch.path(std::string(300, 'n'));
    const auto backup = Backup::of(folder, file, tooLong, version);
    ASSERT_FALSE(backup);
    EXPECT_EQ(backup.error().reason, Reason::OutputNotWritable);
    EXPECT_NE(backup.error().sentence.find("File name too long"), std::string::npos);
}

} // namespace
