#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "tests/support/Inspect.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace karvel::io;
namespace fs = std::filesystem;

TEST(TemporaryName, IsRecognised)
{
    int process = 0;
    EXPECT_TRUE(isTemporaryName(".karvel-save-4711-00ff00ff00ff00ff.tmp", process));
    EXPECT_EQ(process, 4711);
    EXPECT_TRUE(isTemporaryName(temporaryName(), process));
    EXPECT_EQ(process, getpid());
    for (const char* name :
         {"a.tmp", ".karvel-save-.tmp", ".karvel-save-x-1.tmp", ".karvel-save-12.tmp"}) {
        EXPECT_FALSE(isTemporaryName(name, process)) << name;
    }
}

TEST(TemporaryFile, IsLeftAloneWhileItsWriterLives)
{
    const support::ScratchFolder scratch;
    auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse).value();
    EXPECT_EQ(removeAbandoned(scratch.path("")), 0U);
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
    scratch.write(".karvel-save-notes.tmp", "somebody's file of a similar name");
    fs::create_directory(scratch.path(".karvel-save-1-0.tmp"));
    EXPECT_EQ(removeAbandoned(scratch.path("")), 1U);
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.path("")), fs::directory_iterator()), 3);
}

TEST(TemporaryFile, IsMadeAnewWhenItWasTakenForAnAbandonedOne)
{
    const support::ScratchFolder scratch;
    const std::string path = scratch.write(temporaryName(), "");
    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(removeAbandoned(scratch.path("")), 1U);
    EXPECT_FALSE(claimTemporary(descriptor));
    close(descriptor);
}

} // namespace
