#include "tests/VantoraHost/cli/Terminal.h"

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

TEST_F(InPlace, KeepsTheFirstBackupWhenTheRunIsGivenAgain)
{
    EXPECT_EQ(terminal::run("run -p 2 in.pdf --in-place --backup --overwrite").status, 0);
    const auto before = terminal::contents(".");
    const auto again = terminal::run("run -p 2 in.pdf --in-place --backup --overwrite");
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, testing::HasSubstr("exists already; move it away, since no backup is"));
    EXPECT_EQ(terminal::contents("."), before);
    EXPECT_EQ(readFile("in.pdf.bak"), original);
}

// What happens to the input while it is processed: once it is open, or before.
struct Incident {
    const char* name;
    int atCall; ///< of the question whether to go on: 1 before it is opened, 2 before it is saved
    void (*happens)();
    const char* error;           ///< what is said; empty when all is well
    std::vector<int> pages;      ///< of in.pdf afterwards
    std::vector<int> otherPages; ///< of other.pdf
};

class InPlaceMeanwhile : public InPlace, public testing::WithParamInterface<Incident> {};

TEST_P(InPlaceMeanwhile, NoDocumentIsLost)
{
    const Incident& row = GetParam();
    scratch.write("other.pdf", support::documentOfPages(5));
    scratch.write("newer.pdf", support::documentOfPages(7));
    fs::create_symlink("in.pdf", "link.pdf");
    int calls = 0;
    terminal::Setting setting;
    setting.interrupted = [&] {
        if (++calls == row.atCall) {
            row.happens();
        }
        return false;
    };
    const auto answer = terminal::run("run -p 2 link.pdf --in-place --backup -j 0", setting);
    EXPECT_EQ(answer.status, *row.error == 0 ? 0 : 1) << answer.err;
    EXPECT_THAT(answer.err, testing::HasSubstr(row.error));
    EXPECT_EQ(pageTexts(readFile("in.pdf")), pagesNamed(row.pages));
    EXPECT_EQ(pageTexts(readFile("other.pdf")), pagesNamed(row.otherPages));
    EXPECT_EQ(fs::exists("in.pdf.bak"), *row.error == 0);
}

constexpr char changed[] = "link.pdf: was changed while it was being processed; nothing was "
                           "replaced; run it again";

const std::vector<Incident> incidents = {
    {"a_newer_version_is_saved_by_renaming",
     2,
     [] { fs::rename("newer.pdf", "in.pdf"); },
     changed,
     {1, 2, 3, 4, 5, 6, 7},
     {1, 2, 3, 4, 5}},
    {"a_newer_version_is_saved_before_it_is_opened",
     1,
     [] { fs::rename("newer.pdf", "in.pdf"); },
     "",
     {1, 3, 4, 5, 6, 7},
     {1, 2, 3, 4, 5}},
    {"the_link_is_turned_to_another_document",
     1,
     [] {
         fs::remove("link.pdf");
         fs::create_symlink("other.pdf", "link.pdf");
     },
     "",
     {1, 3},
     {1, 2, 3, 4, 5}},
    {"the_document_becomes_a_link_to_another_one",
     1,
     [] {
         fs::remove("in.pdf");
         fs::create_symlink("other.pdf", "in.pdf");
     },
     changed,
     {1, 2, 3, 4, 5},
     {1, 2, 3, 4, 5}},
    {"the_document_becomes_a_link_once_it_is_open",
     2,
     [] {
         fs::remove("in.pdf");
         fs::create_symlink("other.pdf", "in.pdf");
     },
     changed,
     {1, 2, 3, 4, 5},
     {1, 2, 3, 4, 5}},
};

INSTANTIATE_TEST_SUITE_P(Incidents, InPlaceMeanwhile, testing::ValuesIn(incidents),
                         [](const auto& info) { return info.param.name; });

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
