#include "SketchCase.h"

namespace {

using support::Sketch;
using support::SketchCase;

/// A form that draws something; `rest` is further entries.
std::pair<std::string, std::string> form(const std::string& name, const std::string& content,
                                         const std::string& rest = {})
{
    return {name, "/Type /XObject /Subtype /Form /BBox [0 0 9 9] " + rest + "|" + content};
}

const std::vector<std::string> sharing = {"/Contents @c1 /Resources @res",
                                          "/Contents @c2 /Resources @res"};

const SketchCase cases[] = {
    {"one dictionary for all pages",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /B @b /Both @both /Nobody @nobody >> >>"},
       {"c1", "|/A Do /Both Do"},
       {"c2", "|/B Do /Both Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj"),
       form("both", "(Kept) Tj"),
       form("nobody", "(Kept) Tj")}},
     {{"p1/Resources/XObject/A", "nothing"},
      {"p1/Resources/XObject/B", "stream"},
      {"p1/Resources/XObject/Both", "stream"},
      {"p1/Resources/XObject/Nobody", "stream"}},
     {"SECRET"}},
    {"inherited from the page tree",
     {{"/Contents @c1", "/Contents [@c2a @c2b]"},
      "",
      {{"c1", "|/A Do"},
       {"c2a", "|q"},
       {"c2b", "|/B Do Q"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")},
      "/Resources << /XObject << /A @a /B @b >> >>"},
     {{"Root/Pages/Resources/XObject/A", "nothing"}, {"Root/Pages/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"inherited dictionary with a number",
     {{"/Contents @c1", "/Contents @c2"},
      "",
      {{"res", "<< /XObject @x >>"},
       {"x", "<< /A @a /B @b >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")},
      "/Resources @res"},
     {{"Root/Pages/Resources/XObject/A", "nothing"}, {"Root/Pages/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"only a category is shared",
     {{"/Contents @c1 /Resources << /XObject @x >>", "/Contents @c2 /Resources @res"},
      "",
      {{"res", "<< /XObject @x >>"},
       {"x", "<< /A @a /B @b >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {{"p1/Resources/XObject/A", "nothing"}, {"p1/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"every category that can hold content",
     {sharing,
      "",
      {{"res", "<< /Pattern << /P1 @p1a /P2 @p2a >> /Shading << /S1 << /X (SECRET-S) >> /S2 << /X "
               "(Kept) >> >> /Properties << /M1 << /Text (SECRET-M) >> /M2 << /Text (Kept) >> >> "
               "/ExtGState << /G1 << /SMask << /S /Alpha /G @mask >> >> /G2 << /CA 1 >> >> /Font "
               "<< /T1 @t1 /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >>"},
       {"c1",
        "|/Pattern cs /P1 scn /S1 sh /Span /M1 BDC EMC /G1 gs /G2 gs BT /T1 9 Tf /F1 9 Tf ET"},
       {"c2", "|/Pattern cs /P2 scn /S2 sh /Span /M2 BDC EMC"},
       {"p1a", "/PatternType 1|(SECRET-P) Tj"},
       {"p2a", "/PatternType 1|(Kept) Tj"},
       form("mask", "(SECRET-G) Tj"),
       {"t1", "<< /Type /Font /Subtype /Type3 /CharProcs << /a @glyph >> >>"},
       {"glyph", "|(SECRET-T) Tj"}}},
     {{"p1/Resources/Pattern/P2", "stream"},
      {"p1/Resources/Shading/S2/X", "(Kept)"},
      {"p1/Resources/Properties/M2/Text", "(Kept)"},
      {"p1/Resources/ExtGState/G2", "dictionary"},
      {"p1/Resources/Font/F1", "dictionary"}},
     {"SECRET"}},
    {"forms that draw with the page's resources",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /A2 @a2 /B @b /B2 @b2 >> >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "/A2 Do"),
       form("a2", "(SECRET) Tj"),
       form("b", "/B2 Do"),
       form("b2", "(Kept) Tj")}},
     {{"p1/Resources/XObject/A2", "nothing"}, {"p1/Resources/XObject/B2", "stream"}},
     {"SECRET"}},
    {"forms that share the dictionary they stand in",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /A2 @a2 /B @b /B2 @b2 >> >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "/A2 Do /A Do", "/Resources @res"),
       form("a2", "(SECRET) Tj"),
       form("b", "/B2 Do", "/Resources @res"),
       form("b2", "(Kept) Tj")}},
     {{"p1/Resources/XObject/A", "nothing"},
      {"p1/Resources/XObject/A2", "nothing"},
      {"p1/Resources/XObject/B2", "stream"}},
     {"SECRET"}},
    {"form of a page that has other resources",
     {{"/Contents @c1 /Resources @res", "/Contents @c2 /Resources << /XObject << /F @f >> >>"},
      "",
      {{"res", "<< /XObject << /A @a /B @b >> >>"},
       {"c1", "|/A Do /B Do"},
       {"c2", "|/F Do"},
       form("f", "/B Do", "/Resources @res"),
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {{"p1/Resources/XObject/F/Resources/XObject/A", "nothing"},
      {"p1/Resources/XObject/F/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"appearance without resources",
     {{"/Contents @c1 /Resources @res",
       "/Contents @c2 /Resources @res /Annots [<< /Type /Annot /Subtype /Stamp /Rect [0 0 9 9] /AP "
       "<< /N << /On @look >> >> >>]"},
      "",
      {{"res", "<< /XObject << /A @a /B @b >> >>"},
       {"c1", "|/A Do /B Do"},
       {"c2", "|q Q"},
       form("look", "/B Do"),
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {{"p1/Resources/XObject/A", "nothing"}, {"p1/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"name that is written in another way",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /B#20C @b >> >>"},
       {"c1", "|/A Do /B#20C Do"},
       {"c2", "|/#42#20#43 Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {{"p1/Resources/XObject/A", "nothing"}},
     {"SECRET"}},
    {"fonts, colour spaces and states that tell something",
     {sharing,
      "",
      {{"res",
        "<< /Font << /A << /Type /Font /Subtype /Type1 /BaseFont /SECRET >> /B << /Type /Font "
        "/Subtype /Type1 /BaseFont /Kept >> /C << /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
        ">> >> /ColorSpace << /A [/ICCBased @icc] /B [/Indexed /D 1 <0001>] /D [/CalGray << "
        "/WhitePoint [1 1 1] >>] /DefaultGray [/CalGray << /WhitePoint [1 1 1] >>] /N /DeviceRGB "
        ">> "
        "/ExtGState << /A << /Font [@f 9] >> /S << /LW 1 >> >> >>"},
       {"icc", "/N 1|SECRET"},
       {"f", "<< /Type /Font /Subtype /Type1 /BaseFont /SECRET-2 >>"},
       {"c1", "|BT /A 9 Tf /B 9 Tf /C 9 Tf ET /A cs /B cs /D cs /DefaultGray cs /N cs /A gs /S gs"},
       {"c2", "|BT /B 9 Tf ET /B cs"}}},
     {{"p1/Resources/Font/A", "nothing"},
      {"p1/Resources/Font/B/BaseFont", "/Kept"},
      {"p1/Resources/Font/C/BaseFont", "/Helvetica"},
      {"p1/Resources/ColorSpace/A", "nothing"},
      {"p1/Resources/ColorSpace/B", "array 4"},
      {"p1/Resources/ColorSpace/D", "array 2"},
      {"p1/Resources/ColorSpace/DefaultGray", "array 2"},
      {"p1/Resources/ColorSpace/N", "/DeviceRGB"},
      {"p1/Resources/ExtGState/A", "nothing"},
      {"p1/Resources/ExtGState/S", "dictionary"}},
     {"SECRET"}},
    {"fonts that glyphs and soft masks of the page draw with",
     {sharing,
      "",
      {{"res", "<< /Font << /A << /Subtype /TrueType /BaseFont /Kept-A >> /B << /Subtype /TrueType "
               "/BaseFont /Kept-B >> /T << /Subtype /Type3 /CharProcs << /a @glyph >> >> >> "
               "/ExtGState << /M << /SMask << /S /Alpha /G @mask >> >> >> >>"},
       {"glyph", "|BT /A 9 Tf ET"},
       form("mask", "BT /B 9 Tf ET"),
       {"c1", "|BT /A 9 Tf /B 9 Tf ET"},
       {"c2", "|/M gs BT /T 9 Tf ET"}}},
     {{"p1/Resources/Font/A", "dictionary"}, {"p1/Resources/Font/B", "dictionary"}}},
    {"font that a page far away uses",
     {{"/Contents @c1 /Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Contents @c2 /Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res",
       "/Resources @res"},
      "",
      {{"res", "<< /Font << /F1 << /Subtype /TrueType /BaseFont /Other >> /A << /Subtype /TrueType "
               "/BaseFont /Kept >> /B << /Subtype /TrueType /BaseFont /SECRET >> >> >>"},
       {"c1", "|BT /A 9 Tf /B 9 Tf ET"},
       {"c2", "|BT /A 9 Tf ET"}}},
     {{"p1/Resources/Font/A", "dictionary"},
      {"p1/Resources/Font/B", "nothing"},
      {"p1/Resources/Font/F1", "dictionary"}},
     {"SECRET"}},
    {"fonts that the form names",
     {sharing,
      "/AcroForm << /Fields [] /DR @res /DA (/A 9 Tf) >>",
      {{"res", "<< /Font << /A << /Subtype /TrueType /BaseFont /Kept >> >> >>"},
       {"c1", "|BT /A 9 Tf ET"},
       {"c2", "|q Q"}}},
     {{"p1/Resources/Font/A", "dictionary"}}},
    {"removed pages share among themselves",
     {{"/Contents @c1 /Resources @res", "/Contents @c1 /Resources @res", ""},
      "",
      {{"res", "<< /XObject << /A @a >> >>"}, {"c1", "|/A Do"}, form("a", "(SECRET) Tj")}},
     {},
     {"SECRET"},
     {2, 1}},
};

TEST(SharedResources, AreLeftToThoseWhoUseThem)
{
    support::expectFound(cases);
}

/// Two pages that share a dictionary: their content streams, and the catalog's entries.
struct Unclear {
    const char* name;
    const char* removed;
    const char* staying;
    const char* catalog;
};

TEST(SharedResources, StayAndEarnAWarningWhereTheirUseIsUnclear)
{
    const Unclear rows[] = {
        {"content that cannot be decoded", "|/A Do", "/Filter /FlateDecode|no deflated data", ""},
        {"content that can be decoded in part", "|/A Do",
         "/Filter /ASCIIHexDecode|71205120 ZZ 2F4120446F>", ""},
        {"removed content with an unknown filter", "/Filter /Unheard|/A Do", "|q Q", ""},
        {"dictionary that something else refers to", "|/A Do", "|q Q",
         "/Something << /Resources @res >>"}};
    for (const Unclear& row : rows) {
        SCOPED_TRACE(row.name);
        const Sketch sketch = {sharing,
                               row.catalog,
                               {{"res", "<< /XObject << /A @a >> >>"},
                                {"c1", row.removed},
                                {"c2", row.staying},
                                form("a", "(Kept) Tj")}};
        auto document = support::opened(sketch.built());
        ASSERT_TRUE(karvel::pages::deletePages(*document, {1, 1}).has_value());
        const std::string saved = support::savedIn(*document);
        EXPECT_EQ(support::valueAt(saved, "p1/Resources/XObject/A"), "stream");
        EXPECT_THAT(document->warnings(), testing::Contains(testing::HasSubstr("were kept")));
    }
}

} // namespace
