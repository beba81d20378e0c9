#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace {

namespace fs = std::filesystem;
using support::documentOfPages;
using support::pagesNamed;
using support::pageTexts;
using support::problems;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Two pages; the second one shows a signed field.
std::string signedDocument()
{
    return support::Sketch{
        {"", "/Annots [@field]"},
        "/AcroForm << /SigFlags 3 /Fields [@group] >>",
        {{"group", "<< /T (contract) /Kids [@field] >>"},
         {"field", "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /FT /Sig /T (buyer) /V @value "
                   "/Parent @group >>"},
         {"value", "<< /Type /Sig /ByteRange [0 1 2 3] /Contents <00> >>"}}}
        .built();
}

class Run : public InOwnFolder {
protected:
    std::vector<std::string> pagesOf(const std::string& name) const
    {
        const std::string file = support::readFile(name);
        EXPECT_EQ(problems(file), "");
        return pageTexts(file);
    }

    const std::string tenPages = documentOfPages(10);
    const std::string input = scratch.write("in.pdf", tenPages);
};

struct RemovalRow {
    const char* line;
    const char* says;  ///< a part of it
    const char* warns; ///< all of it
    std::vector<int> left;
};

TEST_F(Run, RemovesPagesAndSaysSo)
{
    const RemovalRow rows[] = {
        {"--pages 2,4-6",
         "in.pdf -> out.pdf: 4 of 10 pages removed (2, 4-6), 6 left",
         "",
         {1, 3, 7, 8, 9, 10}},
        {"--pages 1 --pages 1", "(1-2)", "", {3, 4, 5, 6, 7, 8, 9, 10}},
        {"--action 'Delete Pages' --set byPageRangeTextEdit=3-10", "(3-10)", "", {1, 2}},
        {"-p 3-12",
         "(3-10)",
         "vantora: warning: in.pdf: the range 3-12 names pages up to 12, but the document has 10 "
         "pages\n",
         {1, 2}},
    };
    for (const RemovalRow& row : rows) {
        SCOPED_TRACE(row.line);
        const auto answer =
            terminal::run(std::string("run in.pdf -o out.pdf --overwrite ") + row.line);
        EXPECT_EQ(answer.status, 0);
        EXPECT_THAT(answer.out, HasSubstr(row.says));
        EXPECT_EQ(answer.err, row.warns);
        EXPECT_EQ(pagesOf("out.pdf"), pagesNamed(row.left));
        EXPECT_EQ(support::readFile("in.pdf"), tenPages);
    }
}

TEST_F(Run, RemovesTheChosenPagesOfEachDocument)
{
    scratch.write("three.pdf", documentOfPages(3));
    const struct {
        const char* line;
        std::vector<int> ten, three; ///< what is left
    } rows[] = {
        {"--choose last", {1, 2, 3, 4, 5, 6, 7, 8, 9}, {1, 2}},
        {"--choose odd --choose last:2 --except first", {1, 2, 4, 6, 8}, {1}},
        {"--keep 'text:page 1' --except 'text:/Page 2$/'", {1, 2, 10}, {1, 2}},
        {"--choose no-text --choose landscape", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 2, 3}},
        {"--choose label:2-3 -j 2", {1, 4, 5, 6, 7, 8, 9, 10}, {1}},
    };
    fs::create_directory("out");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const auto answer =
            terminal::run(std::string("run in.pdf three.pdf -d out --overwrite ") + row.line);
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_EQ(pagesOf("out/in.pdf"), pagesNamed(row.ten));
        EXPECT_EQ(pagesOf("out/three.pdf"), pagesNamed(row.three));
    }
}

