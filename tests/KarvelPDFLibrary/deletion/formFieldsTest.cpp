#include "SketchCase.h"

namespace {

using support::SketchCase;

const std::string widget = "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] ";
const std::string field = widget + "/FT /Tx ";

/// Appearances with a state besides being off.
std::string shows(const std::string& state)
{
    return "/AP << /N << /" + state + " @look /Off @look >> >> ";
}
const std::pair<std::string, std::string> look = {"look",
                                                  "/Type /XObject /Subtype /Form /BBox [0 0 1 1]|"};

const SketchCase cases[] = {
    {"field that is its own widget",
     {{"/Annots [@one]", "/Annots [@two]"},
      "/AcroForm << /Fields [@one @two] /DA (/Helv 9 Tf) /DR << /Font << >> >> /CO [@one @two] >>",
      {{"one", field + "/T (SECRET-NAME) /V (SECRET-VALUE) /P @p1 >>"},
       {"two", field + "/T (Kept) /V (Kept) /P @p2 >>"}}},
     {{"Root/AcroForm/Fields", "array 1"},
      {"Root/AcroForm/Fields/0/T", "(Kept)"},
      {"Root/AcroForm/CO", "array 1"},
      {"Root/AcroForm/DA", "(/Helv 9 Tf)"},
      {"Root/AcroForm/DR", "dictionary"},
      {"p1/Annots/0/V", "(Kept)"}},
     {"SECRET"}},
    {"parents that become empty",
     {{"/Annots [@w1 @w2]", "/Annots [@other]"},
      "/AcroForm << /Fields @fields /CO [@leaf] >>",
      {{"fields", "[@top @other]"},
       {"top", "<< /T (SECRET-TOP) /Kids [@middle] >>"},
       {"middle", "<< /T (SECRET-MIDDLE) /Parent @top /Kids @kids >>"},
       {"kids", "[@leaf]"},
       {"leaf", "<< /T (SECRET-LEAF) /FT /Tx /V (SECRET-VALUE) /Parent @middle /Kids [@w1 @w2] >>"},
       {"w1", widget + "/Parent @leaf >>"},
       {"w2", widget + "/Parent @leaf >>"},
       {"other", field + "/T (Kept) >>"}}},
     {{"Root/AcroForm/Fields", "array 1"},
      {"Root/AcroForm/Fields/0/T", "(Kept)"},
      {"Root/AcroForm/CO", "nothing"}},
     {"SECRET"}},
    {"parent with a field that stays",
     {{"/Annots [@one]", "/Annots [@two]"},
      "/AcroForm << /Fields [@top] >>",
      {{"top", "<< /T (Top) /Kids [@one @two] >>"},
       {"one", field + "/T (SECRET) /Parent @top >>"},
       {"two", field + "/T (Kept) /Parent @top >>"}}},
     {{"Root/AcroForm/Fields/0/Kids", "array 1"}, {"Root/AcroForm/Fields/0/Kids/0/T", "(Kept)"}},
     {"SECRET"}},
    {"parents of one another",
     {{"/Annots [@one]", ""},
      "/AcroForm << /Fields [@top] >>",
      {{"top", "<< /T (Top) /Parent @middle /Kids [@middle] >>"},
       {"middle", "<< /T (Middle) /Parent @top /Kids [@top @one] >>"},
       {"one", field + "/T (SECRET) /Parent @middle >>"}}},
     {{"Root/AcroForm/Fields/0/Kids/0/Kids", "array 1"}},
     {"SECRET"}},
    {"form without fields",
     {{"/Annots [@one]", ""},
      "/AcroForm @form",
      {{"form", "<< /Fields [@one] /DA (SECRET-DA) >>"}, {"one", field + "/T (SECRET) >>"}}},
     {{"Root/AcroForm", "nothing"}},
     {"SECRET"}},
    {"form that had no fields before",
     {{"", ""}, "/AcroForm << /Fields [] /DA (Kept) >>", {}},
     {{"Root/AcroForm/DA", "(Kept)"}}},
    {"field that never had a widget",
     {{"/Annots [@one]", ""},
      "/AcroForm << /Fields [@one @hidden] >>",
      {{"one", field + "/T (SECRET) >>"}, {"hidden", "<< /FT /Tx /T (Hidden) /V (Kept) >>"}}},
     {{"Root/AcroForm/Fields", "array 1"}, {"Root/AcroForm/Fields/0/V", "(Kept)"}},
     {"SECRET"}},
    {"widgets that are left are on no page",
     {{"/Annots [@w1]", "/Annots [@other]"},
      "/AcroForm << /Fields [@field @other] >>",
      {{"field", "<< /FT /Tx /T (SECRET) /V (SECRET-VALUE) /Kids [@w1 @w2] >>"},
       {"w1", widget + "/Parent @field >>"},
       {"w2", widget + "/Parent @field >>"},
       {"other", field + "/T (Kept) >>"}}},
     {{"Root/AcroForm/Fields", "array 1"}},
     {"SECRET"}},
    {"kid that is no object and so on no page",
     {{"/Annots [@w1]", "/Annots [@other]"},
      "/AcroForm << /Fields [@field @other] >>",
      {{"field", "<< /FT /Tx /T (SECRET) /V (SECRET) /Kids [@w1 << /Parent @field >>] >>"},
       {"w1", widget + "/Parent @field >>"},
       {"other", field + "/T (Kept) >>"}}},
     {{"Root/AcroForm/Fields", "array 1"}},
     {"SECRET"}},
    {"field that a page lists itself",
     {{"/Annots [@field @w1]", "/Annots [@w2]"},
      "/AcroForm << /Fields [@field] >>",
      {{"field", widget + "/P @p1 /MK << /CA (SECRET) >> /FT /Tx /T (Kept) /V (Kept) /Kids [@w1 "
                          "@w2] >>"},
       {"w1", widget + "/Parent @field >>"},
       {"w2", widget + "/Parent @field >>"}}},
     {{"Root/AcroForm/Fields/0/T", "(Kept)"},
      {"Root/AcroForm/Fields/0/V", "(Kept)"},
      {"Root/AcroForm/Fields/0/Kids", "array 1"},
      {"Root/AcroForm/Fields/0/Subtype", "nothing"}},
     {"SECRET"}},
    {"chosen radio button goes",
     {{"/Annots [@w1]", "/Annots [@w2 @w3]"},
      "/AcroForm << /Fields [@field] >>",
      {{"field", "<< /FT /Btn /Ff 49152 /T (Choice) /V /SECRET /DV /SECRET /Kids [@w1 @w2 @w3] >>"},
       {"w1", widget + "/Parent @field /AS /SECRET " + shows("SECRET") + ">>"},
       {"w2", widget + "/Parent @field /AS /Off " + shows("Second") + ">>"},
       {"w3", widget + "/Parent @field /AS /Off " + shows("Third") + ">>"},
       look}},
     {{"Root/AcroForm/Fields/0/V", "/Off"}, {"Root/AcroForm/Fields/0/DV", "nothing"}},
     {"SECRET"}},
    {"chosen radio button stays",
     {{"/Annots [@w1]", "/Annots [@w2]"},
      "/AcroForm << /Fields [@top] >>",
      {{"top", "<< /FT /Btn /T (Top) /Kids [@field] >>"},
       {"field", "<< /T (Choice) /V /Second /Parent @top /Kids [@w1 @w2] >>"},
       {"w1", widget + "/Parent @field /AS /Off " + shows("SECRET") + ">>"},
       {"w2", widget + "/Parent @field /AS /Second " + shows("Second") + ">>"},
       look}},
     {{"Root/AcroForm/Fields/0/Kids/0/V", "/Second"},
      {"Root/AcroForm/Fields/0/Kids/0/Kids", "array 1"}},
     {"SECRET"}},
    {"state that another widget has too",
     {{"/Annots [@w1]", "/Annots [@w2]"},
      "/AcroForm << /Fields [@field] >>",
      {{"field", "<< /FT /Btn /T (Box) /V /Yes /Kids [@w1 @w2] >>"},
       {"w1", widget + "/Parent @field /AS /Yes " + shows("Yes") + ">>"},
       {"w2", widget + "/Parent @field /AS /Yes " + shows("Yes") + ">>"},
       look}},
     {{"Root/AcroForm/Fields/0/V", "/Yes"}}},
    {"export values by number",
     {{"/Annots [@w1]", "/Annots [@w2]", "/Annots [@w3]"},
      "/AcroForm << /Fields [@field] >>",
      {{"field", "<< /FT /Btn /Ff 49152 /T (Choice) /V /2 /DV /1 /Kids [@w1 @w2 @w3] "
                 "/Opt [(SECRET) (Second) (Third)] >>"},
       {"w1", widget + "/Parent @field /AS /Off " + shows("0") + ">>"},
       {"w2", widget + "/Parent @field /AS /Off " + shows("1") + ">>"},
       {"w3", widget + "/Parent @field /AS /2 /AP @ap >>"},
       {"ap", "<< /N @states /D @states >>"},
       {"states", "<< /2 @look /Off @look >>"},
       look}},
     {{"Root/AcroForm/Fields/0/V", "/1"},
      {"Root/AcroForm/Fields/0/DV", "/0"},
      {"Root/AcroForm/Fields/0/Opt", "array 2"},
      {"Root/AcroForm/Fields/0/Opt/0", "(Second)"},
      {"p1/Annots/0/AP/N/0", "stream"},
      {"p1/Annots/0/AP/N/1", "nothing"},
      {"p2/Annots/0/AS", "/1"},
      {"p2/Annots/0/AP/N/1", "stream"},
      {"p2/Annots/0/AP/D/1", "stream"},
      {"p2/Annots/0/AP/N/2", "nothing"}},
     {"SECRET"}},
    {"export values by name",
     {{"/Annots [@w1]", "/Annots [@w2]"},
      "/AcroForm << /Fields [@field] >>",
      {{"field", "<< /FT /Btn /T (Choice) /V /B /Kids [@w1 @w2] /Opt [(SECRET) (Second)] >>"},
       {"w1", widget + "/Parent @field /AS /Off " + shows("A") + ">>"},
       {"w2", widget + "/Parent @field /AS /B " + shows("B") + ">>"},
       look}},
     {{"Root/AcroForm/Fields/0/V", "/B"},
      {"Root/AcroForm/Fields/0/Opt", "array 1"},
      {"p1/Annots/0/AP/N/B", "stream"}},
     {"SECRET"}},
    {"list of choices is no list of states",
     {{"/Annots [@w1]", "/Annots [@w2]"},
      "/AcroForm << /Fields [@field] >>",
      {{"field", "<< /FT /Ch /T (Choice) /V (One) /Kids [@w1 @w2] /Opt [(One) (Two)] >>"},
       {"w1", widget + "/Parent @field >>"},
       {"w2", widget + "/Parent @field >>"}}},
     {{"Root/AcroForm/Fields/0/Opt", "array 2"}}},
};

TEST(FormFields, LoseTheirWidgetsOnRemovedPages)
{
    support::expectFound(cases);
}

struct XfaCase {
    const char* catalog;
    std::vector<int> removed;
    std::vector<std::pair<const char*, const char*>> found;
    const char* warning;
};

TEST(FormFields, StayWithoutXfaDataWhereTheFormWorksWithoutIt)
{
    const std::string hybrid = "/AcroForm << /Fields [@one @two] /XFA [(datasets) @xfa] >> "
                               "/Names << /XFAImages << /Names [(logo) @xfa] >> >>";
    const std::string shown = hybrid + " /NeedsRendering true";
    const XfaCase given[] = {
        {hybrid.c_str(),
         {1},
         {{"Root/AcroForm/XFA", "nothing"},
          {"Root/AcroForm/Fields", "array 1"},
          {"Root/Names/XFAImages", "nothing"}},
         "was removed"},
        {hybrid.c_str(), {2, 1}, {{"Root/AcroForm", "nothing"}}, "was removed"},
        {"/AcroForm << /Fields [] /XFA @xfa >>",
         {1},
         {{"Root/AcroForm/XFA", "stream"}},
         "left as it is"},
        {shown.c_str(),
         {2, 1},
         {{"Root/AcroForm/XFA/1", "stream"}, {"Root/AcroForm/Fields", "array 0"}},
         "left as it is"}};
    for (const XfaCase& xfa : given) {
        SCOPED_TRACE(xfa.catalog);
        const support::Sketch sketch = {{"/Annots [@one]", "/Annots [@two]", ""},
                                        xfa.catalog,
                                        {{"one", field + "/T (One) >>"},
                                         {"two", field + "/T (Two) >>"},
                                         {"xfa", "|<one>SECRET</one>"}}};
        const std::string saved = support::withoutPages(sketch.built(), xfa.removed);
        for (const auto& [path, value] : xfa.found) {
            EXPECT_EQ(support::valueAt(saved, path), value) << path;
        }
        const bool stays = support::valueAt(saved, "Root/AcroForm/XFA") != "nothing";
        EXPECT_EQ(support::everythingIn(saved).find("SECRET") != std::string::npos, stays);
        auto document = support::opened(sketch.built());
        document->removePages({1, 1});
        ASSERT_TRUE(karvel::deletion::synchronize(*document).has_value());
        EXPECT_THAT(document->warnings(), testing::ElementsAre(testing::HasSubstr(xfa.warning)));
    }
}

/// A chain of fields, each the only kid of the one above, with a widget at its end.
TEST(FormFields, GoAtAnyDepth)
{
    constexpr int depth = 20000;
    const auto name = [](int i) { return "f" + std::to_string(i); };
    support::Sketch sketch = {{"/Annots [@" + name(depth) + "]", ""},
                              "/AcroForm << /Fields [@f0] >>",
                              {{name(depth), field + "/Parent @" + name(depth - 1) + " >>"}}};
    for (int i = 0; i < depth; ++i) {
        sketch.objects.emplace_back(name(i), "<< /T (SECRET) /Kids [@" + name(i + 1) + "] >>");
    }
    const std::string saved = support::withoutPages(sketch.built(), {1});
    EXPECT_EQ(support::everythingIn(saved).find("SECRET"), std::string::npos);
    EXPECT_EQ(support::valueAt(saved, "Root/AcroForm"), "nothing");
}

} // namespace
