#include "KarvelPDFLibrary/io/OutputFile.h"

#include "KarvelPDFLibrary/io/Permissions.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "tests/support/Inspect.h"
#include "tests/support/RefusedCall.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using namespace karvel;
using namespace karvel::io;
namespace fs = std::filesystem;
using testing::HasSubstr;

// Gives a file the usual list for itself and one more person; false where there are no lists.
bool shareWithOne(const std::string& path, const char* right, acl_type_t type = ACL_TYPE_ACCESS)
{
    const std::string text = "u::rw,g::---,o::---,u:1:" + std::string(right) + ",m::" + right;
    const acl_t list = acl_from_text(text.c_str());
    const bool given = list && acl_set_file(path.c_str(), type, list) == 0;
    acl_free(list);
    return given;
}

std::string listOf(const std::string& path)
{
    const acl_t list = acl_get_file(path.c_str(), ACL_TYPE_ACCESS);
    char* const text = list ? acl_to_text(list, nullptr) : nullptr;
    std::string result = text ? text : "";
    acl_free(text);
    acl_free(list);
    return result;
}

class OutputFileTest : public testing::Test {
protected:
    static mode_t modeAt(const std::string& path)
    {
        struct stat status = {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777;
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(scratch.path(""))) {
            found.push_back(entry.path().filename());
        }
        return found;
    }
    std::size_t filesInFolder() const { return names().size(); }

    std::string temporaryIn(const std::string& folder) const
    {
        for (const auto& entry : fs::directory_iterator(folder)) {
            int process = 0;
            if (isTemporaryName(entry.path().filename().string(), process)) {
                return entry.path();
            }
        }
        return {};
    }

    Outcome commitNew(OutputFile& file) const
    {
        file.write("new", 3);
        return file.commit();
    }

    support::ScratchFolder scratch;
    const std::string path = scratch.path("out.pdf");
};

