#include "KarvelPDFLibrary/io/OutputFile.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "tests/support/Inspect.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace karvel;
using namespace karvel::io;
namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
protected:
    std::size_t filesInFolder() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(scratch.path("")), fs::directory_iterator()));
    }
    support::ScratchFolder scratch;
};

TEST_F(OutputFileTest, AppearsWholeWithCommit)
{
    std::string expected;
    {
        auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse).value();
        for (const std::size_t length : {3U, 700000U, 700000U, 3000000U, 1U}) {
            const std::string part(length, static_cast<char>('a' + expected.size() % 26));
            file.write(part.data(), part.size());
            expected += part;
        }
        EXPECT_FALSE(fs::exists(scratch.path("out.pdf")));
        ASSERT_TRUE(file.commit().has_value());
    }
    EXPECT_EQ(support::readFile(scratch.path("out.pdf")), expected);
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(OutputFileTest, LeavesNothingWithoutCommit)
{
    {
        auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse).value();
        file.write("abc", 3);
        int process = 0;
        EXPECT_TRUE(isTemporaryName(
            fs::directory_iterator(scratch.path(""))->path().filename().string(), process));
        EXPECT_EQ(process, getpid());
    }
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(OutputFileTest, RefusesTargetsThatItMustNotTouch)
{
    scratch.write("there.pdf", "old");
    ASSERT_TRUE(fs::create_directory(scratch.path("folder")));
    const struct {
        std::string path;
        Existing existing;
        ErrorCode code;
    } cases[] = {
        {scratch.path("there.pdf"), Existing::Refuse, ErrorCode::FileExists},
        {scratch.path("folder"), Existing::Replace, ErrorCode::FileNotWritable},
        {scratch.path("no/such/folder.pdf"), Existing::Replace, ErrorCode::FileNotWritable},
        {"/dev/null", Existing::Replace, ErrorCode::FileNotWritable},
        {scratch.path(std::string(300, 'n')), Existing::Replace, ErrorCode::FileNotWritable},
    };
    for (const auto& [path, existing, code] : cases) {
        auto file = OutputFile::create(path, existing);
        const Error error = file ? file->commit().error() : file.error();
        EXPECT_EQ(error.code, code) << path;
        EXPECT_NE(error.text.find(path), std::string::npos);
    }
    EXPECT_EQ(support::readFile(scratch.path("there.pdf")), "old");
}

TEST_F(OutputFileTest, RefusesATargetThatAppearedMeanwhile)
{
    auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse).value();
    scratch.write("out.pdf", "somebody else's");
    const Status status = file.commit();
    ASSERT_FALSE(status.has_value());
    EXPECT_EQ(status.error().code, ErrorCode::FileExists);
    EXPECT_EQ(support::readFile(scratch.path("out.pdf")), "somebody else's");
}

TEST_F(OutputFileTest, HandsOnModeAndAccessControlList)
{
    const std::string path = scratch.write("out.pdf", "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const bool lists = support::runCommand("setfacl -m u:1:r " + path).status == 0;
    const std::string before = support::runCommand("getfacl --omit-header " + path).output;
    if (geteuid() == 0) {
        ASSERT_EQ(chown(path.c_str(), 12, 34), 0);
    }
    struct stat old = {};
    ASSERT_EQ(stat(path.c_str(), &old), 0);

    auto file = OutputFile::create(path, Existing::Replace).value();
    file.write("new", 3);
    ASSERT_TRUE(file.commit().has_value());

    struct stat now = {};
    ASSERT_EQ(stat(path.c_str(), &now), 0);
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(now.st_mode, old.st_mode);
    EXPECT_EQ(now.st_uid, old.st_uid);
    EXPECT_EQ(now.st_gid, old.st_gid);
    if (lists) {
        EXPECT_EQ(support::runCommand("getfacl --omit-header " + path).output, before);
    }
}

TEST_F(OutputFileTest, GoesOnWithAFileThatSomebodyPutInItsPlace)
{
    auto file = OutputFile::create(scratch.path("out.pdf"), Existing::Refuse).value();
    scratch.write("other", "written by others");
    fs::rename(scratch.path("other"), file.temporary());
    ASSERT_TRUE(file.takeReplacement().has_value());
    EXPECT_EQ(removeAbandoned(scratch.path("")), 0U);
    ASSERT_TRUE(file.commit().has_value());
    EXPECT_EQ(support::readFile(scratch.path("out.pdf")), "written by others");
    EXPECT_EQ(filesInFolder(), 1U);
}

} // namespace
