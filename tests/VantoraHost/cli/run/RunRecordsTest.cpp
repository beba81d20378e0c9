#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraHost/core/FileDigest.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

// What a run leaves for people to keep: certificates and checksums.
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class RunRecords : public InOwnFolder {
protected:
    RunRecords()
    {
        std::signal(SIGPIPE, SIG_IGN); // as the program does
        for (const char* folder : {"in", "in/sub", "out", "kept"}) {
            fs::create_directory(folder);
        }
        support::PagedDocument labelled(5);
        labelled.catalogEntries = "/PageLabels << /Nums [0 << /S /r >> 3 << /S /D /P (A-) >>] >>";
        scratch.write("in/a.pdf", labelled.build());
        scratch.write("in/sub/a.pdf", support::documentOfPages(3));
    }

    /// All words of a file with one space between them.
    static std::string wordsIn(const std::string& path)
    {
        std::string text;
        for (const std::string& page : support::pageTexts(support::readFile(path))) {
            for (const std::string& word : terminal::words(page)) {
                text += word + ' ';
            }
        }
        return text;
    }

    static std::string digestOf(const std::string& path)
    {
        return vantora::sha256OfFile(path).value_or("no file");
    }

    static int check(const std::string& checksums)
    {
        return std::system(
            ("sha256sum --quiet --strict -c " + checksums + " >check.log 2>&1").c_str());
    }
};

TEST_F(RunRecords, CertifyWhatWentOfADocument)
{
    const auto answer =
        terminal::run("run -p 2-4 in/a.pdf -o out/a.pdf --certificate kept/a.pdf --json");
    EXPECT_EQ(answer.status, 0) << answer.err;
    const std::string text = wordsIn("kept/a.pdf");
    EXPECT_THAT(text,
                AllOf(HasSubstr("Certificate of a removal of pages"), HasSubstr("in/a.pdf"),
                      HasSubstr("out/a.pdf"), HasSubstr(digestOf("in/a.pdf")),
                      HasSubstr(digestOf("out/a.pdf")), HasSubstr("5 pages"),
                      HasSubstr("Which 2-4 Labels 2-4 (ii to A-1)"), HasSubstr("Found nothing"),
                      HasSubstr("vantora run -p 2-4 in/a.pdf -o out/a.pdf")));
    EXPECT_EQ(fs::status("kept/a.pdf").permissions() & fs::perms::mask,
              fs::perms::owner_read | fs::perms::owner_write);
    const auto json = terminal::objects(answer.out);
    EXPECT_EQ(json[0]["output_sha256"].toString().toStdString(), digestOf("out/a.pdf"));
    EXPECT_TRUE(json[0]["verified"].toBool());
}

