#include "VantoraHost/core/Backup.h"

#include "tests/support/Inspect.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using vantora::Backup;
using vantora::Reason;

class BackupOfAFile : public testing::Test {
protected:
    // What the library does when it saves: a finished file takes the name.
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
};

TEST_F(BackupOfAFile, KeepsTheOriginalWhenTheFileIsReplaced)
{
    auto backup = Backup::of(file, name, false);
    ASSERT_TRUE(backup);
    replaceFile();
    ASSERT_TRUE(backup->keep());
    EXPECT_EQ(support::readFile(name), "original");
    EXPECT_EQ(support::readFile(file), "new");
    EXPECT_EQ(files(), 2U);
}

TEST_F(BackupOfAFile, GoesAwayWhenTheFileWasNotReplaced)
{
    {
        const auto backup = Backup::of(file, name, false);
        ASSERT_TRUE(backup);
        EXPECT_EQ(support::readFile(name), "original");
    }
    EXPECT_EQ(files(), 1U);
    EXPECT_EQ(support::readFile(file), "original");
}

TEST_F(BackupOfAFile, NeverReplacesAnOlderOneUnasked)
{
    scratch.write("a.pdf.bak", "older");
    const auto backup = Backup::of(file, name, false);
    ASSERT_FALSE(backup);
    EXPECT_EQ(backup.error().reason, Reason::BackupExists);
    EXPECT_EQ(support::readFile(name), "older");
}

TEST_F(BackupOfAFile, ReplacesAnOlderOneOnlyOnceTheFileIsReplaced)
{
    scratch.write("a.pdf.bak", "older");
    {
        const auto given_up = Backup::of(file, name, true);
        ASSERT_TRUE(given_up);
    }
    EXPECT_EQ(support::readFile(name), "older");

    auto backup = Backup::of(file, name, true);
    ASSERT_TRUE(backup);
    replaceFile();
    ASSERT_TRUE(backup->keep());
    EXPECT_EQ(support::readFile(name), "original");
    EXPECT_EQ(files(), 2U);
}

TEST_F(BackupOfAFile, LeavesNoThirdNameWhenTheOlderOneIsTheOriginalItself)
{
    fs::create_hard_link(file, name);
    auto backup = Backup::of(file, name, true);
    ASSERT_TRUE(backup);
    replaceFile();
    ASSERT_TRUE(backup->keep());
    EXPECT_EQ(support::readFile(name), "original");
    EXPECT_EQ(files(), 2U);
}

TEST_F(BackupOfAFile, NamesTheSystemsReasonWhenItCannotBeMade)
{
    const auto backup = Backup::of(file, scratch.path("nowhere/a.bak"), false);
    ASSERT_FALSE(backup);
    EXPECT_EQ(backup.error().reason, Reason::OutputNotWritable);
    EXPECT_NE(backup.error().sentence.find("No such file or directory"), std::string::npos);
}

} // namespace
