#include "SketchCase.h"

namespace {

using namespace karvel;
using support::SketchCase;

/// References that stand where no module looks for them.
const SketchCase cases[] = {
    {"private key of the catalog",
     {{"", "/Note (SECRET)"}, "/Private << /Seen [@p1 << /Last @p2 >>] /Kept 1 >>", {}},
     {{"Root/Private/Seen/0", "page 1"},
      {"Root/Private/Seen/1/Last", "nothing"},
      {"Root/Private/Kept", "1"}},
     {"SECRET"}},
    {"places in an array of unknown meaning",
     {{"/Note (SECRET)", ""}, "/Private @list", {{"list", "[@p1 7 @p2 @p1]"}}},
     {{"Root/Private", "array 4"},
      {"Root/Private/0", "nothing"},
      {"Root/Private/1", "7"},
      {"Root/Private/2", "page 1"}},
     {"SECRET"},
     {1}},
    {"private key of a page tree node",
     {{"", "/Note (SECRET)", ""}, "", {}, "/Private << /Seen [@p2 @p3] >>"},
     {{"p1/Parent/Private/Seen/0", "nothing"}, {"p1/Parent/Private/Seen/1", "page 2"}},
     {"SECRET"}},
    {"private data of a page that stays",
     {{"/PieceInfo << /App << /Private @data >> >>", "/Note (SECRET)"},
      "",
      {{"data", "/Page @p2 /Other (other)|data"}}},
     {{"p1/PieceInfo/App/Private/Page", "nothing"}, {"p1/PieceInfo/App/Private/Other", "(other)"}},
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