TEST_F(Run, SaysWhichChoiceIsWrongBeforeItBegins)
{
    const struct {
        const char* line;
        const char* says;
    } rows[] = {
        {"--choose blanks", "\"blanks\" does not say how to choose pages; there are range:"},
        {"--choose odd --keep even", "can't be chosen together"},
        {"--except odd", "takes pages out of a choice, and there is none"},
        {"--choose odd --pages 1", "leave out --pages"},
        {"--action Scripted --set HostChoosePages=odd", "has no pages to choose"},
        {"--pages 1 --action 'Delete Pages' --set HostChoosePages=odd", "first step of a run only"},
    };
    for (const auto& [line, says] : rows) {
        const auto answer = terminal::run(std::string("run in.pdf -o out.pdf ") + line);
        EXPECT_EQ(answer.status, 2) << line;
        EXPECT_THAT(answer.err, AllOf(HasSubstr(says), EndsWith("\n"))) << line;
        EXPECT_FALSE(fs::exists("out.pdf")) << line;
    }
}

TEST_F(Run, SavesNothingWhenAnActionFailsOrRefusesToBegin)
{
    for (const char* step : {"work=complain", "begin=fail"}) {
        const auto answer = terminal::run(std::string("run -q -p 1 in.pdf -o out.pdf --action "
                                                      "Scripted --set ") +
                                          step);
        EXPECT_EQ(answer.status, 1) << step;
        EXPECT_EQ(terminal::lines(answer.err).size(), 1U) << answer.err;
        EXPECT_THAT(answer.err, HasSubstr("action \"Scripted\""));
        EXPECT_FALSE(fs::exists("out.pdf")) << step;
    }
}

TEST_F(Run, ReadsALongRangeFromAFile)
{
    std::string range = "3";
    while (range.size() < 300000) { // longer than a command line takes
        range += ",3";
    }
    scratch.write("range.txt", range + ",5-7\n");
    const auto answer = terminal::run("run --pages @range.txt in.pdf -o out.pdf");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(pagesOf("out.pdf"), pagesNamed({1, 2, 4, 8, 9, 10}));

    const auto missing = terminal::run("run --pages @none.txt in.pdf -o o.pdf");
    EXPECT_NE(missing.status, 0);
    EXPECT_THAT(missing.err, HasSubstr("none.txt"));
    EXPECT_FALSE(fs::exists(scratch.path("o.pdf")));
}

