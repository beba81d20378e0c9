#include "KarvelPDFLibrary/metadata/Xmp.h"

#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>
#include <qpdf/QUtil.hh>

namespace {

using namespace karvel;
using namespace karvel::metadata;

constexpr const char* dc = "http://purl.org/dc/elements/1.1/";
constexpr const char* xmp = "http://ns.adobe.com/xap/1.0/";

std::unique_ptr<Document> withPacket(const std::string& packet)
{
    return support::opened(support::Sketch{
        {""}, "/Metadata @xmp", {{"xmp", "/Type /Metadata /Subtype /XML|" + packet}}}
                               .built());
}

std::string packetOf(const std::string& descriptions)
{
    return "<?xpacket begin='\xef\xbb\xbf' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
           "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
           "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>" +
           descriptions + "</rdf:RDF></x:xmpmeta>\n<?xpacket end='w'?>";
}

const std::string sample = packetOf(
    "<rdf:Description rdf:about='' xmlns:a='http://ns.adobe.com/xap/1.0/' a:CreatorTool='Pen'>"
    "<a:Label>&lt;one&gt; \xc3\xa9</a:Label><a:BaseURL rdf:resource='http://example.org/'/>"
    "<a:Rating><rdf:Description><rdf:value>3</rdf:value></rdf:Description></a:Rating>"
    "</rdf:Description>"
    "<rdf:Description rdf:about='' xmlns:d='http://purl.org/dc/elements/1.1/'>"
    "<d:creator><rdf:Seq><rdf:li>A</rdf:li><rdf:li>B</rdf:li></rdf:Seq></d:creator>"
    "<d:title><rdf:Alt><rdf:li xml:lang='x-default'>T</rdf:li></rdf:Alt></d:title>"
    "</rdf:Description>");

struct Row {
    const char* name;
    PropertyName property;
    const char* text;
    std::vector<std::string> items;
};

TEST(Properties, AreRead)
{
    const Row rows[] = {{"attribute", {xmp, "CreatorTool"}, "Pen", {}},
                        {"element", {xmp, "Label"}, "<one> \xc3\xa9", {}},
                        {"resource", {xmp, "BaseURL"}, "http://example.org/", {}},
                        {"with qualifiers", {xmp, "Rating"}, "3", {}},
                        {"sequence", {dc, "creator"}, "", {"A", "B"}},
                        {"language alternatives", {dc, "title"}, "", {"T"}},
                        {"absent", {dc, "Label"}, "", {}},
                        {"other namespace", {"http://example.org/", "Label"}, "", {}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = withPacket(sample);
        EXPECT_EQ(xmpProperty(*document, row.property).value(), row.text);
        EXPECT_EQ(xmpItems(*document, row.property).value(), row.items);
    }
}

TEST(Xmp, IsAbsent)
{
    auto document = support::opened(support::documentOfPages(1));
    EXPECT_FALSE(hasXmpPacket(*document));
    EXPECT_EQ(xmpPacket(*document).value(), "");
    EXPECT_EQ(xmpProperty(*document, {dc, "title"}).value(), "");
    EXPECT_TRUE(xmpItems(*document, {dc, "title"}).value().empty());
    EXPECT_TRUE(conformanceClaims(*document).value().empty());
}

TEST(Xmp, IsReadInUtf16)
{
    auto document = withPacket(QUtil::utf8_to_utf16(sample));
    EXPECT_TRUE(hasXmpPacket(*document));
    EXPECT_EQ(xmpProperty(*document, {xmp, "Label"}).value(), "<one> \xc3\xa9");
    EXPECT_NE(xmpPacket(*document).value().find("\xc3\xa9</a:Label>"), std::string::npos);
}

TEST(Xmp, ThatIsNoXmlIsAnErrorNotACrash)
{
    std::string billionLaughs = "<!DOCTYPE x [<!ENTITY a 'ha'>";
    for (char name = 'b'; name < 'n'; ++name) {
        billionLaughs += std::string("<!ENTITY ") + name + " '";
        for (int i = 0; i < 10; ++i) {
            billionLaughs += std::string("&") + static_cast<char>(name - 1) + ";";
        }
        billionLaughs += "'>";
    }
    billionLaughs += "]>" + packetOf("<rdf:Description xmlns:d='http://purl.org/dc/elements/1.1/'>"
                                     "<d:title>&m;</d:title></rdf:Description>")
                                .substr(60);
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    for (const std::string& packet :
         {std::string("no XML"), std::string("<a>"), deep, billionLaughs, std::string("\0\0", 2)}) {
        auto document = withPacket(packet);
        const auto title = xmpProperty(*document, {dc, "title"});
        ASSERT_FALSE(title.has_value()) << packet.substr(0, 20);
        EXPECT_EQ(title.error().code, ErrorCode::BadSyntax);
    }
}

TEST(Xmp, ClaimsConformance)
{
    auto document = withPacket(
        packetOf("<rdf:Description xmlns:p='http://www.aiim.org/pdfa/ns/id/' p:part='2' "
                 "p:conformance='B'/>"
                 "<rdf:Description xmlns:u='http://www.aiim.org/pdfua/ns/id/'><u:part>1</u:part>"
                 "</rdf:Description>"
                 "<rdf:Description xmlns:x='http://www.npes.org/pdfx/ns/id/' "
                 "x:GTS_PDFXVersion='PDF/X-4'/>"));
    EXPECT_EQ(conformanceClaims(*document).value(),
              (std::vector<std::string>{"PDF/A-2b", "PDF/UA-1", "PDF/X-4"}));
}

} // namespace