TEST_F(OutputFileTest, AppearsWholeWithCommit)
{
    std::string expected;
    {
        auto file = OutputFile::create(path, Existing::Refuse).value();
        for (const std::size_t length : {3U, 700000U, 700000U, 3000000U, 1U}) {
            const std::string part(length, static_cast<char>('a' + expected.size() % 26));
            file.write(part.data(), part.size());
            expected += part;
        }
        EXPECT_FALSE(fs::exists(path));
        ASSERT_TRUE(file.commit().has_value());
    }
    EXPECT_EQ(support::readFile(path), expected);
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(OutputFileTest, LeavesNothingWithoutCommit)
{
    {
        auto file = OutputFile::create(path, Existing::Refuse).value();
        file.write("abc", 3);
        int process = 0;
        EXPECT_TRUE(isTemporaryName(names().front(), process));
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
    for (const auto existing : {Existing::Refuse, Existing::Replace}) {
        auto file = OutputFile::create(path, existing).value();
        scratch.write("out.pdf", "somebody else's");
        const Outcome status = commitNew(file);
        ASSERT_FALSE(status.has_value());
        EXPECT_EQ(status.error().code, ErrorCode::FileExists);
        EXPECT_EQ(support::readFile(path), "somebody else's");
        fs::remove(path);
    }
}

TEST_F(OutputFileTest, ReplacesALinkItself)
{
    const std::string other = scratch.write("other.pdf", "somebody else's");
    fs::create_symlink(other, path);
    auto file = OutputFile::create(path, Existing::Replace).value();
    ASSERT_TRUE(commitNew(file).has_value());
    EXPECT_FALSE(fs::is_symlink(path));
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(support::readFile(other), "somebody else's");
}

// What others do to the target while the output is written.
struct Meanwhile {
    const char* name;
    std::function<void(const support::ScratchFolder&)> happens;
    const char* then; ///< what the name leads to afterwards
};

class OvertakenTarget : public OutputFileTest, public testing::WithParamInterface<Meanwhile> {};

TEST_P(OvertakenTarget, IsNotReplaced)
{
    for (const bool exchanges : {true, false}) {
        scratch.write("out.pdf", "old");
        scratch.write("other.pdf", "of others");
        support::inAnotherProcess([&] {
            if (!exchanges) { // as on file systems that can't
                support::refuseCall(SYS_renameat2, EINVAL);
            }
            auto file = OutputFile::create(path, Existing::Replace).value();
            file.write("new", 3);
            ASSERT_TRUE(file.prepare().has_value());
            GetParam().happens(scratch);
            const Outcome status = file.takeName();
            ASSERT_FALSE(status.has_value());
            EXPECT_TRUE(file.isOvertaken());
            EXPECT_THAT(status.error().text, HasSubstr(changedMeanwhile));
        });
        EXPECT_EQ(fs::is_directory(path) ? "a folder" : support::readFile(path), GetParam().then);
        EXPECT_EQ(temporaryIn(scratch.path("")), "");
        fs::remove_all(path);
    }
}

const std::vector<Meanwhile> meanwhile = {
    {"a_newer_version_came_by_renaming",
     [](const auto& scratch) {
         scratch.write("newer", "newer");
         fs::rename(scratch.path("newer"), scratch.path("out.pdf"));
     },
     "newer"},
    {"it_was_written_to",
     [](const auto& scratch) { std::ofstream(scratch.path("out.pdf"), std::ios::app) << "er"; },
     "older"},
    {"it_was_touched",
     [](const auto& scratch) {
         fs::last_write_time(scratch.path("out.pdf"), fs::file_time_type::clock::now());
     },
     "old"},
    {"it_became_a_link",
     [](const auto& scratch) {
         fs::remove(scratch.path("out.pdf"));
         fs::create_symlink("other.pdf", scratch.path("out.pdf"));
     },
     "of others"},
    {"it_became_a_folder",
     [](const auto& scratch) {
         fs::remove(scratch.path("out.pdf"));
         fs::create_directory(scratch.path("out.pdf"));
     },
     "a folder"},
    {"it_went_away", [](const auto& scratch) { fs::remove(scratch.path("out.pdf")); }, ""},
};

INSTANTIATE_TEST_SUITE_P(Targets, OvertakenTarget, testing::ValuesIn(meanwhile),
                         [](const auto& info) { return info.param.name; });

TEST_F(OutputFileTest, ReplacesWhereTheSystemCannotExchange)
{
    scratch.write("out.pdf", "old");
    support::inAnotherProcess([&] {
        support::refuseCall(SYS_renameat2, ENOSYS);
        auto file = OutputFile::create(path, Existing::Replace).value();
        EXPECT_TRUE(commitNew(file).has_value());
        auto other = OutputFile::create(scratch.path("other.pdf"), Existing::Refuse).value();
        EXPECT_TRUE(commitNew(other).has_value());
    });
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(support::readFile(scratch.path("other.pdf")), "new");
    EXPECT_EQ(filesInFolder(), 2U);
}

// In a folder of somebody who waits for the superuser to write there.
TEST_F(OutputFileTest, NeverTakesAnotherFileForItsTemporaryOne)
{
    const std::string secret = scratch.write("secret", "a secret");
    ASSERT_EQ(chmod(secret.c_str(), 0600), 0);
    for (const bool replaces : {true, false}) {
        fs::create_directory(scratch.path("folder"));
        const std::string target = scratch.path("folder/out.pdf");
        if (replaces) {
            scratch.write("folder/out.pdf", "old");
            shareWithOne(target, "rw");
        }
        {
            auto file = OutputFile::create(target, Existing::Replace).value();
            file.write("new", 3);
            const std::string temporary = temporaryIn(scratch.path("folder"));
            fs::remove(temporary);
            fs::create_symlink(secret, temporary);
            const Outcome status = file.commit();
            ASSERT_FALSE(status.has_value());
            EXPECT_THAT(status.error().text, HasSubstr("its temporary file was moved or replaced"));
        }
        EXPECT_EQ(modeAt(secret), 0600U) << "the list of rights went to the wrong file";
        EXPECT_EQ(support::readFile(target), replaces ? "old" : "");
        EXPECT_TRUE(fs::is_symlink(temporaryIn(scratch.path("folder")))) << "theirs, not ours";
        fs::remove_all(scratch.path("folder"));
    }
}

TEST_F(OutputFileTest, StaysInTheFolderThatItBeganIn)
{
    fs::create_directory(scratch.path("folder"));
    fs::create_directory(scratch.path("elsewhere"));
    auto file = OutputFile::create(scratch.path("folder/out.pdf"), Existing::Refuse).value();
    fs::rename(scratch.path("folder"), scratch.path("moved"));
    fs::create_directory_symlink("elsewhere", scratch.path("folder"));
    ASSERT_TRUE(commitNew(file).has_value());
    EXPECT_TRUE(fs::is_empty(scratch.path("elsewhere")));
    EXPECT_EQ(support::readFile(scratch.path("moved/out.pdf")), "new");
}

// Modes in which files come, and the mode of an output made of them.
TEST_F(OutputFileTest, AllowsNoMoreThanItsInputAndTheUmask)
{
    const struct {
        const char* name;
        mode_t mask;
        mode_t most; ///< what the input allows
        mode_t old;  ///< what the file allows that is replaced; 0 for none
        mode_t expected;
    } rows[] = {
        {"a private input", 0022, 0600, 0, 0600},
        {"an open input under a strict umask", 0077, 0644, 0, 0600},
        {"an input for the group", 0022, 0640, 0, 0640},
        {"an input that can't be written", 0022, 0444, 0, 0444},
        {"an input for everybody", 0002, 0666, 0, 0664},
        {"a private input over an open output", 0022, 0600, 0644, 0600},
        {"an open input over a private output", 0022, 0644, 0600, 0600},
        {"a file over itself, whatever the umask", 0077, 0666, 0666, 0666},
    };
    for (const auto& row : rows) {
        const mode_t before = umask(0);
        if (row.old != 0) {
            scratch.write("out.pdf", "old");
            ASSERT_EQ(chmod(path.c_str(), row.old), 0);
        }
        umask(row.mask);
        auto file = OutputFile::create(path, Existing::Replace).value();
        file.allowAtMost(row.most);
        EXPECT_EQ(modeAt(temporaryIn(scratch.path(""))), 0600U) << row.name;
        EXPECT_TRUE(commitNew(file).has_value()) << row.name;
        umask(before);
        EXPECT_EQ(modeAt(path), row.expected) << row.name;
        fs::remove(path);
    }
}

TEST_F(OutputFileTest, TakesTheMaskOfAListForNoRightOfTheGroup)
{
    const std::string input = scratch.write("in.pdf", "of one other person");
    ASSERT_EQ(chmod(input.c_str(), 0600), 0);
    if (!shareWithOne(input, "r")) {
        GTEST_SKIP() << "no access control lists here";
    }
    const auto folder = Folder::open(scratch.path("")).value();
    EXPECT_EQ(modeAt(input), 0640U);
    EXPECT_EQ(modeOf(folder->openFile("in.pdf", O_RDONLY)->get()), 0600U);
}

TEST_F(OutputFileTest, HandsOnModeAndAccessControlList)
{
    scratch.write("out.pdf", "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const bool lists = shareWithOne(path, "r");
    const std::string before = listOf(path);
    if (geteuid() == 0) {
        ASSERT_EQ(chown(path.c_str(), 12, 34), 0);
    }
    struct stat old = {};
    ASSERT_EQ(stat(path.c_str(), &old), 0);

    auto file = OutputFile::create(path, Existing::Replace).value();
    ASSERT_TRUE(commitNew(file).has_value());

    struct stat now = {};
    ASSERT_EQ(stat(path.c_str(), &now), 0);
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(now.st_mode, old.st_mode);
    EXPECT_EQ(now.st_uid, old.st_uid);
    EXPECT_EQ(now.st_gid, old.st_gid);
    EXPECT_FALSE(file.lostOwner());
    if (lists) {
        EXPECT_EQ(listOf(path), before);
    }
}

TEST_F(OutputFileTest, GetsNoListOfItsFolderThatTheReplacedFileHadNot)
{
    scratch.write("out.pdf", "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    if (!shareWithOne(scratch.path(""), "rw", ACL_TYPE_DEFAULT)) {
        GTEST_SKIP() << "no access control lists here";
    }
    const std::string before = listOf(path);
    auto file = OutputFile::create(path, Existing::Replace).value();
    ASSERT_TRUE(commitNew(file).has_value());
    EXPECT_EQ(listOf(path), before);
}

} // namespace