TEST_F(Run, TakesInputsFromAList)
{
    const std::string odd = "a\nb.pdf";
    for (const char* name : {"-", "one.pdf", odd.c_str()}) {
        scratch.write(name, tenPages);
    }
    scratch.write("lines.txt", "one.pdf\r\n\n-\n");
    const std::string nulls = odd + std::string(1, '\0') + "in.pdf" + std::string(1, '\0');
    fs::create_directory(scratch.path("out"));

    auto answer = terminal::run("run -p 3 --files-from lines.txt -d out");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_TRUE(fs::exists(scratch.path("out/one.pdf")) && fs::exists(scratch.path("out/-")));

    terminal::Setting pipe;
    pipe.standardInput = nulls;
    answer = terminal::run("run -p 3 one.pdf --files-from - -0 -d out --overwrite", pipe);
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(pagesOf("out/" + odd), pagesNamed({1, 2, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_TRUE(fs::exists(scratch.path("out/in.pdf")));
}

TEST_F(Run, FailsWhereAListNamesNothing)
{
    scratch.write("empty.txt", "\n\n");
    for (const char* list : {"empty.txt", "missing.txt"}) {
        const auto answer = terminal::run(std::string("run -p 3 -n --files-from ") + list);
        EXPECT_EQ(answer.status, 1) << list;
        EXPECT_THAT(answer.err, AllOf(HasSubstr(list), HasSubstr("the list of inputs")));
    }
}

TEST_F(Run, GivesEqualBytesForEqualDocuments)
{
    ASSERT_EQ(terminal::run("run -p 3 in.pdf -o one.pdf").status, 0);
    ASSERT_EQ(terminal::run("run -p 3 in.pdf -o two.pdf").status, 0);
    EXPECT_EQ(support::readFile("one.pdf"), support::readFile("two.pdf"));
}

TEST_F(Run, IsQuietWhenAskedButForErrors)
{
    const auto fine = terminal::run("run -q -p 1-99 in.pdf -o out.pdf");
    EXPECT_EQ(fine.out + fine.err, "");
    const auto failed = terminal::run("run -q -p 1 missing.pdf -o b.pdf");
    EXPECT_EQ(failed.out, "");
    EXPECT_EQ(terminal::lines(failed.err).size(), 1U);
}

TEST_F(Run, PrintsJsonPerDocumentAndDoesTheOthersWhenOneFails)
{
    fs::create_directory("out");
    scratch.write("bad.pdf", "no PDF at all");
    scratch.write("last.pdf", documentOfPages(2));
    const auto answer =
        terminal::run("run --json -p 2,9-12 in.pdf bad.pdf missing.pdf last.pdf -d out");
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(pagesOf("out/in.pdf"), pagesNamed({1, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(pagesOf("out/last.pdf"), pagesNamed({1}));
    EXPECT_FALSE(fs::exists("out/bad.pdf"));
    const std::string figures =
        R"({"schema":1,"input":"in.pdf","output":"out/in.pdf","output_existed":false,)"
        R"("pages_before":10,"pages_after":7,)"
        R"("pages_removed":[2,9,10],"bytes_before":)" +
        std::to_string(tenPages.size()) +
        ",\"bytes_after\":" + std::to_string(fs::file_size("out/in.pdf"));
    EXPECT_THAT(
        terminal::lines(answer.out),
        ElementsAre(AllOf(StartsWith(figures), HasSubstr(R"("status":"done","warnings":["the r)"),
                          HasSubstr(R"("errors":[],"left":[],"seconds":)"),
                          Not(HasSubstr(R"("seconds":0,)"))),
                    HasSubstr(R"("status":"failed","warnings":[],"errors":[{"reason":"not-pdf")"),
                    AllOf(HasSubstr(R"("output":null)"), HasSubstr(R"("reason":"input-missing")")),
                    HasSubstr(R"("pages_removed":[2])"),
                    AllOf(StartsWith(R"({"schema":1,"summary":{"version":)"),
                          HasSubstr(R"("documents":4,"done":2,"planned":0,"skipped":0,"failed":2,)"
                                    R"("not_named":0,"in_part":2,"left_blank":0,"with_warnings":2,)"
                                    R"("reasons":{"input-missing":1,)"
                                    R"("not-pdf":1},"pages_removed":4,)"),
                          HasSubstr(R"("interrupted":false,"ended_at":"2)"))));
    EXPECT_THAT(
        terminal::lines(answer.err),
        ElementsAre(HasSubstr("warning: in.pdf: "), HasSubstr("error: bad.pdf: "),
                    HasSubstr("error: missing.pdf: "), HasSubstr("warning: last.pdf: "),
                    HasSubstr("2 of 4 documents done, 2 in part, 2 with warnings, 2 failed")));
}

TEST_F(Run, InADryRunNamesThePagesAndWhatIsInTheWayAndWritesNothing)
{
    const auto before = terminal::contents(".");
    const auto answer = terminal::run("run --dry-run -p 2,4-6 in.pdf");
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.out, HasSubstr("in.pdf: 4 of 10 pages would go (2, 4-6), 6 left; "));
    EXPECT_EQ(terminal::run("run -n -p 2 in.pdf -o out.pdf").status, 0);
    EXPECT_EQ(terminal::run("run -n -p 2 in.pdf -i --backup").status, 0);
    EXPECT_THAT(terminal::run("run -n -p 2 in.pdf -o in.pdf").err,
                HasSubstr("is the input itself"));
    const QJsonObject report = terminal::objects(terminal::run("run -n --json -p 2 in.pdf").out)[0];
    EXPECT_EQ(report["status"].toString(), "planned");
    EXPECT_EQ(report["pages_removed"].toArray(), (QJsonArray{2}));
    EXPECT_EQ(terminal::contents("."), before);
}

TEST_F(Run, InADryRunTellsTheSameAsTheRealOne)
{
    scratch.write("signed.pdf", signedDocument());
    const std::string half = tenPages.substr(0, tenPages.size() / 2);
    scratch.write("half.pdf", half);
    fs::create_directory("out");
    scratch.write("out/in.pdf", "to be replaced");
    const std::string line =
        "run --json -j 0 -p 1,12 in.pdf signed.pdf half.pdf -d out --overwrite";
    const auto planned = terminal::run(line + " -n");
    const auto real = terminal::run(line);
    EXPECT_EQ(planned.status, real.status);
    const auto before = terminal::objects(planned.out);
    const auto after = terminal::objects(real.out);
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i + 1 < before.size(); ++i) {
        EXPECT_EQ(before[i].keys(), after[i].keys());
        for (const char* key : {"input", "output", "output_existed", "pages_removed", "pages_after",
                                "bytes_after", "in_part", "warnings", "errors"}) {
            EXPECT_EQ(before[i][key], after[i][key]) << key << " of document " << i;
        }
    }
    EXPECT_TRUE(before[0]["output_existed"].toBool());
    EXPECT_EQ(before[1]["warnings"].toArray().size(), 2);
    EXPECT_THAT(
        terminal::run("run -n -p 1 in.pdf -d out --overwrite").out,
        StartsWith("in.pdf -> out/in.pdf (exists, would be replaced): 1 of 10 pages would go"));
}

TEST_F(Run, DoesWhatIsAskedForWithDocumentsThatWouldBeEmptyOrDoneInPart)
{
    scratch.write("one.pdf", documentOfPages(1));
    const struct {
        const char* name;
        const char* options;
        int status;
        const char* says;
        std::vector<const char*> left; ///< the outputs' pages as texts; none where there is none
    } rows[] = {
        {"by default",
         "-p 1 one.pdf -o out.pdf",
         0,
         "names every page; one blank page is left",
         {""}},
        {"blank in so many words",
         "-p 1 one.pdf -o out.pdf --if-empty blank --strict",
         0,
         "one blank page is left",
         {""}},
        {"skip", "-p 1 one.pdf -o out.pdf --if-empty skip", 0, "one.pdf: left out; 1 page", {}},
        {"fail", "-p 1 one.pdf -o out.pdf --if-empty fail", 1, "so none would be left; ", {}},
        {"fail foreseen", "-p 1 one.pdf -n --if-empty fail", 1, "so none would be left; ", {}},
        {"strict and empty", "-p 1 one.pdf -o out.pdf --strict", 1, "so none would be left; ", {}},
        {"in place", "-p 1 one.pdf -i", 1, "so none would be left; --if-empty blank leaves", {}},
        {"in part",
         "-p 1,12 in.pdf one.pdf -n -j 0",
         0,
         "2 of 2 documents done, 2 in part, 1 left with a blank page only, 2 with warnings",
         {}},
        {"strict",
         "-p 9-12 in.pdf -o out.pdf --strict",
         1,
         "in.pdf: the range 9-12 names pages up",
         {}},
        {"failures that are accepted",
         "-p 2 one.pdf gone.pdf -n --strict --accept-failures in-part,input-missing -j 0",
         0,
         "2 failed (1 input-missing, 1 in-part), which was to be accepted",
         {}},
        {"failures of which one is accepted",
         "-p 2 one.pdf gone.pdf -n --strict --accept-failures in-part -j 0",
         1,
         "2 failed",
         {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        fs::remove("out.pdf");
        const auto answer = terminal::run(std::string("run ") + row.options);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_THAT(answer.out + answer.err, HasSubstr(row.says));
        ASSERT_EQ(fs::exists("out.pdf"), !row.left.empty());
        if (!row.left.empty()) {
            EXPECT_EQ(pagesOf("out.pdf"),
                      std::vector<std::string>(row.left.begin(), row.left.end()));
        }
    }
    EXPECT_EQ(support::readFile("one.pdf"), documentOfPages(1));
}

TEST_F(Run, LeavesOutInputsWhoseOutputsAreNoOlder)
{
    fs::create_directory("out");
    scratch.write("second.pdf", tenPages);
    const std::string line = "run -j 0 -p 1 in.pdf second.pdf -d out --skip-existing";
    ASSERT_EQ(terminal::run("run -p 1 in.pdf -d out").status, 0);
    const auto first = terminal::run(line);
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_THAT(first.err,
                HasSubstr("1 document has an output no older than itself, and is left as it is"));
    EXPECT_EQ(terminal::lines(first.out).size(), 1U);
    EXPECT_THAT(terminal::run(line).out, "");

    scratch.write("older.pdf", documentOfPages(4));
    fs::last_write_time("older.pdf", fs::last_write_time("out/in.pdf") - std::chrono::hours(1));
    fs::rename("older.pdf", "in.pdf");
    EXPECT_THAT(terminal::run(line + " --overwrite").out, HasSubstr("1 of 4 pages removed"));

    fs::last_write_time("in.pdf", fs::last_write_time("out/in.pdf") + std::chrono::seconds(1));
    EXPECT_THAT(terminal::run(line).err, HasSubstr("in.pdf exists already"));
    EXPECT_THAT(terminal::run(line + " --overwrite").out, StartsWith("in.pdf -> out/in.pdf"));
}

TEST_F(Run, WarnsWhenEveryPageGoesAndLeavesABlankOne)
{
    const auto answer = terminal::run("run -p 1-10 in.pdf -o out.pdf");
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.err, HasSubstr("warning: in.pdf: the range 1-10 names every page"));
    EXPECT_EQ(pagesOf("out.pdf"), std::vector<std::string>{""});
}

TEST_F(Run, TriesPasswordsInTheirOrderUntilOneOpensAndPermits)
{
    scratch.write("locked.pdf", support::rewritten(tenPages, "--encrypt user owner 256 --"));
    scratch.write("limited.pdf",
                  support::rewritten(tenPages, "--encrypt '' owner 256 --modify=none --"));
    scratch.write("passwords", "wrong\r\n\nowner\nuser");
    fs::create_directory("out");
    const auto answer =
        terminal::run("run -j 0 -p 1 locked.pdf limited.pdf -d out --password-file passwords");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(pageTexts(support::readFile("out/locked.pdf"), "user").size(), 9U);
    EXPECT_EQ(problems(support::readFile("out/locked.pdf"), "user"), "");
    EXPECT_EQ(pageTexts(support::readFile("out/limited.pdf")).size(), 9U);
}

TEST_F(Run, RepairsWhatCanBeRepairedWithAWarning)
{
    const std::string intact = documentOfPages(3);
    const auto table = intact.rfind("startxref");
    scratch.write("damaged.pdf", intact.substr(0, table) + "startxref\n12\n%%EOF\n");
    const auto answer = terminal::run("run -p 2 damaged.pdf -o out.pdf");
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(terminal::lines(answer.err),
                ElementsAre(HasSubstr("warning: damaged.pdf: repaired: ")));
    EXPECT_EQ(pagesOf("out.pdf"), pagesNamed({1, 3}));
}

TEST_F(Run, RemovesSignaturesWithAWarningThatNamesTheirFieldOrRefusesWhereAsked)
{
    scratch.write("signed.pdf", signedDocument());
    const auto refused = terminal::run("run -p 1 --keep-signed signed.pdf -o out.pdf");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err,
                HasSubstr("error: signed.pdf: it is signed in field \"contract.buyer\""));
    EXPECT_FALSE(fs::exists("out.pdf"));
    EXPECT_EQ(terminal::run("run -p 1 --keep-signed in.pdf -o kept.pdf").status, 0);

    const std::string said =
        "the signature in field \"contract.buyer\" no longer holds and was removed";
    const auto answer = terminal::run("run -p 1 signed.pdf -o out.pdf --json");
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(terminal::lines(answer.err), ElementsAre(EndsWith("warning: signed.pdf: " + said)));
    EXPECT_EQ(terminal::objects(answer.out).front()["warnings"].toArray(),
              QJsonArray{QString::fromStdString(said)});
}

TEST_F(Run, DoesItsDocumentsWhenAnActionFailsAtTheEndAndSaysSo)
{
    const auto answer = terminal::run("run --action Scripted --set end=complain in.pdf -o out.pdf");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.out, HasSubstr("in.pdf -> out.pdf"));
    EXPECT_THAT(answer.err, HasSubstr("Scripted error"));
    EXPECT_EQ(pagesOf("out.pdf").size(), 10U);
}

TEST_F(Run, ReportsPageCountsOfActionsItKnowsNothingOf)
{
    const auto answer =
        terminal::run("run --json --action Scripted --set 'work=lose a page' in.pdf -o out.pdf");
    EXPECT_EQ(answer.status, 0) << answer.err;
    const QJsonObject report = terminal::objects(answer.out).front();
    EXPECT_EQ(report["pages_after"].toInt(), 9);
    EXPECT_TRUE(report["pages_removed"].isNull());
}

TEST_F(Run, SaysOfActionsItKnowsNothingOfOnlyWhatIsTrue)
{
    scratch.write("limited.pdf",
                  support::rewritten(tenPages, "--encrypt '' owner 256 --modify=assembly --"));
    scratch.write("second.pdf", tenPages);
    fs::create_directory("out");
    const struct {
        const char* name;
        const char* line;
        const char* says;    ///< a part of what is printed
        const char* doesNot; ///< say
    } rows[] = {
        {"pages that stay", "--action Scripted in.pdf -o out/a.pdf",
         "in.pdf -> out/a.pdf: 10 pages; ", "left"},
        {"pages that go", "--action Scripted --set 'work=lose a page' in.pdf -o out/b.pdf",
         "out/b.pdf: 10 pages before, 9 after; ", "removed"},
        {"a summary", "--action Scripted in.pdf second.pdf -d out", "2 of 2 documents done; ",
         "removed"},
        {"a dry run", "--action Scripted -n in.pdf", "only the action itself knows", "would go"},
        {"a permission", "--action Scripted limited.pdf -o out/c.pdf",
         "limited.pdf: its owner does not permit changing it", "removing"},
        {"a permission for two steps", "-p 1 --action Scripted limited.pdf -o out/d.pdf",
         "does not permit changing it", "removing"},
        {"a permission that suffices", "-p 1 limited.pdf -o out/e.pdf", "1 of 10 pages removed",
         "permit"},
        {"the step that fails", "-p 1 --action Scripted --set work=complain in.pdf -o out/f.pdf",
         "in.pdf: step 2, action \"Scripted\": Scripted error", "step 1"},
        {"an option that it may not have", "--action Scripted --set lgo=x in.pdf -o out/g.pdf",
         "warning: action \"Scripted\" may not know what was set: lgo; ", "error"},
        {"several workers", "--action Scripted -j 2 in.pdf second.pdf -n",
         "one worker process does all documents in their order", "error"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto answer = terminal::run(std::string("run ") + row.line);
        EXPECT_THAT(answer.out + answer.err,
                    AllOf(HasSubstr(row.says), Not(HasSubstr(row.doesNot))));
    }
}

TEST_F(Run, TellsProgramsWhyTheWholeCommandFailed)
{
    const struct {
        const char* line;
        const char* reason;
        const char* input;
        int status;
    } rows[] = {
        {"run --json --frobnicate", "wrong-usage", "", 2},
        {"run --json -p 6-4 in.pdf -n", "bad-page-range", "", 2},
        {"run --json -p 1 in.pdf -n --password-file gone", "input-missing", "gone", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const auto answer = terminal::run(row.line);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_EQ(terminal::lines(answer.err).size(), 1U) << answer.err;
        ASSERT_EQ(terminal::lines(answer.out).size(), 1U);
        const QJsonObject object = terminal::objects(answer.out).front();
        const QJsonObject error = object["errors"].toArray().first().toObject();
        EXPECT_EQ(error["reason"].toString(), row.reason);
        EXPECT_FALSE(error["text"].toString().isEmpty());
        EXPECT_EQ(object["input"].toString(), row.input);
        EXPECT_EQ(object["status"].toString(), "failed");
    }
}

TEST_F(Run, TellsADamagedDocumentFromAnotherKindOfFile)
{
    scratch.write("cut.pdf", tenPages.substr(0, 40));
    scratch.write("late.pdf", std::string(900, ' ') + "%PDF-1.7\n");
    scratch.write("text.pdf", "no PDF at all");
    const auto answer = terminal::run("run --json -n -j 0 -p 1 cut.pdf late.pdf text.pdf");
    std::vector<std::string> reasons;
    for (const QJsonObject& report : terminal::objects(answer.out)) {
        const QJsonObject error = report["errors"].toArray().first().toObject();
        reasons.push_back(error["reason"].toString().toStdString());
    }
    EXPECT_THAT(reasons, testing::IsSupersetOf({"damaged", "damaged", "not-pdf"}));
    EXPECT_THAT(answer.err, HasSubstr("3 failed (1 not-pdf, 2 damaged)"));
}

TEST_F(Run, KeepsFileNamesThatAreNotUtf8)
{
    fs::create_directory("out");
    scratch.write("caf\xe9.pdf", documentOfPages(2));
    const auto answer = terminal::run("run --json -p 1 caf\xe9.pdf -d out");
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_THAT(answer.out, HasSubstr(R"("output":"out/caf\udce9.pdf")"));
    EXPECT_EQ(pagesOf("out/caf\xe9.pdf"), pagesNamed({2}));
}

TEST_F(Run, ShowsProgressOnlyOnATerminalAndOnlyForSeveralDocuments)
{
    fs::create_directory("out");
    scratch.write("second.pdf", documentOfPages(2));
    terminal::Setting onTerminal;
    onTerminal.errIsTerminal = true;
    const auto shown = terminal::run("run -p 1 in.pdf second.pdf -d out --overwrite", onTerminal);
    EXPECT_THAT(shown.err, HasSubstr("1 of 2 documents"));
    EXPECT_THAT(shown.err, HasSubstr("\r\033[Kvantora: 2 of 2 documents done; 2 pages removed; "));
    const auto piped = terminal::run("run -p 1 in.pdf second.pdf -d out --overwrite");
    EXPECT_THAT(piped.err, StartsWith("vantora: 2 of 2 documents done; 2 pages removed; "));
    const auto single = terminal::run("run -p 1 in.pdf -o o.pdf", onTerminal);
    EXPECT_EQ(single.err, "");
}

TEST_F(Run, PutsNoDocumentOnATerminal)
{
    terminal::Setting setting;
    setting.outIsTerminal = true;
    const auto answer = terminal::run("run -p 1 in.pdf -o -", setting);
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.out, "");
    EXPECT_THAT(answer.err, HasSubstr("not for a terminal"));
}

// As offices have them: a light cover sheet, and a heavy logo on every page.
TEST_F(Run, OverLettersWarnsOfNothing)
{
    const std::string shows = "/Resources << /XObject << /Logo @logo >> >>";
    const std::string letter =
        support::Sketch{{shows, shows, shows},
                        "/Names << /EmbeddedFiles << /Names [(a) @file] >> >> /Metadata @xmp",
                        {{"logo", "/Type /XObject /Subtype /Image /Width 1 /Height 90000 "
                                  "/BitsPerComponent 8 /ColorSpace /DeviceGray|" +
                                      std::string(90000, 'x')},
                         {"file", "<< /Type /Filespec /F (f) >>"},
                         {"xmp", "/Type /Metadata /Subtype /XML|<x/>"}}}
            .built();
    scratch.write("one.pdf", letter);
    scratch.write("two.pdf", letter);
    const std::string line = "run -p 1 one.pdf two.pdf -d . --name {name}-cut{ext} --overwrite ";
    EXPECT_THAT(terminal::lines(terminal::run(line).err),
                ElementsAre(HasSubstr("2 of 2 documents done; 2 pages removed; ")));
    const std::string left = "left, for you to judge: 1 attached file; the document's XMP metadata";
    EXPECT_THAT(terminal::lines(terminal::run(line + "-v").err),
                ElementsAre("vantora: one.pdf: " + left, "vantora: two.pdf: " + left,
                            HasSubstr("2 of 2 documents done; 2 pages removed; ")));
    for (const char* how : {"--json", "--json -n"}) {
        EXPECT_EQ(terminal::objects(terminal::run(line + how).out).front()["left"].toArray(),
                  QJsonArray({"1 attached file", "the document's XMP metadata"}))
            << how;
    }
}

} // namespace