TEST_F(RunRecords, AreDocumentsForArchives)
{
    ASSERT_EQ(terminal::run("run -p 2 in/a.pdf -o out/a.pdf --certificate c.pdf").status, 0);
    const std::string bytes = support::readFile("c.pdf");
    EXPECT_EQ(support::problems(bytes), "");
    QPDF file;
    file.processMemoryFile("", bytes.data(), bytes.size());
    QPDFObjectHandle metadata = file.getRoot().getKey("/Metadata");
    const auto data = metadata.getStreamData();
    const std::string xmp(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
    EXPECT_THAT(xmp, AllOf(HasSubstr("pdfaid:part=\"1\""), HasSubstr("pdfaid:conformance=\"B\"")));
    EXPECT_TRUE(metadata.getDict().getKey("/Filter").isNull());
    QPDFObjectHandle intent = file.getRoot().getKey("/OutputIntents").getArrayItem(0);
    EXPECT_EQ(intent.getKey("/S").getName(), "/GTS_PDFA1");
    EXPECT_TRUE(intent.getKey("/DestOutputProfile").isStream());
    EXPECT_TRUE(file.getTrailer().getKey("/ID").isArray() && !file.isEncrypted());
    int fonts = 0;
    for (QPDFObjectHandle& object : file.getAllObjects()) {
        if (object.isDictionaryOfType("/FontDescriptor")) {
            ++fonts;
            EXPECT_TRUE(object.hasKey("/FontFile2") || object.hasKey("/FontFile3"));
            EXPECT_TRUE(object.getKey("/CIDSet").isStream());
        }
        if (object.isDictionaryOfType("/ExtGState")) {
            EXPECT_TRUE(object.getKey("/SMask").isNameAndEquals("/None"));
            EXPECT_EQ(object.getKey("/CA").getNumericValue(), 1);
            EXPECT_EQ(object.getKey("/ca").getNumericValue(), 1);
        }
        EXPECT_FALSE(object.isDictionary() && object.hasKey("/JS"));
    }
    EXPECT_GT(fonts, 0);
}

TEST_F(RunRecords, HaveANameForEachOfSeveralDocuments)
{
    const auto one = terminal::run("run -p 1 -r in -d out --certificate kept/c.pdf");
    EXPECT_EQ(one.status, 2);
    EXPECT_THAT(one.err, HasSubstr("for 2 use a name such as {name}-certificate.pdf"));
    EXPECT_FALSE(fs::exists("out/a.pdf"));
    const std::string several = "run -p 1 -r in -d out --certificate kept/{name}-certificate{ext}";
    EXPECT_EQ(terminal::run(several).status, 0);
    EXPECT_THAT(wordsIn("kept/a-certificate.pdf"), HasSubstr(digestOf("in/a.pdf")));
    EXPECT_THAT(wordsIn("kept/sub/a-certificate.pdf"), HasSubstr(digestOf("in/sub/a.pdf")));
}

TEST_F(RunRecords, ReplaceNothingUnlessAsked)
{
    scratch.write("kept/a.pdf", "mine");
    scratch.write("sums", "mine");
    const std::string run = "run -p 1 in/a.pdf -o out/a.pdf ";
    for (const char* taken :
         {"--certificate kept/a.pdf", "--certificate out/a.pdf", "--checksums sums",
          "--checksums out/a.pdf", "--checksums in/a.pdf", "--certificate in/a.pdf --overwrite",
          "--certificate out/a.pdf --overwrite"}) {
        SCOPED_TRACE(taken);
        EXPECT_EQ(terminal::run(run + taken).status, 1);
        EXPECT_FALSE(fs::exists("out/a.pdf"));
    }
    EXPECT_EQ(support::readFile("kept/a.pdf") + support::readFile("sums"), "minemine");
    EXPECT_EQ(terminal::run(run + "--certificate kept/a.pdf --checksums sums --overwrite").status,
              0);
    EXPECT_THAT(wordsIn("kept/a.pdf"), HasSubstr(digestOf("out/a.pdf")));
}

TEST_F(RunRecords, AreMissedAloudWhereTheyCannotBeDrawn)
{
    terminal::Setting setting;
    setting.program = "/bin/false";
    const auto answer =
        terminal::run("run -j 0 -p 1 in/a.pdf -o out/a.pdf --certificate c.pdf", setting);
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("in/a.pdf: has no certificate, but is done: the process that "
                                      "draws it ended: exit status 1"));
    EXPECT_TRUE(fs::exists("out/a.pdf") && !fs::exists("c.pdf"));
}

TEST_F(RunRecords, HoldChecksumsThatTheSystemsOwnProgramTakes)
{
    fs::rename("in/sub/a.pdf", "in/sub/b\\ new\nline.pdf");
    EXPECT_EQ(terminal::run("run -p 1 -r in -d out --checksums sums").status, 0);
    EXPECT_EQ(check("sums"), 0) << support::readFile("check.log");
    const std::string sums = support::readFile("sums");
    EXPECT_THAT(sums, AllOf(HasSubstr("# from " + digestOf("in/a.pdf") + "  in/a.pdf\n"),
                            HasSubstr("\n" + digestOf("out/a.pdf") + "  out/a.pdf\n"),
                            HasSubstr("  out/sub/b\\\\ new\\nline.pdf\n")));
    scratch.write("out/a.pdf", "other");
    EXPECT_NE(check("sums"), 0);
    EXPECT_THAT(support::readFile("check.log"),
                AllOf(HasSubstr("out/a.pdf: FAILED"), Not(HasSubstr("sub"))));
}

TEST_F(RunRecords, AreNothingForADryRun)
{
    for (const char* record : {"--certificate c.pdf", "--checksums sums"}) {
        EXPECT_EQ(terminal::run("run -p 1 in/a.pdf --dry-run " + std::string(record)).status, 2);
    }
}

} // namespace
