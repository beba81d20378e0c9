#include "SketchCase.h"

namespace {

using support::Sketch;
using support::SketchCase;

const std::string tagged = "/MarkInfo << /Marked true >> /StructTreeRoot @root";
const std::vector<std::string> twoPages = {"/StructParents 0", "/StructParents 1"};

std::string element(const std::string& type, const std::string& parent, const std::string& rest)
{
    return "<< /Type /StructElem /S /" + type + " /P @" + parent + " " + rest + " >>";
}

const SketchCase cases[] = {
    {"elements of two pages",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree @tree /RoleMap << /X /P >> >>"},
       {"tree", "<< /Nums [0 [@one] 1 [@two @three]] >>"},
       {"doc", element("Document", "root", "/K [@one @two @three]")},
       {"one", element("P", "doc", "/Pg @p1 /K 0 /ActualText (SECRET-1) /Alt (SECRET-2)")},
       {"two", element("P", "doc", "/Pg @p2 /K 0 /ActualText (Kept) /Alt (Kept)")},
       {"three", element("Span", "doc", "/Pg @p2 /K [1] /E (Kept)")}}},
     {{"Root/StructTreeRoot/K/K", "array 2"},
      {"Root/StructTreeRoot/K/K/0/ActualText", "(Kept)"},
      {"Root/StructTreeRoot/K/K/1/E", "(Kept)"},
      {"Root/StructTreeRoot/K/K/0/Pg", "page 1"},
      {"Root/StructTreeRoot/ParentTree/Nums", "array 2"},
      {"Root/StructTreeRoot/ParentTree/Nums/0", "1"},
      {"Root/StructTreeRoot/RoleMap/X", "/P"},
      {"Root/MarkInfo/Marked", "true"}},
     {"SECRET"}},
    {"element that runs over two pages",
     {twoPages,
      tagged,
      {{"root",
        "<< /Type /StructTreeRoot /K [@doc] /ParentTree << /Nums [0 [@one] 1 [@one]] >> >>"},
       {"doc", element("Document", "root", "/K [@one] /ActualText (SECRET-1)")},
       {"one", element("P", "doc",
                       "/Pg @p1 /K [0 << /Type /MCR /Pg @p2 /MCID 0 >>] /ActualText (SECRET-2) "
                       "/Alt (Kept)")}}},
     {{"Root/StructTreeRoot/K/0/K/0/K", "array 1"},
      {"Root/StructTreeRoot/K/0/K/0/K/0/Pg", "page 1"},
      {"Root/StructTreeRoot/K/0/K/0/Pg", "nothing"},
      {"Root/StructTreeRoot/K/0/K/0/Alt", "(Kept)"}},
     {"SECRET"}},
    {"element whose other page goes",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @one /ParentTree << /Nums [0 [@one] 1 [@one]] >> >>"},
       {"one", element("P", "root", "/Pg @p1 /K [0 << /Type /MCR /Pg @p2 /MCID 0 >>]")}}},
     {{"Root/StructTreeRoot/K/K", "array 1"},
      {"Root/StructTreeRoot/K/K/0", "0"},
      {"Root/StructTreeRoot/K/Pg", "page 1"},
      {"Root/StructTreeRoot/ParentTree/Nums", "array 2"}},
     {},
     {2}},
    {"parents left empty and their empty cells",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree << /Nums [0 [@c1] 1 [@p]] >> >>"},
       {"doc", element("Document", "root", "/K [@table @p @blank]")},
       {"table", element("Table", "doc", "/K [@row] /T (SECRET-TABLE)")},
       {"row", element("TR", "table", "/K [@c1 @c2]")},
       {"c1", element("TD", "row", "/Pg @p1 /K 0")},
       {"c2", element("TD", "row", "/Alt (SECRET-CELL) /ID (SECRET-ID)")},
       {"p", element("P", "doc", "/Pg @p2 /K 0")},
       {"blank", element("P", "doc", "/Alt (Kept)")}}},
     {{"Root/StructTreeRoot/K/K", "array 2"},
      {"Root/StructTreeRoot/K/K/0/S", "/P"},
      {"Root/StructTreeRoot/K/K/1/Alt", "(Kept)"}},
     {"SECRET"}},
    {"annotation of a removed page",
     {{"/Annots [@link] /StructParents 0", "/StructParents 1"},
      tagged,
      {{"link", "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /StructParent 2 /A << /S /URI /URI "
                "(SECRET-URI) >> >>"},
       {"root", "<< /Type /StructTreeRoot /K @doc /ParentTree @tree >>"},
       {"tree", "<< /Kids [@leaf1 @leaf2] >>"},
       {"leaf1", "<< /Limits [0 1] /Nums [0 @array 1 [@two]] >>"},
       {"leaf2", "<< /Limits [2 2] /Nums [2 @one] >>"},
       {"array", "[@one]"},
       {"doc", element("Document", "root", "/K [@one @two]")},
       {"one", element("Link", "doc", "/Pg @p1 /K [0 << /Type /OBJR /Obj @link >>] /Alt (SECRET)")},
       {"two", element("P", "doc", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/K/K", "array 1"},
      {"Root/StructTreeRoot/ParentTree/Kids", "array 1"},
      {"Root/StructTreeRoot/ParentTree/Kids/0/Nums/0", "1"},
      {"Root/StructTreeRoot/ParentTree/Kids/0/Limits/0", "1"}},
     {"SECRET"}},
    {"link that goes from a page that stays",
     {{"/StructParents 0", "/Annots [@link] /StructParents 1"},
      tagged,
      {{"link",
        "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /StructParent 2 /Dest [@p1 /Fit] >>"},
       {"root", "<< /Type /StructTreeRoot /K @two /ParentTree << /Nums [1 [@two] 2 @two] >> >>"},
       {"two", element("Link", "root", "/Pg @p2 /K [0 @objr]")},
       {"objr", "<< /Type /OBJR /Pg @p2 /Obj @link >>"}}},
     {{"p1/Annots", "array 0"},
      {"Root/StructTreeRoot/K/K", "array 1"},
      {"Root/StructTreeRoot/K/K/0", "0"},
      {"Root/StructTreeRoot/ParentTree/Nums", "array 2"}}},
    {"names and references of elements",
     {twoPages,
      tagged + " /Outlines @outlines",
      {{"root", "<< /Type /StructTreeRoot /K @doc /IDTree @ids /ParentTree << /Nums [0 [@one] 1 "
                "[@two]] >> >>"},
       {"ids", "<< /Kids [@idleaf] >>"},
       {"idleaf", "<< /Limits [(SECRET-ID) (kept)] /Names [(SECRET-ID) @one (kept) @two] >>"},
       {"doc", element("Document", "root", "/K [@one @two]")},
       {"one", element("P", "doc", "/Pg @p1 /K 0 /ID (SECRET-ID)")},
       {"two", element("P", "doc", "/Pg @p2 /K 0 /ID (kept) /Ref [@one]")},
       {"outlines", "<< /First @entry /Last @entry /Count 1 >>"},
       {"entry", "<< /Title (Kept) /Parent @outlines /Dest [@p2 /Fit] /SE @one >>"}}},
     {{"Root/StructTreeRoot/IDTree/Kids/0/Names", "array 2"},
      {"Root/StructTreeRoot/IDTree/Kids/0/Limits/0", "(kept)"},
      {"Root/StructTreeRoot/K/K/0/Ref", "array 0"},
      {"Root/Outlines/First/SE", "nothing"}},
     {"SECRET"}},
    {"page named only above",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree << /Nums [0 [@a @b] 1 [@two]] >> >>"},
       {"doc", element("Document", "root", "/Pg @p1 /K [@sect @two]")},
       {"sect", element("Sect", "doc", "/K [@a @b]")},
       {"a", element("P", "sect", "/K 0 /Alt (SECRET-A)")},
       {"b", element("P", "sect", "/K 1 /Alt (SECRET-B)")},
       {"two", element("P", "doc", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/K/K", "array 1"}, {"Root/StructTreeRoot/K/Pg", "nothing"}},
     {"SECRET"}},
    {"page named only above without a parent tree",
     {{"", ""},
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc >>"},
       {"doc", element("Document", "root", "/Pg @p1 /K [@sect @two]")},
       {"sect", element("Sect", "doc", "/K [@a @b]")},
       {"a", element("P", "sect", "/K 0 /Alt (SECRET-A)")},
       {"b", element("P", "sect", "/K << /Type /MCR /MCID 1 >> /Alt (SECRET-B)")},
       {"two", element("P", "doc", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/K/K", "array 1"}, {"Root/StructTreeRoot/K/K/0/Pg", "page 1"}},
     {"SECRET"}},
    {"page known from the parent tree alone",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree << /Nums [0 [@one] 1 [@two]] >> >>"},
       {"doc", element("Document", "root", "/K [@one @two]")},
       {"one", element("P", "doc", "/K 0 /Alt (SECRET)")},
       {"two", element("P", "doc", "/K 0 /Alt (Kept)")}}},
     {{"Root/StructTreeRoot/K/K", "array 1"}, {"Root/StructTreeRoot/K/K/0/Alt", "(Kept)"}},
     {"SECRET"}},
    {"everything indirect and untyped",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @kids0 /ParentTree @tree >>"},
       {"kids0", "[@doc]"},
       {"tree", "<< /Nums @nums >>"},
       {"nums", "[0 @list0 1 @list1]"},
       {"list0", "[@one]"},
       {"list1", "[@one @two]"},
       {"doc", "<< /S /Document /P @root /K @kids >>"},
       {"kids", "[@one @two]"},
       {"one", "<< /S /P /P @doc /K @mcrs >>"},
       {"mcrs", "[@mcr0 @mcr1]"},
       {"mcr0", "<< /Type /MCR /Pg @p1 /MCID 0 /X (SECRET) >>"},
       {"mcr1", "<< /Type /MCR /Pg @p2 /MCID 0 >>"},
       {"two", "<< /S /P /P @doc /K @mcr2 >>"},
       {"mcr2", "<< /MCID 1 /Pg @p2 >>"}}},
     {{"Root/StructTreeRoot/K/0/K", "array 2"},
      {"Root/StructTreeRoot/K/0/K/0/K", "array 1"},
      {"Root/StructTreeRoot/K/0/K/0/K/0/Pg", "page 1"},
      {"Root/StructTreeRoot/ParentTree/Nums", "array 2"}},
     {"SECRET"}},
    {"form in a page with content of its own",
     {{"/StructParents 0", "/StructParents 1"},
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree << /Nums [0 [] 1 [@two] 2 [@one]] >> "
                ">>"},
       {"doc", element("Document", "root", "/K [@one @two]")},
       {"one", element("Figure", "doc",
                       "/K [<< /Type /MCR /Pg @p1 /Stm @form /MCID 0 >>] /Alt (SECRET-ALT)")},
       {"form", "/Type /XObject /Subtype /Form /BBox [0 0 1 1] /StructParents 2|SECRET-FORM"},
       {"two", element("P", "doc", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/ParentTree/Nums", "array 2"},
      {"Root/StructTreeRoot/ParentTree/Nums/0", "1"}},
     {"SECRET"}},
    {"parent tree that names what goes for a page that stays",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree << /Nums [0 [@one] 1 [@one @two]] >> "
                ">>"},
       {"doc", element("Document", "root", "/K [@one @two]")},
       {"one", element("P", "doc", "/Pg @p1 /K 0 /Alt (SECRET)")},
       {"two", element("P", "doc", "/Pg @p2 /K 1")}}},
     {{"Root/StructTreeRoot/ParentTree/Nums/1", "array 2"},
      {"Root/StructTreeRoot/ParentTree/Nums/1/0", "nothing"},
      {"Root/StructTreeRoot/ParentTree/Nums/1/1/S", "/P"}},
     {"SECRET"}},
    {"key that a page which stays has too",
     {{"/StructParents 0", "/StructParents 0"},
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K @doc /ParentTree << /Nums [0 [@two]] >> >>"},
       {"doc", element("Document", "root", "/K [@one @two]")},
       {"one", element("P", "doc", "/Pg @p1 /K 0 /Alt (SECRET)")},
       {"two", element("P", "doc", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/ParentTree/Nums", "array 2"},
      {"Root/StructTreeRoot/ParentTree/Nums/1/0/Pg", "page 1"}},
     {"SECRET"}},
    {"annotation that a page which stays shows too",
     {{"/Annots [@note]", "/Annots [@note]"},
      tagged,
      {{"note", "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /StructParent 0 /P @p1 >>"},
       {"root", "<< /Type /StructTreeRoot /K @one /ParentTree << /Nums [0 @one] >> >>"},
       {"one", element("Annot", "root", "/Pg @p1 /K << /Type /OBJR /Obj @note >>")}}},
     {{"Root/StructTreeRoot/K/K/Obj/Subtype", "/Text"},
      {"Root/StructTreeRoot/K/K/Pg", "page 1"},
      {"Root/StructTreeRoot/ParentTree/Nums", "array 2"}}},
    {"nothing left",
     {{"/StructParents 0", ""},
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K [@doc] /ParentTree << /Nums [0 [@one]] >> >>"},
       {"doc", element("Document", "root", "/K [@one]")},
       {"one", element("P", "doc", "/Pg @p1 /K 0 /Alt (SECRET)")}}},
     {{"Root/StructTreeRoot", "nothing"}, {"Root/MarkInfo", "nothing"}},
     {"SECRET"}},
    {"elements in a ring",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K [@a] /ParentTree << /Nums [0 [@one] 1 [@two]] >> >>"},
       {"a", element("Sect", "b", "/K [@b @one]")},
       {"b", element("Sect", "a", "/K [@a @two]")},
       {"one", element("P", "a", "/Pg @p1 /K 0 /Alt (SECRET)")},
       {"two", element("P", "b", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/K/0/K", "array 1"}, {"Root/StructTreeRoot/K/0/K/0/K", "array 2"}},
     {"SECRET"}},
    {"element that does not name its parent",
     {twoPages,
      tagged,
      {{"root", "<< /Type /StructTreeRoot /K [@a @two] /ParentTree << /Nums [0 [@one] 1 [@two]] >> "
                ">>"},
       {"a", element("Sect", "root", "/K [@one] /T (SECRET-SECTION)")},
       {"one", "<< /Type /StructElem /S /P /Pg @p1 /K 0 /Alt (SECRET) >>"},
       {"two", element("P", "root", "/Pg @p2 /K 0")}}},
     {{"Root/StructTreeRoot/K", "array 1"}},
     {"SECRET"}},
};

TEST(Structure, LosesTheContentOfRemovedPages)
{
    support::expectFound(cases);
}

TEST(Structure, StaysWithAPageThatWasUsedTwice)
{
    // Page 1 stands in the tree again as page 3; what leads to it leads to the use that stays.
    const Sketch sketch = {
        {"/StructParents 0 /Annots [@note]", "/StructParents 1"},
        tagged + " /Outlines @outlines",
        {{"note", "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /P @p1 >>"},
         {"root", "<< /Type /StructTreeRoot /K [@one @two] /ParentTree << /Nums [0 [@one] 1 "
                  "[@two]] >> >>"},
         {"one", element("P", "root", "/Pg @p1 /K 0")},
         {"two", element("P", "root", "/Pg @p2 /K 0")},
         {"outlines", "<< /First @entry /Last @entry /Count 1 >>"},
         {"entry", "<< /Title (Kept) /Parent @outlines /Dest [@p1 /Fit] >>"}},
        "/Type /Pages /Count 3 /Kids [@p1 @p2 @p1]"};
    const std::string pdf = sketch.built();
    auto document = support::opened(pdf);
    ASSERT_EQ(document->pageCount(), 3);
    for (const int removed : {1, 3}) {
        const std::string saved = support::withoutPages(pdf, {removed});
        const std::string page = removed == 1 ? "2" : "1";
        EXPECT_EQ(support::valueAt(saved, "Root/StructTreeRoot/K/0/Pg"), "page " + page);
        EXPECT_EQ(support::valueAt(saved, "Root/StructTreeRoot/ParentTree/Nums"), "array 4");
        EXPECT_EQ(support::valueAt(saved, "Root/Outlines/First/Dest/0"), "page " + page);
        EXPECT_EQ(support::valueAt(saved, "p" + page + "/Annots/0/P"), "page " + page);
    }
}

/// A chain of elements with content of page 1 at its end and, half way, content of page 2.
TEST(Structure, IsPrunedAtAnyDepth)
{
    constexpr int depth = 10000;
    Sketch sketch = {twoPages, tagged, {}};
    sketch.objects.emplace_back("root", "<< /Type /StructTreeRoot /K @e0 >>");
    for (int i = 0; i < depth; ++i) {
        const std::string above = i == 0 ? "root" : "e" + std::to_string(i - 1);
        const std::string kid = i + 1 < depth ? "@e" + std::to_string(i + 1) : "0 /Pg @p1";
        const std::string kids = i == depth / 2 ? "[0 " + kid + "] /Pg @p2" : kid;
        const std::string title = i > depth / 2 ? "SECRET" : "Kept";
        sketch.objects.emplace_back("e" + std::to_string(i),
                                    element("Sect", above, "/T (" + title + ") /K " + kids));
    }
    const std::string saved = support::withoutPages(sketch.built(), {1});
    const std::string everything = support::everythingIn(saved);
    EXPECT_EQ(everything.find("SECRET"), std::string::npos);
    std::size_t kept = 0;
    for (std::size_t at = 0; (at = everything.find("Kept\n", at)) != std::string::npos; ++at) {
        ++kept;
    }
    EXPECT_EQ(kept, 2U * (depth / 2 + 1)); // each string is told twice
}

} // namespace
