#include "SketchCase.h"

namespace {

using support::Sketch;
using support::SketchCase;
using Objects = std::vector<std::pair<std::string, std::string>>;

const std::string link = "<< /Type /Annot /Subtype /Link /Rect [0 0 5 5] ";

/// Four pages, the first of which has a link with some entries.
Sketch linking(const std::string& entries, const Objects& more = {})
{
    Sketch sketch = {{"/Annots [@link]", "", "", ""}, "", more};
    sketch.objects.emplace_back("link", link + entries + " >>");
    return sketch;
}

/// Two links on the first page, and names for destinations in the catalog.
Sketch linkingTwice(const std::string& one, const std::string& other,
                    const std::string& catalog = {}, const Objects& more = {})
{
    Sketch sketch = linking(one, more);
    sketch.pages.front() = "/Annots [@link @other]";
    sketch.catalog = catalog;
    sketch.objects.emplace_back("other", link + other + " >>");
    return sketch;
}

/// Page 2 goes, so that page 3 becomes page 2.
const SketchCase cases[] = {
    {"link to a removed page",
     linkingTwice("/Dest [@p2 /Fit]", "/Dest [@p4 /Fit]"),
     {{"p1/Annots/0/Dest/0", "page 3"}, {"p1/Annots/1", "nothing"}}},
    {"link without a number",
     {{"/Annots [" + link + "/Dest [@p2 /Fit] >> " + link + "/Dest [@p3 /Fit] >>]", "", "", ""},
      "",
      {}},
     {{"p1/Annots/0/Dest/0", "page 2"}, {"p1/Annots/1", "nothing"}}},
    {"annotations in an array object",
     {{"/Annots @list", "", "", ""},
      "",
      {{"list", "[" + link + "/A << /S /GoTo /D [@p2 /Fit] >> >> @link]"},
       {"link", link + "/A @action >>"},
       {"action", "<< /S /GoTo /D @there >>"},
       {"there", "[@p2 /Fit]"}}},
     {{"p1/Annots/0", "nothing"}}},
    {"chain that begins with the lost page",
     linking("/A << /S /GoTo /D [@p2 /Fit] /Next << /S /URI /URI (x) >> >>"),
     {{"p1/Annots/0/A/S", "/URI"}}},
    {"chain that ends with the lost page",
     linking("/A << /S /URI /URI (x) /Next @b >>", {{"b", "<< /S /GoTo /D [@p2 /Fit] >>"}}),
     {{"p1/Annots/0/A/S", "/URI"}, {"p1/Annots/0/A/Next", "nothing"}}},
    {"chain with the lost page in the middle",
     linking("/A << /S /Named /N /Print /Next << /S /GoTo /D [@p2 /Fit] /Next << /S /URI /URI (x) "
             ">> >> >>"),
     {{"p1/Annots/0/A/S", "/Named"}, {"p1/Annots/0/A/Next/S", "/URI"}}},
    {"several next actions",
     linking("/A << /S /GoTo /D [@p2 /Fit] /Next [<< /S /URI /URI (x) >> << /S /GoTo /D [@p2 /Fit] "
             ">> << /S /GoTo /D [@p3 /Fit] >>] >>"),
     {{"p1/Annots/0/A/S", "/URI"},
      {"p1/Annots/0/A/Next/S", "/GoTo"},
      {"p1/Annots/0/A/Next/D/0", "page 2"}}},
    {"chain in a ring",
     linking("/A @b", {{"b", "<< /S /GoTo /D [@p2 /Fit] /Next @c >>"},
                       {"c", "<< /S /URI /URI (x) /Next @b >>"}}),
     {{"p1/Annots/0/A/S", "/URI"}, {"p1/Annots/0/A/Next", "nothing"}}},
    {"actions of a page",
     {{"/AA << /O << /S /GoTo /D [@p2 /Fit] >> /C << /S /GoTo /D [@p3 /Fit] >> >>", "", "", ""},
      "",
      {}},
     {{"p1/AA/O", "nothing"}, {"p1/AA/C/D/0", "page 2"}}},
    {"last action of a page",
     {{"/AA @a", "", "", ""}, "", {{"a", "<< /O << /S /GoTo /D [@p2 /Fit] >> >>"}}},
     {{"p1/AA", "nothing"}}},
    {"button keeps its other actions",
     {{"/Annots [@a]", "", "", ""},
      "",
      {{"a", "<< /Type /Annot /Subtype /Screen /Rect [0 0 5 5] /A << /S /GoTo /D [@p2 /Fit] >> /AA "
             "<< /E << /S /URI /URI (x) >> >> >>"}}},
     {{"p1/Annots/0/A", "nothing"}, {"p1/Annots/0/AA/E/S", "/URI"}}},
    {"open action as destination",
     {{"", "", "", ""}, "/OpenAction [@p2 /Fit]", {}},
     {{"Root/OpenAction", "nothing"}}},
    {"open action as action",
     {{"", "", "", ""},
      "/OpenAction @a",
      {{"a", "<< /S /GoTo /D [@p2 /Fit] /Next << /S /JavaScript /JS (1) >> >>"}}},
     {{"Root/OpenAction/S", "/JavaScript"}}},
    {"open action that stays",
     {{"", "", "", ""}, "/OpenAction [@p3 /XYZ null null 0]", {}},
     {{"Root/OpenAction/0", "page 2"}}},
    {"link into another file stays as it is",
     linkingTwice("/A << /S /GoToR /F (b.pdf) /D [1 /Fit] >>",
                  "/A << /S /GoToR /F (b.pdf) /D [2 /Fit] >>"),
     {{"p1/Annots/0/A/D/0", "1"}, {"p1/Annots/1/A/D/0", "2"}}},
    {"link to a page by its number",
     linkingTwice("/Dest [2 /Fit]", "/Dest [1 /Fit]"),
     {{"p1/Annots/0/Dest/0", "1"}, {"p1/Annots/1", "nothing"}}},
    {"name in the old dictionary",
     linkingTwice("/Dest /Gone", "/A << /S /GoTo /D /Stays >>",
                  "/Dests << /Gone [@p2 /Fit] /Stays << /D [@p3 /Fit] >> >>"),
     {{"Root/Dests/Gone", "nothing"},
      {"Root/Dests/Stays/D/0", "page 2"},
      {"p1/Annots/0/A/D", "/Stays"},
      {"p1/Annots/1", "nothing"}}},
    {"name in the tree",
     linkingTwice("/Dest (gone)", "/A << /S /GoTo /D (stays) >>",
                  "/Names << /Dests << /Names [(gone) [@p2 /Fit] (stays) << /D [@p3 /Fit] >>] >> "
                  ">>"),
     {{"Root/Names/Dests/Names/0", "(stays)"},
      {"p1/Annots/0/A/D", "(stays)"},
      {"p1/Annots/1", "nothing"}}},
    {"name in an indirect action",
     linkingTwice("/A << /S /URI /URI (x) /Next @c >>", "/A @c",
                  "/Names << /Dests << /Names [(gone) [@p2 /Fit]] >> >>",
                  {{"c", "<< /S /GoTo /D <676F6E65> >>"}}),
     {{"p1/Annots/0/A/S", "/URI"}, {"p1/Annots/0/A/Next", "nothing"}, {"p1/Annots/1", "nothing"}}},
    {"escaped name and an indirect destination",
     linkingTwice("/Dest (gon\\145)", "/Dest (left)",
                  "/Names << /Dests << /Names [(go\\156e) [@p2 /Fit] (left) @b] >> >>",
                  {{"b", "<< /D @c >>"}, {"c", "[@p2 /Fit]"}}),
     {{"Root/Names/Dests", "nothing"}, {"p1/Annots/0", "nothing"}}},
    {"steps of a presentation",
     {{"/PresSteps << /Type /NavNode /NA << /S /GoTo /D [@p2 /Fit] /X (SECRET) >> /PA << /S /GoTo "
       "/D [@p3 /Fit] >> /Next @a >>",
       "", "", ""},
      "/Names << /Dests << /Names [(SECRET) [@p2 /Fit]] >> >>",
      {{"a", "<< /Type /NavNode /NA << /S /GoTo /D (SECRET) >> >>"}}},
     {{"p1/PresSteps/NA", "nothing"},
      {"p1/PresSteps/PA/D/0", "page 2"},
      {"p1/PresSteps/Next/NA", "nothing"}},
     {"SECRET"}},
    {"tree of names whose middle leaf loses everything and the others a part",
     {{"", "", "", ""},
      "/Names << /Dests @root >>",
      {{"root", "<< /Kids [@one @two @three] >>"},
       {"one", "<< /Limits [(a) (c)] /Names [(a) [@p1 /Fit] (b) [@p3 /Fit] (c) [@p2 /Fit]] >>"},
       {"two", "<< /Limits [(d) (e)] /Names [(d) [@p2 /Fit] (e) [@p2 /Fit]] >>"},
       {"three", "<< /Limits [(f) (g)] /Kids [@leaf] >>"},
       {"leaf", "<< /Limits [(f) (g)] /Names [(f) [@p2 /Fit] (g) [@p4 /Fit]] >>"}}},
     {{"Root/Names/Dests/Kids", "array 2"},
      {"Root/Names/Dests/Kids/0/Limits/0", "(a)"},
      {"Root/Names/Dests/Kids/0/Limits/1", "(b)"},
      {"Root/Names/Dests/Kids/1/Limits/0", "(g)"},
      {"Root/Names/Dests/Kids/1/Limits/1", "(g)"},
      {"Root/Names/Dests/Kids/1/Kids/0/Limits/0", "(g)"}}},
};

TEST(Actions, LoseThePartThatLeadsToARemovedPage)
{
    support::expectFound(cases, {2});
}

} // namespace
