#include "KarvelPDFLibrary/attachments/Attachments.h"
#include "KarvelPDFLibrary/form_fields/FieldTree.h"
#include "KarvelPDFLibrary/layers/Layers.h"
#include "KarvelPDFLibrary/outlines/Outline.h"
#include "KarvelPDFLibrary/signatures/Signatures.h"
#include "KarvelPDFLibrary/structure/Tagging.h"
#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

struct Counts {
    int outlineEntries = 0;
    int fields = 0;
    int signatures = 0;
    int attachments = 0;
    int layers = 0;
    bool tagged = false;
};

struct Row {
    const char* name;
    const char* catalog;
    std::vector<std::pair<std::string, std::string>> objects;
    Counts counts;
};

TEST(Counters, Count)
{
    const Row rows[] = {
        {"plain", "", {}, {}},
        {"outline on two levels",
         "/Outlines @outline",
         {{"outline", "<< /First @a /Last @b >>"},
          {"a", "<< /Title (a) /Next @b >>"},
          {"b", "<< /Title (b) /First @c /Count -1 >>"},
          {"c", "<< /Title (c) >>"}},
         {3}},
        {"outline with loops",
         "/Outlines @outline",
         {{"outline", "<< /First @a >>"},
          {"a", "<< /Next @b /First @a >>"},
          {"b", "<< /Next @a /First @outline >>"}},
         {3}}, // the dictionary itself is met as an entry
        {"fields with widgets and names below",
         "/AcroForm << /Fields [@a @d] >>",
         {{"a", "<< /T (a) /FT /Sig /Kids [@b @c] >>"},
          {"b", "<< /T (b) /Parent @a >>"},
          {"c", "<< /T (c) /FT /Tx /Parent @a >>"},
          {"d", "<< /T (d) /FT /Btn /Kids [@w1 @w2] >>"},
          {"w1", "<< /Subtype /Widget >>"},
          {"w2", "<< /Subtype /Widget >>"}},
         {0, 3, 1}},
        {"fields with loops",
         "/AcroForm << /Fields [@a @b 99 0 R 7] >>",
         {{"a", "<< /T (a) /Kids [@a @b] >>"}, {"b", "<< /T (b) /Kids [7] >>"}},
         {0, 1}},
        {"form of a wrong type", "/AcroForm [1 2] /Outlines (x) /OCProperties 3", {}, {}},
        {"embedded files in nodes with a loop",
         "/Names << /EmbeddedFiles @root >>",
         {{"root", "<< /Kids [@one @root @other] >>"},
          {"one", "<< /Names [(a) << >> (b) << >>] >>"},
          {"other", "<< /Names [(c) << >> (odd)] >>"}},
         {0, 0, 0, 3}},
        {"layers named twice",
         "/OCProperties << /OCGs [@a @b @a 99 0 R] >>",
         {{"a", "<< /Type /OCG /Name (a) >>"}, {"b", "<< /Type /OCG /Name (b) >>"}},
         {0, 0, 0, 0, 2}},
        {"tagged", "/MarkInfo << /Marked true >>", {}, {0, 0, 0, 0, 0, true}},
        {"tagged by a word", "/MarkInfo << /Marked /true >>", {}, {}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(support::Sketch{{""}, row.catalog, row.objects}.built());
        EXPECT_EQ(outlines::entryCount(*document), row.counts.outlineEntries);
        EXPECT_EQ(static_cast<int>(form_fields::terminalFields(*document).size()),
                  row.counts.fields);
        EXPECT_EQ(signatures::count(*document), row.counts.signatures);
        EXPECT_EQ(attachments::count(*document), row.counts.attachments);
        EXPECT_EQ(layers::count(*document), row.counts.layers);
        EXPECT_EQ(structure::isTagged(*document), row.counts.tagged);
    }
}

TEST(Counters, TakeLongChainsWithoutRecursion)
{
    const int count = 200000;
    support::Sketch sketch = {
        {""},
        "/Outlines @outline /AcroForm << /Fields [@e1] >>",
        {{"outline", "<< /First @e1 >>"}, {"e" + std::to_string(count), "<< /T (a) >>"}}};
    for (int i = 1; i < count; ++i) {
        const std::string next = "@e" + std::to_string(i + 1);
        sketch.objects.emplace_back("e" + std::to_string(i),
                                    "<< /T (a) /First " + next + " /Kids [" + next + "] >>");
    }
    auto document = support::opened(sketch.built());
    EXPECT_EQ(outlines::entryCount(*document), count);
    EXPECT_EQ(form_fields::terminalFields(*document).size(), 1U);
}

} // namespace
