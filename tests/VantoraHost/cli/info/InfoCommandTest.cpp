#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using testing::HasSubstr;

std::string infoOf(const std::string& file)
{
    const auto answer = terminal::run("info --json " + file);
    EXPECT_EQ(terminal::lines(answer.out).size(), 1U) << answer.err;
    return answer.out;
}

class Info : public InOwnFolder {};

TEST_F(Info, OfAPlainDocumentSaysWhatItHasNot)
{
    support::PagedDocument pages(3);
    pages.builder.setTrailerEntries("/Info << /Title (\xfe\xff\x20\xac) >>");
    const std::string document = pages.build();
    scratch.write("plain.pdf", document);
    const std::string info = infoOf("plain.pdf");
    EXPECT_THAT(info, HasSubstr("\"status\":\"done\",\"bytes\":" + std::to_string(document.size()) +
                                ",\"pages\":3,"));
    EXPECT_THAT(info, HasSubstr(R"("version":"1.7","encryption":"none","permitted":["printing",)"
                                R"("modifying","copying","annotating","form filling",)"
                                R"("accessibility","assembling","full-quality printing"])"));
    EXPECT_THAT(info,
                HasSubstr(R"("title":"\u20ac","outline_entries":0,"form_fields":0,"tagged":false,)"
                          R"("signatures":0,"attachments":0,"layers":0,"linearised":false)"));
}

TEST_F(Info, CountsWhatADocumentHas)
{
    const std::string document =
        support::Sketch{{"", ""},
                        "/Outlines @outline /AcroForm << /Fields [<< /FT /Tx /T (name) >> << /FT "
                        "/Sig /T (signature) >>] >> /MarkInfo << /Marked true >> /OCProperties << "
                        "/D << >> /OCGs [@layer] >>",
                        {{"outline", "<< /First @entry /Last @entry /Count 1 >>"},
                         {"entry", "<< /Title (One) /Parent @outline >>"},
                         {"layer", "<< /Type /OCG /Name (Layer) >>"}}}
            .built();
    scratch.write("rich.pdf", support::rewritten(document, "--linearize"));
    EXPECT_THAT(infoOf("rich.pdf"),
                HasSubstr(R"("outline_entries":1,"form_fields":2,"tagged":true,"signatures":1,)"
                          R"("attachments":0,"layers":1,"linearised":true)"));
}

TEST_F(Info, GroupsPagesBySizeAsTheyAreShown)
{
    scratch.write("mixed.pdf", support::rewritten(support::documentOfPages(3), "--rotate=90:2"));
    EXPECT_THAT(
        infoOf("mixed.pdf"),
        HasSubstr(R"([{"width":612,"height":792,"paper":"Letter","first_page":1,"pages":2},)"
                  R"({"width":792,"height":612,"paper":"Letter","first_page":2,"pages":1}])"));
}

TEST_F(Info, TellsEncryptionAndWhatIsPermitted)
{
    scratch.write("limited.pdf", support::rewritten(support::documentOfPages(1),
                                                    "--encrypt '' owner 256 --modify=none --"));
    EXPECT_THAT(infoOf("limited.pdf"),
                HasSubstr(R"("encryption":"AES 256 bits","permitted":["printing","copying",)"
                          R"("accessibility","full-quality printing"])"));
    EXPECT_THAT(terminal::run("info limited.pdf").out, HasSubstr("not permitted"));
}

TEST_F(Info, IsALabelledSheetForPeople)
{
    terminal::Setting pipe;
    pipe.standardInput = support::documentOfPages(12);
    const auto answer = terminal::run("info -", pipe);
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.err, "");
    EXPECT_THAT(answer.out, HasSubstr("  pages         12\n"));
    EXPECT_THAT(answer.out, HasSubstr("  page size     612 x 792 pt (Letter), 12 pages\n"));
    EXPECT_THAT(answer.out, HasSubstr("  outline       none\n"));
}

TEST_F(Info, ShowsTheOthersWhenOneFails)
{
    scratch.write("a.pdf", support::documentOfPages(1));
    const auto text = terminal::run("info missing.pdf a.pdf");
    EXPECT_EQ(text.status, 1);
    EXPECT_THAT(text.out, HasSubstr("a.pdf\n"));
    EXPECT_THAT(terminal::lines(text.err),
                testing::ElementsAre(HasSubstr("missing.pdf: there is no such file")));
    const auto json = terminal::run("info --json missing.pdf a.pdf");
    EXPECT_THAT(terminal::lines(json.out),
                testing::ElementsAre(HasSubstr(R"("status":"failed")"), HasSubstr(R"("pages":1)")));
}

