#include "SketchCase.h"

namespace {

using namespace karvel;
using support::SketchCase;

/// References that stand where no module looks for them.
const SketchCase cases[] = {
    {"private key of the catalog",
     {{"", "/Note (SECRET)"},
      "/Private << /Seen [@p1 << /Last @p2 /Beside (SECRET) >>] /Kept 1 >>",
      {}},
     {{"Root/Private/Seen/0", "page 1"},
      {"Root/Private/Seen/1", "dictionary"},
      {"Root/Private/Seen/1/Last", "nothing"},
      {"Root/Private/Kept", "1"}},
     {"SECRET"}},
    {"array without a dictionary under a private key of the catalog",
     {{"/Note (SECRET)", ""}, "/Private @list", {{"list", "[@p1 (SECRET) @p2 @p1]"}}},
     {{"Root/Private", "nothing"}},
     {"SECRET"},
     {1}},
    {"direct array under a private key of the catalog",
     {{"", ""}, "/Private [(SECRET) [@p2]] /Other [(kept) @p1]", {}},
     {{"Root/Private", "nothing"}, {"Root/Other/0", "(kept)"}, {"Root/Other/1", "page 1"}},
     {"SECRET"}},
    {"array that private dictionaries share",
     {{"", ""},
      "/Private << /A << /Pages @list /Text (SECRET) >> /B << /Pages [7 @list] /Text (SECRET) >> "
      "/C << /Text (kept) >> >>",
      {{"list", "[@p2]"}}},
     {{"Root/Private/A/Text", "nothing"}, {"Root/Private/C/Text", "(kept)"}},
     {"SECRET"}},
    {"pages of several programs",
     {{"", ""},
      "/PieceInfo << /App << /LastModified (SECRET) /Private @p2 >> /Other << /Private (kept) >> "
      "/Third @p2 >>",
      {}},
     {{"Root/PieceInfo/App/LastModified", "nothing"},
      {"Root/PieceInfo/Other/Private", "(kept)"},
      {"Root/PieceInfo/Third", "nothing"}},
     {"SECRET"}},
    {"data of a form that several programs keep",
     {{"/Resources << /XObject << /X @x >> >>", ""},
      "",
      {{"x", "/Subtype /Form /PieceInfo << /App << /Private << /To @p2 /Text (SECRET) >> >> >>|q "
             "Q"}}},
     {{"p1/Resources/XObject/X", "stream"},
      {"p1/Resources/XObject/X/PieceInfo/App/Private/To", "nothing"}},
     {"SECRET"}},
    {"annotation that private data refer to as well",
     {{"/Annots [@note] /Private @note", ""},
      "/Private << /Notes [@note] >>",
      {{"note", "<< /Subtype /Text /Rect [0 0 9 9] /Contents (kept) /Where << /To @p2 >> >>"}}},
     {{"p1/Annots/0/Contents", "(kept)"},
      {"p1/Annots/0/Where/To", "nothing"},
      {"Root/Private/Notes/0/Contents", "(kept)"}}},
    {"private key of a page tree node",
     {{"", "/Note (SECRET)", ""}, "", {}, "/Private << /Seen [@p2 @p3] >>"},
     {{"p1/Parent/Private/Seen/0", "nothing"}, {"p1/Parent/Private/Seen/1", "page 2"}},
     {"SECRET"}},
    {"private stream of a page that stays",
     {{"/PieceInfo << /App << /Private @data >> >> /Own << /Private @data /Kept 1 >>", ""},
      "",
      {{"data", "/Page @p2 /Other (SECRET)|SECRET"}}},
     {{"p1/PieceInfo/App/Private", "nothing"}, {"p1/Own/Kept", "1"}},
     {"SECRET"}},
};

TEST(Leftovers, LeavesNoReferenceToARemovedPageAnywhere)
{
    support::expectFound(cases, {2});
}

struct Way {
    const char* name;
    saving::Way way;
    const char* before; // what stands before the header; anything makes the file unfit for an index
};

class Proof : public testing::TestWithParam<Way> {};

TEST_P(Proof, FailsTheSaveWithThePathWhenSomethingLeadsToARemovedPage)
{
    const support::Sketch sketch = {
        {"", ""},
        "/Outlines @outline",
        {{"outline", "<< /First @entry /Last @entry /Count 1 >>"},
         {"entry", "<< /Title (one) /Parent @outline /A << /S /URI /URI (x:y) >> >>"}}};
    auto document = support::opened(GetParam().before + sketch.built());
    const QPDFObjectHandle removed = document->page(2);
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    ASSERT_TRUE(deletion::synchronize(*document).has_value());
    // As a module would that forgot something.
    QPDFObjectHandle entry = document->catalog().getKey("/Outlines").getKey("/First");
    const QPDFObjectHandle number = QPDFObjectHandle::parse(
        &document->file(), "[ " + std::to_string(removed.getObjectID()) + " 0 R ]");
    document->changes().edit(entry).getKey("/A").replaceKey("/D", number);

    const auto bytes = saving::toString(*document, support::keeping(GetParam().way));
    ASSERT_FALSE(bytes.has_value());
    EXPECT_THAT(bytes.error().text,
                testing::HasSubstr("not saved, since /Root /Outlines /First (object " +
                                   std::to_string(entry.getObjectID()) +
                                   ") /A /D [0] still leads to a removed page"));
}

INSTANTIATE_TEST_SUITE_P(Deletion, Proof,
                         testing::Values(Way{"copied", saving::Way::CopyUnchanged, ""},
                                         Way{"rewritten", saving::Way::Rewrite, ""},
                                         Way{"without_index", saving::Way::Rewrite, " "}),
                         [](const auto& info) { return info.param.name; });

} // namespace
