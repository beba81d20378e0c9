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

class SharedResources : public support::DeletedFrom {};

TEST_P(SharedResources, AreLeftToThoseWhoUseThem)
{
    support::expectFound(GetParam());
}

const std::vector<std::string> sharing = {"/Contents @c1 /Resources @res",
                                          "/Contents @c2 /Resources @res"};

const SketchCase cases[] = {
    {"one_dictionary_for_all_pages",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /B @b /Both @both /Nobody @nobody >> >>"},
       {"c1", "|/A Do /Both Do"},
       {"c2", "|/B Do /Both Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj"),
       form("both", "(Kept) Tj"),
       form("nobody", "(Kept) Tj")}},
     {1},
     {{"p1/Resources/XObject/A", "nothing"},
      {"p1/Resources/XObject/B", "stream"},
      {"p1/Resources/XObject/Both", "stream"},
      {"p1/Resources/XObject/Nobody", "stream"}},
     {"SECRET"}},
    {"inherited_from_the_page_tree",
     {{"/Contents @c1", "/Contents [@c2a @c2b]"},
      "",
      {{"c1", "|/A Do"},
       {"c2a", "|q"},
       {"c2b", "|/B Do Q"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")},
      "/Resources << /XObject << /A @a /B @b >> >>"},
     {1},
     {{"Root/Pages/Resources/XObject/A", "nothing"}, {"Root/Pages/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"inherited_dictionary_with_a_number",
     {{"/Contents @c1", "/Contents @c2"},
      "",
      {{"res", "<< /XObject @x >>"},
       {"x", "<< /A @a /B @b >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")},
      "/Resources @res"},
     {1},
     {{"Root/Pages/Resources/XObject/A", "nothing"}, {"Root/Pages/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"only_a_category_is_shared",
     {{"/Contents @c1 /Resources << /XObject @x >>", "/Contents @c2 /Resources @res"},
      "",
      {{"res", "<< /XObject @x >>"},
       {"x", "<< /A @a /B @b >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {1},
     {{"p1/Resources/XObject/A", "nothing"}, {"p1/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"every_category_that_can_hold_content",
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
     {1},
     {{"p1/Resources/Pattern/P2", "stream"},
      {"p1/Resources/Shading/S2/X", "(Kept)"},
      {"p1/Resources/Properties/M2/Text", "(Kept)"},
      {"p1/Resources/ExtGState/G2", "dictionary"},
      {"p1/Resources/Font/F1", "dictionary"}},
     {"SECRET"}},
    {"forms_that_draw_with_the_page_s_resources",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /A2 @a2 /B @b /B2 @b2 >> >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "/A2 Do"),
       form("a2", "(SECRET) Tj"),
       form("b", "/B2 Do"),
       form("b2", "(Kept) Tj")}},
     {1},
     {{"p1/Resources/XObject/A2", "nothing"}, {"p1/Resources/XObject/B2", "stream"}},
     {"SECRET"}},
    {"forms_that_share_the_dictionary_they_stand_in",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /A2 @a2 /B @b /B2 @b2 >> >>"},
       {"c1", "|/A Do"},
       {"c2", "|/B Do"},
       form("a", "/A2 Do /A Do", "/Resources @res"),
       form("a2", "(SECRET) Tj"),
       form("b", "/B2 Do", "/Resources @res"),
       form("b2", "(Kept) Tj")}},
     {1},
     {{"p1/Resources/XObject/A", "nothing"},
      {"p1/Resources/XObject/A2", "nothing"},
      {"p1/Resources/XObject/B2", "stream"}},
     {"SECRET"}},
    {"form_of_a_page_that_has_other_resources",
     {{"/Contents @c1 /Resources @res", "/Contents @c2 /Resources << /XObject << /F @f >> >>"},
      "",
      {{"res", "<< /XObject << /A @a /B @b >> >>"},
       {"c1", "|/A Do /B Do"},
       {"c2", "|/F Do"},
       form("f", "/B Do", "/Resources @res"),
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {1},
     {{"p1/Resources/XObject/F/Resources/XObject/A", "nothing"},
      {"p1/Resources/XObject/F/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"appearance_without_resources",
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
     {1},
     {{"p1/Resources/XObject/A", "nothing"}, {"p1/Resources/XObject/B", "stream"}},
     {"SECRET"}},
    {"name_that_is_written_in_another_way",
     {sharing,
      "",
      {{"res", "<< /XObject << /A @a /B#20C @b >> >>"},
       {"c1", "|/A Do /B#20C Do"},
       {"c2", "|/#42#20#43 Do"},
       form("a", "(SECRET) Tj"),
       form("b", "(Kept) Tj")}},
     {1},
     {{"p1/Resources/XObject/A", "nothing"}},
     {"SECRET"}},
    {"removed_pages_share_among_themselves",
     {{"/Contents @c1 /Resources @res", "/Contents @c1 /Resources @res", ""},
      "",
      {{"res", "<< /XObject << /A @a >> >>"}, {"c1", "|/A Do"}, form("a", "(SECRET) Tj")}},
     {2, 1},
     {},
     {"SECRET"}},
};

INSTANTIATE_TEST_SUITE_P(Deletion, SharedResources, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

struct Unclear {
    const char* name;
    Sketch document;
};

void PrintTo(const Unclear& value, std::ostream* out)
{
    *out << value.name;
}

class UnclearResources : public testing::TestWithParam<Unclear> {};

TEST_P(UnclearResources, StayAndEarnAWarning)
{
    auto document = support::opened(GetParam().document.built());
    ASSERT_TRUE(karvel::pages::deletePages(*document, {1, 1}).has_value());
    const std::string saved = support::savedIn(*document, karvel::saving::Way::CopyUnchanged);
    EXPECT_EQ(support::valueAt(saved, "p1/Resources/XObject/A"), "stream");
    EXPECT_THAT(document->warnings(), testing::Contains(testing::HasSubstr("were kept")));
}

INSTANTIATE_TEST_SUITE_P(Deletion, UnclearResources,
                         testing::Values(Unclear{"content_that_cannot_be_decoded",
                                                 {sharing,
                                                  "",
                                                  {{"res", "<< /XObject << /A @a >> >>"},
                                                   {"c1", "|/A Do"},
                                                   {"c2", "/Filter /FlateDecode|no deflated data"},
                                                   form("a", "(Kept) Tj")}}},
                                         Unclear{"content_that_can_be_decoded_in_part",
                                                 {sharing,
                                                  "",
                                                  {{"res", "<< /XObject << /A @a >> >>"},
                                                   {"c1", "|/A Do"},
                                                   {"c2", "/Filter /ASCIIHexDecode|71205120 ZZ "
                                                          "2F4120446F>"},
                                                   form("a", "(Kept) Tj")}}},
                                         Unclear{"removed_content_with_an_unknown_filter",
                                                 {sharing,
                                                  "",
                                                  {{"res", "<< /XObject << /A @a >> >>"},
                                                   {"c1", "/Filter /Unheard|/A Do"},
                                                   {"c2", "|q Q"},
                                                   form("a", "(Kept) Tj")}}},
                                         Unclear{"dictionary_that_something_else_refers_to",
                                                 {sharing,
                                                  "/Something << /Resources @res >>",
                                                  {{"res", "<< /XObject << /A @a >> >>"},
                                                   {"c1", "|/A Do"},
                                                   {"c2", "|q Q"},
                                                   form("a", "(Kept) Tj")}}}),
                         [](const auto& info) { return info.param.name; });

} // namespace
