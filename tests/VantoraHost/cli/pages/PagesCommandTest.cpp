#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <QtCore/QByteArray>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using support::documentOfPages;
using support::pagesNamed;
using support::pageTexts;
using support::readFile;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Pages : public InOwnFolder {
protected:
    Pages()
    {
        fs::create_directories("in/x");
        fs::create_directory("out");
        for (const char* name : {"in/a.pdf", "in/x/b.pdf"}) {
            scratch.write(name, documentOfPages(4));
        }
        scratch.write("in/outlined.pdf",
                      support::Sketch{{"", "", "", ""},
                                      "/Outlines @outline",
                                      {{"outline", "<< /First @one /Last @two >>"},
                                       {"one", "<< /Title (Cover) /Parent @outline /Next @two "
                                               "/Dest [@p1 /Fit] >>"},
                                       {"two", "<< /Title (Appendix) /Parent @outline "
                                               "/Dest [@p3 /Fit] >>"}}}
                          .built());
    }

    /// What a sheet says, without the page around it.
    static QJsonObject dataOf(const std::string& sheet)
    {
        const std::string start = R"(<script type="application/json" id="data">)";
        const std::size_t from = sheet.find(start) + start.size();
        const std::size_t to = sheet.find("</script>", from);
        return QJsonDocument::fromJson(QByteArray::fromStdString(sheet.substr(from, to - from)))
            .object();
    }
};

TEST_F(Pages, AreALineForEachDocument)
{
    const std::pair<const char*, const char*> rows[] = {
        {"--choose last:2 -r in", "in/a.pdf\t3-4\nin/outlined.pdf\t3-4\nin/x/b.pdf\t3-4\n"},
        {"--choose bookmark:appendix in/a.pdf in/outlined.pdf",
         "in/a.pdf\t\nin/outlined.pdf\t3-4\n"},
        {"--keep bookmark:cover --except even in/outlined.pdf", "in/outlined.pdf\t3\n"},
        {"--choose 'text:page 2' --choose first in/a.pdf -j 0", "in/a.pdf\t1-2\n"},
        {"--choose odd --files-from list", "in/x/b.pdf\t1,3\n"},
    };
    scratch.write("list", "in/x/b.pdf\n");
    for (const auto& [arguments, lines] : rows) {
        const auto answer = terminal::run(std::string("pages ") + arguments);
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_EQ(answer.out, lines) << arguments;
    }
}

TEST_F(Pages, OfALongDocumentAreTheSameHoweverManyProcessesShareIt)
{
    scratch.write("in/long.pdf", documentOfPages(150));
    for (const char* choices : {"--choose 'text:/page 1[0-9]*$/'", "--keep 'text:page 7'",
                                "--choose last:40 --except 'text:/[05]$/'"}) {
        const std::string arguments =
            std::string("pages --json ") + choices + " in/long.pdf in/a.pdf";
        const auto alone = terminal::run(arguments + " -j 0");
        ASSERT_EQ(alone.status, 0) << alone.err;
        EXPECT_THAT(alone.out, HasSubstr(R"("page":149)")) << choices;
        for (const char* jobs : {" -j 1", " -j 2", " -j 5"}) {
            const auto shared = terminal::run(arguments + jobs);
            EXPECT_EQ(shared.status, 0) << shared.err;
            EXPECT_EQ(shared.out, alone.out) << choices << jobs;
        }
    }
}

TEST_F(Pages, SayForEachWhyAsJson)
{
    const auto answer =
        terminal::run("pages --json --choose last --choose odd in/a.pdf missing.pdf");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(terminal::lines(answer.out),
                ElementsAre(R"({"schema":1,"input":"in/a.pdf","status":"done","pages":4,)"
                            R"("range":"1,3-4","chosen":[)"
                            R"({"page":1,"reason":"odd","figure":null},)"
                            R"({"page":3,"reason":"odd","figure":null},)"
                            R"({"page":4,"reason":"last","figure":null}],)"
                            R"("warnings":[],"errors":[]})",
                            HasSubstr(R"("input":"missing.pdf","status":"failed")")));
    EXPECT_THAT(answer.err, AllOf(HasSubstr("error: missing.pdf: there is no such file"),
                                  HasSubstr("3 pages in 1 document, of 2 looked at; 1 failed")));
    const auto kept = terminal::run("pages --json --keep even in/a.pdf --report r");
    EXPECT_THAT(kept.out, HasSubstr(R"("chosen":[{"page":1,"reason":null,"figure":null})"));
    EXPECT_EQ(readFile("r"), kept.out);
}

TEST_F(Pages, ComeThroughAsTheyArePrintedWhateverDocumentsAreCalled)
{
    fs::create_directory("odd");
    const std::string names[] = {"tab\there.pdf", "new\nline.pdf", "quo\"te.pdf", "com,ma.pdf",
                                 "caf\xe9.pdf",   " spaces .pdf",  "\"a\".pdf",   "-dash.pdf",
                                 "<b>.pdf",       "\r.pdf"};
    for (const std::string& name : names) {
        scratch.write("odd/" + name, documentOfPages(3));
    }
    const auto printed = terminal::run("pages --choose last -r odd");
    ASSERT_EQ(printed.status, 0) << printed.err;
    terminal::Setting pipe;
    pipe.standardInput = printed.out;
    for (const char* inputs : {"", "-r odd"}) {
        fs::remove_all("out");
        fs::create_directory("out");
        const auto answer = terminal::run(std::string("run --ranges - -d out ") + inputs, pipe);
        EXPECT_EQ(answer.status, 0) << answer.err;
        for (const std::string& name : names) {
            EXPECT_EQ(pageTexts(readFile("out/" + name)), pagesNamed({1, 2})) << name;
        }
    }
    terminal::Setting person;
    person.outIsTerminal = true;
    EXPECT_THAT(terminal::run({"pages", "--choose", "last", "odd/caf\xe9.pdf"}, person).out,
                HasSubstr("caf\\xe9.pdf\t3"));
}

