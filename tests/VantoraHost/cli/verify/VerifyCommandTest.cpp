#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Verify : public InOwnFolder {
protected:
    Verify()
    {
        for (const char* folder : {"in", "out", "same"}) {
            fs::create_directory(folder);
        }
        scratch.write("in/a.pdf", support::documentOfPages(3));
        scratch.write("in/b.pdf", support::documentOfPages(5));
    }

    static void run(const std::string& line)
    {
        const auto answer = terminal::run("run --quiet " + line);
        ASSERT_EQ(answer.status, 0) << answer.err;
    }
};

TEST_F(Verify, ShowsATableOfADocumentWhosePagesAreGone)
{
    run("-p 2 in/a.pdf -o out.pdf");
    const auto answer = terminal::run("verify in/a.pdf out.pdf --pages 2");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_THAT(answer.out,
                AllOf(HasSubstr("in/a.pdf -> out.pdf\n"), HasSubstr("3, 1 removed, 2 left"),
                      HasSubstr("  verified\n"), Not(HasSubstr("finding"))));
    EXPECT_THAT(answer.err, IsEmpty());
}

TEST_F(Verify, NamesKindPageAndObjectOfEachFinding)
{
    run("-p 2 in/a.pdf -o out.pdf");
    for (const char* how : {"", " -j 0"}) {
        const auto answer =
            terminal::run(std::string("verify in/a.pdf out.pdf --json --pages 1") + how);
        EXPECT_EQ(answer.status, 1);
        const auto objects = terminal::objects(answer.out);
        ASSERT_EQ(objects.size(), 1U) << answer.err;
        EXPECT_EQ(objects[0]["status"], "done");
        EXPECT_FALSE(objects[0]["verified"].toBool(true));
        const QJsonObject finding = objects[0]["findings"].toArray().at(0).toObject();
        EXPECT_EQ(finding["kind"], "content-stream");
        EXPECT_EQ(finding["page"], 1);
        EXPECT_THAT(finding["object"].toString().toStdString(),
                    testing::MatchesRegex("[0-9]+ 0 R"));
    }
    EXPECT_THAT(terminal::run("verify in/a.pdf out.pdf -p 1").out,
                AllOf(HasSubstr("content-stream"), HasSubstr("page 1"), HasSubstr("not verified")));
}

TEST_F(Verify, TakesFoldersListsOfRangesAndReports)
{
    scratch.write("ranges.tsv", "in/a.pdf\t1\nin/b.pdf\t2,4-9\n");
    run("--ranges ranges.tsv -d out --report r.jsonl");
    run("-p 1 -r in -d same");
    run("-p 3 in/b.pdf --in-place --backup --report place.jsonl");
    const auto places = terminal::run("verify --report place.jsonl --json");
    EXPECT_EQ(places.status, 0) << places.err;
    EXPECT_THAT(places.out, HasSubstr("b.pdf.bak\""));
    fs::rename("in/b.pdf.bak", "in/b.pdf");
    for (const char* line :
         {"verify in out --ranges ranges.tsv", "verify --report r.jsonl", "verify in same -p 1"}) {
        const auto answer = terminal::run(line);
        EXPECT_EQ(answer.status, 0) << line << answer.err << answer.out;
        EXPECT_THAT(answer.err, HasSubstr("2 verified")) << line;
    }
}

TEST_F(Verify, SaysWhyADocumentCannotBeVerified)
{
    run("-p 1 in/a.pdf in/b.pdf -d out --report r.jsonl");
    scratch.write("out/a.pdf", "no document any more");
    scratch.write("locked.pdf",
                  support::rewritten(support::documentOfPages(3), "--encrypt u o 256 --"));
    scratch.write("words", "u\n");
    const struct {
        const char* line;
        int status;
        const char* says;
    } rows[] = {
        {"verify in/a.pdf out/a.pdf -p 1", 1, "out/a.pdf: cannot be read"},
        {"verify in/a.pdf out/none.pdf -p 1", 1, "out/none.pdf: there is no such file"},
        {"verify in/a.pdf in -p 1", 1, "in: is not a file"},
        {"verify locked.pdf in/a.pdf -p 1", 1, "locked.pdf: is encrypted and needs a password"},
        {"verify locked.pdf in/a.pdf -p 9 --password-file words", 1, ""},
        {"verify --report r.jsonl", 1, "has changed since the run"},
        {"verify --report none.jsonl", 1, "none.jsonl"},
        {"verify in/a.pdf -p 1", 2, "name the document before and the document after"},
        {"verify in/a.pdf out/a.pdf", 2, "say which pages went"},
        {"verify in/a.pdf out/a.pdf -p 1 --report r.jsonl", 2, "say which pages went"},
        {"verify in/a.pdf out/a.pdf --report r.jsonl", 2, "leave out BEFORE and AFTER"},
        {"verify in/a.pdf out/a.pdf -p 4-2", 2, "goes down at"},
        {"verify in/a.pdf out/a.pdf -p 1 -j x", 2, "-j takes"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const auto answer = terminal::run(row.line);
        EXPECT_EQ(answer.status, row.status) << answer.out;
        EXPECT_THAT(answer.err, HasSubstr(row.says));
    }
    EXPECT_THAT(terminal::run("verify locked.pdf in/a.pdf -p 9 --password-file words").out,
                HasSubstr("no longer encrypted"));
}

} // namespace
