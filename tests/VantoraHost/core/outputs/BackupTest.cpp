#include "VantoraHost/core/outputs/Backup.h"

#include "tests/support/Inspect.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using vantora::Backup;
using vantora::Reason;

class BackupOfAFile : public testing::Test {
protected:
    // What the library does when it saves: a finished file takes the name.
    void expectTheOriginalKept(bool replaceOlder)
    {
        auto backup = Backup::of(file, name, replaceOlder);
        ASSERT_TRUE(backup);
        scratch.write("new", "new");
        fs::rename(scratch.path("new"), file);
        ASSERT_TRUE(backup->keep());
        EXPECT_EQ(support::readFile(name), "original");
        EXPECT_EQ(support::readFile(file), "new");
        EXPECT_EQ(files(), 2U);
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
    expectTheOriginalKept(false);
}

TEST_F(BackupOfAFile, GoesAwayWhenTheFileWasNotReplaced)
{
    {
        const auto backup = Backup::of(file, name, false);
        ASSERT_TRUE(backup);
        EXPECT_EQ(files(), 2U);
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
    expectTheOriginalKept(true);
}

TEST_F(BackupOfAFile, LeavesNoThirdNameWhenTheOlderOneIsTheOriginalItself)
{
    fs::create_hard_link(file, name);
    expectTheOriginalKept(true);
}

TEST_F(BackupOfAFile, NamesTheSystemsReasonWhenItCannotBeMade)
{
    const auto backup = Backup::of(file, scratch.path("nowhere/a.bak"), false);
    ASSERT_FALSE(backup);
    EXPECT_EQ(backup.error().reason, Reason::OutputNotWritable);
    EXPECT_NE(backup.error().sentence.find("No such file or directory"), std::string::npos);
}

// What stands beside the file after a process was killed while it made a backup.
struct Leftover {
    const char* name;
    const char* heldAs;
    const char* held;  ///< what the original's second name holds; empty for a link to the file
    const char* older; ///< what the backup holds before; empty for none
    const char* then;  ///< what the backup holds afterwards; empty for none
    std::size_t files;
};

class AbandonedBackup : public BackupOfAFile, public testing::WithParamInterface<Leftover> {};

TEST_P(AbandonedBackup, IsSettledWithoutLosingAnOriginal)
{
    const Leftover& row = GetParam();
    const std::string held = name + row.heldAs;
    if (*row.held == 0) {
        fs::create_hard_link(file, held);
    } else {
        scratch.write("a.pdf.bak" + std::string(row.heldAs), row.held);
    }
    if (*row.older != 0) {
        scratch.write("a.pdf.bak", row.older);
    }
    vantora::settleAbandonedBackups(scratch.path(""));
    EXPECT_EQ(support::readFile(file), "original");
    EXPECT_EQ(support::readFile(name), row.then);
    EXPECT_EQ(files(), row.files);
}

const std::vector<Leftover> leftovers = {
    {"the_file_was_not_replaced_yet", ".vantora-99", "", "", "", 1},
    {"nor_was_an_older_backup", ".vantora-99", "", "older", "older", 2},
    {"nor_where_there_was_none", ".vantora-first-99", "", "", "", 1},
    {"it_is_a_copy_of_a_file_not_replaced_yet", ".vantora-99", "original", "", "", 1},
    {"the_file_was_replaced", ".vantora-99", "before", "older", "before", 2},
    {"the_file_was_replaced_for_the_first_time", ".vantora-first-99", "before", "", "before", 2},
    {"another_backup_came_meanwhile", ".vantora-first-99", "before", "other", "other", 3},
    {"it_is_a_file_of_somebody_else", ".vantora-mine", "before", "", "", 2},
};

INSTANTIATE_TEST_SUITE_P(Leftovers, AbandonedBackup, testing::ValuesIn(leftovers),
                         [](const auto& info) { return info.param.name; });

TEST_F(BackupOfAFile, IsLeftAloneWhileItIsBeingMade)
{
    for (const bool replace : {false, true}) {
        auto backup = Backup::of(file, name, replace);
        ASSERT_TRUE(backup);
        vantora::settleAbandonedBackups(scratch.path(""));
        EXPECT_EQ(files(), 2U);
    }
}

TEST_F(BackupOfAFile, CanBeMadeAfterAProcessOfTheSameNumberWasKilled)
{
    fs::create_hard_link(file, name + ".vantora-first-" + std::to_string(::getpid()));
    expectTheOriginalKept(false);
}

} // namespace