TEST_F(Pages, OfOneDocumentComeThroughAPipe)
{
    terminal::Setting pipe;
    pipe.standardInput = documentOfPages(3);
    const auto printed = terminal::run("pages --choose last -", pipe);
    EXPECT_EQ(printed.out, "-\t3\n");
    scratch.write("ranges", printed.out);
    const auto answer = terminal::run("run --ranges ranges - -o out/o.pdf", pipe);
    EXPECT_EQ(answer.status, 0) << answer.err;
    EXPECT_EQ(pageTexts(readFile("out/o.pdf")), pagesNamed({1, 2}));
}

TEST_F(Pages, AreShownInASheetBesideTheirNeighbours)
{
    const auto answer =
        terminal::run("pages --choose first --choose range:3 in/a.pdf in/outlined.pdf "
                      "missing.pdf --except 'text:page 3' --sheet s.html");
    EXPECT_EQ(answer.status, 1);
    const std::string sheet = readFile("s.html");
    struct stat status = {};
    ASSERT_EQ(::stat("s.html", &status), 0);
    EXPECT_EQ(status.st_mode & 0077U, 0U) << "it shows what documents hold";
    const QJsonObject data = dataOf(sheet);
    EXPECT_EQ(data["choices"].toArray().at(2).toString(), "--except text:page 3");
    const QJsonObject document = data["documents"].toArray().at(0).toObject();
    EXPECT_EQ(document["range"].toString(), "1");
    EXPECT_THAT(document["pictures"].toObject().keys(), ElementsAre("1", "2"));
    EXPECT_TRUE(QByteArray::fromBase64(document["pictures"].toObject()["2"].toString().toLatin1())
                    .startsWith("\xff\xd8\xff"));
    EXPECT_EQ(QByteArray::fromBase64(document["field"].toString().toLatin1()).toStdString(),
              fs::absolute("in/a.pdf").string());
    EXPECT_EQ(data["failed"].toArray().at(0).toObject()["name"].toString(), "missing.pdf");
    // It stands alone.
    EXPECT_THAT(sheet, AllOf(HasSubstr("default-src 'none'"), Not(HasSubstr("http:")),
                             Not(HasSubstr("https:")), Not(HasSubstr("@SHEET_DATA@"))));
}

TEST_F(Pages, CanNotMakeASheetRunWhatTheirDocumentsAreCalled)
{
    const std::string name = "<script>alert(1)<!--\"'&.pdf";
    scratch.write(name, documentOfPages(2));
    const auto answer = terminal::run(
        {"pages", "--choose", "text:</script><script>alert(2)", name, "--sheet", "s.html"});
    ASSERT_EQ(answer.status, 0) << answer.err;
    const std::string sheet = readFile("s.html");
    EXPECT_THAT(sheet, AllOf(Not(HasSubstr("<script>alert")), Not(HasSubstr("<!--"))));
    EXPECT_EQ(
        dataOf(sheet)["documents"].toArray().at(0).toObject()["name"].toString().toStdString(),
        name);
}

TEST_F(Pages, ReplaceNothingThatIsThereUnlessAsked)
{
    scratch.write("s.html", "mine");
    for (const char* option : {"--sheet", "--report"}) {
        const std::string line = std::string("pages --choose last in/a.pdf ") + option + " s.html";
        const auto refused = terminal::run(line);
        EXPECT_EQ(refused.status, 1);
        EXPECT_THAT(refused.err, HasSubstr("s.html: exists already; use --overwrite"));
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(readFile("s.html"), "mine");
    }
    EXPECT_EQ(terminal::run("pages --choose last in/a.pdf --sheet s.html --overwrite").status, 0);
    EXPECT_THAT(readFile("s.html"), HasSubstr("<!DOCTYPE html>"));
}

TEST_F(Pages, AreRefusedWithWhatIsWrong)
{
    const struct {
        const char* line;
        int status;
        const char* says;
    } rows[] = {
        {"pages in/a.pdf", 2, "say with --choose CHOICE which pages"},
        {"pages --choose last", 2, "INPUT is missing"},
        {"pages --choose lst in/a.pdf", 2, "\"lst\" does not say how to choose pages"},
        {"pages --except odd in/a.pdf", 2, "takes pages out of a choice, and there is none"},
        {"pages --choose odd in/a.pdf --sheet ''", 2, "the name of the sheet is empty"},
        {"pages --choose odd in/a.pdf --password-file none", 1, "the password file can't be read"},
    };
    for (const auto& [line, status, says] : rows) {
        const auto answer = terminal::run(line);
        EXPECT_EQ(answer.status, status) << line;
        EXPECT_THAT(answer.err, HasSubstr(says)) << line;
        EXPECT_EQ(answer.out, "") << line;
    }
}

} // namespace
