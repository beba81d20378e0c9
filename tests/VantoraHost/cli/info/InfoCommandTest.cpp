#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

} // namespace
