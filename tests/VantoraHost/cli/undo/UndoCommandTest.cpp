#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace {

namespace fs = std::filesystem;
using support::readFile;
using testing::ElementsAre;
using testing::HasSubstr;

class Undo : public InOwnFolder {
protected:
    Undo() { fs::create_directory("out"); }

    static void removePage(const std::string& how)
    {
        const auto answer = terminal::run("run -p 2 --report r.jsonl " + how);
        ASSERT_EQ(answer.status, 0) << answer.err;
    }

    static terminal::Answer undo(const std::string& more = "")
    {
        return terminal::run("undo r.jsonl " + more);
    }

    /// Everything but the report.
    static std::map<std::string, std::string> files()
    {
        auto all = terminal::contents(".");
        all.erase("./r.jsonl");
        return all;
    }

    const std::string original = support::documentOfPages(3);
    const std::string a = scratch.write("a.pdf", original);
    const std::string b = scratch.write("b.pdf", support::documentOfPages(4));
};

TEST_F(Undo, GivesBackWhatWasReplacedAsIfNothingHadBeenDone)
{
    fs::create_symlink("../b.pdf", "out/link.pdf");
    const auto before = files();
    const auto time = fs::last_write_time("a.pdf");
    removePage("--in-place --backup a.pdf out/link.pdf");
    const auto after = files();

    const auto rehearsal = undo("--dry-run");
    EXPECT_EQ(rehearsal.status, 0);
    EXPECT_EQ(rehearsal.out, "out/link.pdf: would be given back\na.pdf: would be given back\n");
    EXPECT_EQ(files(), after);

    const auto answer = undo();
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(answer.out, "out/link.pdf: given back\na.pdf: given back\n");
    EXPECT_EQ(answer.err, "vantora: 2 given back\n");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(fs::last_write_time("a.pdf"), time);
    EXPECT_EQ(undo().err, "vantora: 2 undone already\n");
    EXPECT_EQ(files(), before);
}

TEST_F(Undo, LeavesAloneWhatIsNotAsTheRunLeftIt)
{
    const auto later = [](const char* file) {
        fs::last_write_time(file, fs::last_write_time(file) + std::chrono::seconds(1));
    };
    const struct {
        const char* name;
        std::function<void()> meanwhile;
        const char* why;
    } rows[] = {
        {"the document was written to", [&] { later("a.pdf"); }, "a.pdf: was changed after"},
        {"another file has its name",
         [&] {
             fs::remove("a.pdf");
             fs::copy_file("b.pdf", "a.pdf");
         },
         "a.pdf: was changed after the run; look at both"},
        {"a link has its name",
         [&] {
             fs::rename("a.pdf", "moved.pdf");
             fs::create_symlink("b.pdf", "a.pdf");
         },
         "a.pdf: was changed after the run"},
        {"it is gone", [&] { fs::remove("a.pdf"); }, "a.pdf: is not there any more"},
        {"the backup is gone", [&] { fs::remove("a.pdf.bak"); }, "a.pdf: has no backup"},
        {"the backup was written to", [&] { later("a.pdf.bak"); }, "is not the original any more"},
        {"a link has the backup's name",
         [&] {
             fs::rename("a.pdf.bak", "moved.pdf");
             fs::create_symlink("moved.pdf", "a.pdf.bak");
         },
         "a.pdf: has no backup"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const char* file : {"a.pdf", "a.pdf.bak", "moved.pdf", "r.jsonl"}) {
            fs::remove(file);
        }
        scratch.write("a.pdf", original);
        removePage("--in-place --backup a.pdf");
        row.meanwhile();
        const auto before = files();
        const auto answer = undo();
        EXPECT_EQ(answer.status, 1);
        EXPECT_THAT(answer.err, HasSubstr(row.why));
        EXPECT_THAT(answer.err, HasSubstr("vantora: 1 left alone\n"));
        EXPECT_EQ(files(), before);
    }
}

TEST_F(Undo, GoesOnWhereAnUndoWasKilledBetweenItsTwoSteps)
{
    const auto before = files();
    removePage("--in-place --backup a.pdf");
    fs::rename("a.pdf", "output");
    fs::rename("a.pdf.bak", "a.pdf");
    fs::rename("output", "a.pdf.bak");
    EXPECT_EQ(undo().err, "vantora: 1 undone already\n");
    EXPECT_EQ(files(), before);
}

TEST_F(Undo, RemovesOutputsOnlyWhereAskedAndOnlyTheRunsOwn)
{
    scratch.write("out/b.pdf", "what was there");
    removePage("a.pdf b.pdf -d out --overwrite");
    const auto after = files();
    const auto without = undo();
    EXPECT_EQ(without.status, 1);
    EXPECT_THAT(without.err, HasSubstr("out/a.pdf: is a file beside its original; --remove"));
    EXPECT_EQ(files(), after);

    const auto with = undo("--remove-outputs --json");
    EXPECT_EQ(with.status, 1);
    const auto objects = terminal::objects(with.out);
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[0]["undo"], "left-alone");
    EXPECT_EQ(objects[0]["errors"].toArray().first().toObject()["reason"], "backup-missing");
    EXPECT_EQ(objects[1]["undo"], "removed");
    EXPECT_EQ(objects[1]["output"], "out/a.pdf");
    auto expected = after;
    expected.erase("./out/a.pdf");
    EXPECT_EQ(files(), expected);
}

TEST_F(Undo, TakesNoReportThatOthersMayHaveWritten)
{
    removePage("--in-place --backup a.pdf");
    const auto after = files();
    fs::permissions("r.jsonl", fs::perms::others_write, fs::perm_options::add);
    const auto answer = undo();
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("r.jsonl: others can write to this report; name one of"));
    EXPECT_EQ(files(), after);
    scratch.write("r.jsonl", "something else\n");
    fs::permissions("r.jsonl", fs::perms::owner_read);
    EXPECT_THAT(undo().err, HasSubstr("r.jsonl: line 1 is no report of a document"));
}

TEST_F(Undo, EndsBetweenTwoDocumentsWhenAskedTo)
{
    removePage("--in-place --backup a.pdf b.pdf");
    terminal::Setting setting;
    int asked = 0;
    setting.interrupted = [&] { return ++asked > 1; };
    EXPECT_EQ(terminal::run("undo r.jsonl", setting).status, 130);
    EXPECT_TRUE(fs::exists("a.pdf.bak"));
    EXPECT_FALSE(fs::exists("b.pdf.bak"));
    EXPECT_EQ(undo().status, 0);
    EXPECT_EQ(readFile("a.pdf"), original);
}

} // namespace