TEST_F(Info, ListsMoreWhereAsked)
{
    scratch.write(
        "rich.pdf",
        support::Sketch{
            {""},
            "/Outlines @outline /AcroForm << /Fields [@signed << /FT /Sig /T (seller) >>] >> "
            "/OCProperties << /D << >> /OCGs [@layer @unnamed] >> "
            "/Names << /EmbeddedFiles << /Names [(k) @file (key) << >>] >> >>",
            {{"outline", "<< /First @one /Last @two /Count 3 >>"},
             {"one", "<< /Title (One) /Parent @outline /First @below /Last @below /Next @two >>"},
             {"below", "<< /Title <FEFF0042001B0042> /Parent @one /Next @one >>"},
             {"two", "<< /Title (Two) /Parent @outline /First @two >>"},
             {"layer", "<< /Type /OCG /Name (Plan) >>"},
             {"unnamed", "<< /Type /OCG >>"},
             {"signed", "<< /FT /Sig /T (buyer) /V << /Name (Ann) /M (D:20240229120000Z) "
                        "/ByteRange [0 1 2 3] /Contents <00> >> >>"},
             {"file", "<< /Type /Filespec /F (f) /UF (bill.xml) >>"}}}
            .built());
    const auto plain = terminal::run("info rich.pdf");
    EXPECT_THAT(plain.out, HasSubstr("  signatures    2 fields\n"
                                     "                \"buyer\": signed, not checked; by Ann, "
                                     "2024-02-29T12:00:00+00:00; does not cover the whole file\n"
                                     "                \"seller\": not signed\n"
                                     "  attachments   2 files\n"
                                     "  layers        2 layers\n"));
    const auto listed = terminal::run("info -v rich.pdf");
    EXPECT_THAT(listed.out, testing::AllOf(HasSubstr("  outline       3 entries\n"
                                                     "                One\n"
                                                     "                  B\\x1bB\n"
                                                     "                Two\n"),
                                           HasSubstr("  attachments   2 files\n"
                                                     "                bill.xml\n"
                                                     "                key\n"),
                                           HasSubstr("  layers        2 layers\n"
                                                     "                Plan\n"
                                                     "                \n")));
    EXPECT_THAT(terminal::run("info -v --json rich.pdf").out,
                testing::AllOf(HasSubstr(R"("signature_fields":[{"field":"buyer","signed":true,)"
                                         R"("signer":"Ann","time":"2024-02-29T12:00:00+00:00",)"
                                         R"("covers_whole_file":false},{"field":"seller",)"
                                         R"("signed":false,"signer":null,"time":null,)"
                                         R"("covers_whole_file":null}])"),
                               HasSubstr(R"("attachment_names":["bill.xml","key"],)"
                                         R"("layer_names":["Plan",""],"outline":[)"
                                         R"({"level":1,"title":"One"},{"level":2,)")));
}

TEST_F(Info, IsOfManyDocumentsInTheirOrder)
{
    std::filesystem::create_directories("in/sub");
    for (const char* name : {"in/a.pdf", "in/b.pdf", "in/sub/c.pdf", "z.pdf"}) {
        scratch.write(name, support::documentOfPages(2));
    }
    scratch.write("in/bad.pdf", "no PDF");
    scratch.write("list", "z.pdf\nin/a.pdf\n");
    const std::vector<std::string> found = {"in/a.pdf", "in/b.pdf", "in/bad.pdf", "in/sub/c.pdf"};
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"-r in", found},
        {"-r in -j 0", found},
        {"-r in -j 3 --timeout 300 --memory-limit 2G", found},
        {"--files-from list", {"z.pdf", "in/a.pdf"}},
        {"in/b.pdf --files-from list", {"in/b.pdf", "z.pdf", "in/a.pdf"}},
    };
    for (const auto& [arguments, names] : rows) {
        const auto answer = terminal::run(std::string("info --json ") + arguments);
        EXPECT_EQ(answer.status, names == found ? 1 : 0) << arguments << answer.err;
        std::vector<std::string> shown;
        for (const QJsonObject& object : terminal::objects(answer.out)) {
            shown.push_back(object["input"].toString().toStdString());
            EXPECT_EQ(object["pages"].toInt(), shown.back() == "in/bad.pdf" ? 0 : 2) << arguments;
        }
        EXPECT_EQ(shown, names) << arguments;
    }
}

} // namespace
