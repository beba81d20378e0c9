#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "tests/support/AsNobody.h"
#include "tests/support/Inspect.h"

#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace karvel::io;
namespace fs = std::filesystem;

std::size_t removeAbandonedIn(const support::ScratchFolder& scratch)
{
    return removeAbandoned(*Folder::open(scratch.path("")).value());
}

TEST(TemporaryName, IsRecognisedByItsExactFormOnly)
{
    int process = 0;
    const std::string name = temporaryName();
    EXPECT_TRUE(isTemporaryName(name, process));
    EXPECT_EQ(process, getpid());
    const std::string others[] = {
        "a.tmp",
        ".karvel-save-.tmp",
        ".karvel-save-x-1.tmp",
        ".karvel-save-12.tmp",
        ".karvel-save-1-my-important.tmp",
        ".karvel-save-4711-00ff00ff00ff00ff.tmp",
        ".karvel-save-4711-0123456789abcdef.tmp",
        name + ".tmp",
        "." + name,
        support::replaced(name, ".karvel-save-", ".karvel-save-0"),
        support::replaced(name, ".tmp", ""),
    };
    for (const std::string& other : others) {
        EXPECT_FALSE(isTemporaryName(other, process)) << other;
    }
}

TEST(TemporaryFile, IsLeftAloneWhileItsWriterLives)
{
    const support::ScratchFolder scratch;
    auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse).value();
    EXPECT_EQ(removeAbandonedIn(scratch), 0U);
    file.write("abc", 3);
    ASSERT_TRUE(file.commit().has_value());
    EXPECT_EQ(support::readFile(scratch.path("out.pdf")), "abc");
}

TEST(TemporaryFile, IsRemovedWhenItsWriterWasKilled)
{
    const support::ScratchFolder scratch;
    const pid_t writer = fork();
    if (writer == 0) {
        auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse);
        _exit(file ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(writer, &status, 0), writer);
    ASSERT_EQ(status, 0);
    scratch.write("kept.pdf", "a finished output");
    scratch.write(".karvel-save-1-my-important.tmp", "somebody's file of a similar name");
    fs::create_directory(scratch.path(temporaryName()));
    fs::create_symlink("kept.pdf", scratch.path(temporaryName()));
    if (geteuid() == 0) { // somebody else's is not even ours to judge
        const std::string other = scratch.write(temporaryName(), "of another user");
        ASSERT_EQ(chown(other.c_str(), 12, 34), 0);
        ASSERT_EQ(chmod(scratch.path("").c_str(), 0777), 0);
        const support::AsNobody nobody;
        EXPECT_EQ(removeAbandonedIn(scratch), 0U);
    } else {
        scratch.write("as many files", "");
    }
    EXPECT_EQ(removeAbandonedIn(scratch), geteuid() == 0 ? 2U : 1U);
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.path("")), fs::directory_iterator()),
              geteuid() == 0 ? 4 : 5);
}

TEST(TemporaryFile, IsLeftAloneWhileItIsWhatAnotherReplaces)
{
    support::ScratchFolder scratch;
    const std::string path = scratch.write("out.pdf", "the oldest");
    std::atomic<bool> over{false};
    std::thread sweeper([&] {
        while (!over) {
            removeAbandonedIn(scratch);
        }
    });
    for (int i = 0; i < 300; ++i) {
        auto file = OutputFile::create(path, Existing::Replace);
        const Outcome replaced = file ? file->commit() : Outcome(tl::unexpected(file.error()));
        EXPECT_TRUE(replaced.has_value()) << i << ": " << replaced.error().text;
    }
    over = true;
    sweeper.join();
}

TEST(TemporaryFile, IsMadeAnewWhenItWasTakenForAnAbandonedOne)
{
    const support::ScratchFolder scratch;
    const std::string path = scratch.write(temporaryName(), "");
    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(removeAbandonedIn(scratch), 1U);
    EXPECT_FALSE(claimTemporary(descriptor));
    close(descriptor);
}

} // namespace
