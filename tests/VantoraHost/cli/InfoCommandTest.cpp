#include "Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

QJsonObject infoOf(const std::string& file)
{
    const auto answer = terminal::run("info --json " + file);
    EXPECT_EQ(terminal::lines(answer.out).size(), 1U) << answer.err;
    return terminal::objects(answer.out).at(0);
}

class Info : public InOwnFolder {};

TEST_F(Info, OfAPlainDocumentSaysWhatItHasNot)
{
    support::PagedDocument pages(3);
    pages.builder.setTrailerEntries("/Info << /Title (\xfe\xff\x20\xac) >>");
    const std::string document = pages.build();
    scratch.write("plain.pdf", document);
    const QJsonObject info = infoOf("plain.pdf");
    EXPECT_EQ(info["status"].toString(), "done");
    EXPECT_EQ(info["bytes"].toInt(), static_cast<int>(document.size()));
    EXPECT_EQ(info["pages"].toInt(), 3);
    EXPECT_EQ(info["version"].toString(), "1.7");
    EXPECT_EQ(info["encryption"].toString(), "none");
    EXPECT_EQ(info["permitted"].toArray().size(), 8);
    EXPECT_EQ(info["title"].toString(), QString(QChar(0x20AC)));
    for (const char* key :
         {"outline_entries", "form_fields", "signatures", "attachments", "layers"}) {
        EXPECT_EQ(info[key].toInt(-1), 0) << key;
    }
    EXPECT_FALSE(info["tagged"].toBool(true));
    EXPECT_FALSE(info["linearised"].toBool(true));
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
    const QJsonObject info = infoOf("rich.pdf");
    EXPECT_EQ(info["outline_entries"].toInt(), 1);
    EXPECT_EQ(info["form_fields"].toInt(), 2);
    EXPECT_EQ(info["signatures"].toInt(), 1);
    EXPECT_EQ(info["layers"].toInt(), 1);
    EXPECT_TRUE(info["tagged"].toBool());
    EXPECT_TRUE(info["linearised"].toBool());
}

TEST_F(Info, GroupsPagesBySizeAsTheyAreShown)
{
    scratch.write("mixed.pdf", support::rewritten(support::documentOfPages(3), "--rotate=90:2"));
    const QJsonArray sizes = infoOf("mixed.pdf")["page_sizes"].toArray();
    ASSERT_EQ(sizes.size(), 2);
    EXPECT_EQ(sizes[0]["width"].toDouble(), 612);
    EXPECT_EQ(sizes[0]["height"].toDouble(), 792);
    EXPECT_EQ(sizes[0]["pages"].toInt(), 2);
    EXPECT_EQ(sizes[0]["paper"].toString(), "Letter");
    EXPECT_EQ(sizes[1]["width"].toDouble(), 792);
    EXPECT_EQ(sizes[1]["first_page"].toInt(), 2);
}

TEST_F(Info, TellsEncryptionAndWhatIsPermitted)
{
    scratch.write("limited.pdf", support::rewritten(support::documentOfPages(1),
                                                    "--encrypt '' owner 256 --modify=none --"));
    const QJsonObject info = infoOf("limited.pdf");
    EXPECT_EQ(info["encryption"].toString(), "AES 256 bits");
    EXPECT_TRUE(info["permitted"].toArray().contains("printing"));
    EXPECT_FALSE(info["permitted"].toArray().contains("assembling"));
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
