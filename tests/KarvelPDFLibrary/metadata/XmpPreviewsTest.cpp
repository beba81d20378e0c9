#include "KarvelPDFLibrary/metadata/XmpPreviews.h"

#include "tests/KarvelPDFLibrary/deletion/SketchCase.h"

#include <gmock/gmock.h>
#include <qpdf/QUtil.hh>

namespace {

using namespace karvel;
using testing::HasSubstr;
using testing::Not;

std::string packet(const std::string& entries)
{
    return "<?xpacket begin='\xef\xbb\xbf' id='W5M0MpCehiHzreSzNTczkc9d'?>\n<x:xmpmeta "
           "xmlns:x='adobe:ns:meta/'><rdf:RDF "
           "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
           "xmlns:xmp='http://ns.adobe.com/xap/1.0/' "
           "xmlns:other='urn:other'><rdf:Description rdf:about=''>" +
           entries + "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end='w'?>";
}

const std::string kept = "<xmp:Label>\xc3\xa9t\xc3\xa9 &amp; co</xmp:Label>";

TEST(XmpPreviews, GoWhereverTheyStand)
{
    const std::pair<const char*, std::string> rows[] = {
        {"usual", "<xmp:Thumbnails><rdf:Alt><rdf:li>SECRET</rdf:li></rdf:Alt></xmp:Thumbnails>"},
        {"twice", "<xmp:Thumbnails>SECRET</xmp:Thumbnails><xmp:Thumbnails>SECRET</xmp:Thumbnails>"},
        {"other prefix",
         "<a:Thumbnails xmlns:a='http://ns.adobe.com/xap/1.0/'>SECRET</a:Thumbnails>"},
        {"inside of another property",
         "<other:Sources><rdf:Bag><rdf:li rdf:parseType='Resource'><xmp:Thumbnails>SECRET"
         "</xmp:Thumbnails></rdf:li></rdf:Bag></other:Sources>"},
        {"picture in a property of another name",
         "<other:Page><g:image xmlns:g='http://ns.adobe.com/xap/1.0/g/img/'>SECRET</g:image>"
         "</other:Page>"}};
    for (const auto& [name, preview] : rows) {
        SCOPED_TRACE(name);
        const std::string whole = packet(preview + kept);
        EXPECT_TRUE(metadata::mayHavePreviews(whole));
        const auto left = metadata::withoutPreviews(whole);
        ASSERT_TRUE(left.has_value());
        EXPECT_THAT(*left, Not(HasSubstr("SECRET")));
        EXPECT_THAT(*left, HasSubstr(kept));
        EXPECT_THAT(*left, HasSubstr("<?xpacket begin='\xef\xbb\xbf'"));
        EXPECT_THAT(*left, HasSubstr("<?xpacket end='w'?>"));
        EXPECT_THAT(*left, Not(HasSubstr("<?xml")));
    }
}

TEST(XmpPreviews, OfOtherEncodingsGoToo)
{
    const std::string utf8 = packet("<xmp:Thumbnails>SECRET</xmp:Thumbnails>" + kept);
    const std::string utf16 = QUtil::utf8_to_utf16(utf8);
    EXPECT_TRUE(metadata::mayHavePreviews(utf16));
    const auto left = metadata::withoutPreviews(utf16);
    ASSERT_TRUE(left.has_value());
    const std::string text = QUtil::is_utf16(*left) ? QUtil::utf16_to_utf8(*left) : *left;
    EXPECT_THAT(text, Not(HasSubstr("SECRET")));
    EXPECT_THAT(text, HasSubstr(kept));
}

TEST(XmpPreviews, LeaveEveryOtherPacketByteForByte)
{
    for (const std::string& entries : {kept, "<other:Thumbnails>kept</other:Thumbnails>" + kept,
                                       kept + "<other:x>&#233;</other:x>"}) {
        EXPECT_EQ(metadata::withoutPreviews(packet(entries)), packet(entries));
    }
    EXPECT_FALSE(metadata::mayHavePreviews(packet(kept)));
}

struct Packet {
    const char* name;
    std::string stream;
    const char* metadata; // what is left of it
    bool warns;
};

TEST(XmpPreviews, OfADocumentGoWithAnyPage)
{
    const std::string preview = "<xmp:Thumbnails>SECRET</xmp:Thumbnails>";
    const Packet rows[] = {
        {"well-formed", "/Type /Metadata|" + packet(preview), "stream", false},
        {"not well-formed", "/Type /Metadata|" + packet(preview + "<x>"), "nothing", true},
        {"cannot be decoded", "/Type /Metadata /Filter /Unheard|" + packet(preview), "nothing",
         true},
        {"without pictures and not well-formed", "/Type /Metadata|" + packet("<x>"), "stream",
         false}};
    for (const Packet& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string pdf =
            support::Sketch{{"", ""}, "/Metadata @xmp", {{"xmp", row.stream}}}.built();
        auto document = support::opened(pdf);
        ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
        const std::string saved = support::savedIn(*document);
        EXPECT_EQ(support::valueAt(saved, "Root/Metadata"), row.metadata);
        EXPECT_THAT(saved, Not(HasSubstr("SECRET")));
        const auto warned = testing::Contains(HasSubstr("were removed, since"));
        EXPECT_EQ(testing::Value(document->warnings(), warned), row.warns);
    }
}

TEST(XmpPreviews, GoFromMetadataThatAnEncryptionLeavesClear)
{
    const std::string pdf = support::rewritten(
        support::Sketch{{"", ""},
                        "/Metadata @xmp",
                        {{"xmp", "/Type /Metadata /Subtype /XML|" +
                                     packet("<xmp:Thumbnails>SECRET</xmp:Thumbnails>" + kept)}}}
            .built(),
        "--encrypt u o 256 --cleartext-metadata --");
    for (const auto way : {saving::Way::CopyUnchanged, saving::Way::Rewrite}) {
        auto document = support::opened(pdf, "u");
        ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
        const std::string saved = support::savedIn(*document, way);
        EXPECT_EQ(support::problems(saved, "u"), "");
        EXPECT_THAT(saved, HasSubstr(kept)) << "clear in the file's bytes";
        EXPECT_THAT(support::everythingIn(saved, "u"), HasSubstr(kept));
    }
}

} // namespace
