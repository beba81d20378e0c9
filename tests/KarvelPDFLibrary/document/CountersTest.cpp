#include "KarvelPDFLibrary/attachments/Attachments.h"
#include "KarvelPDFLibrary/form_fields/FieldTree.h"
#include "KarvelPDFLibrary/layers/Layers.h"
#include "KarvelPDFLibrary/outlines/Outline.h"
#include "KarvelPDFLibrary/signatures/Signatures.h"
#include "KarvelPDFLibrary/structure/Tagging.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

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

/// Objects from number 10 on; 1 is the catalog.
struct Row {
    const char* name;
    const char* catalogEntries;
    std::vector<const char*> objects;
    Counts counts;
};

class Counters : public testing::TestWithParam<Row> {};

TEST_P(Counters, Count)
{
    support::PagedDocument file(1);
    while (file.builder.reserve() < 9) {
    }
    for (const char* object : GetParam().objects) {
        file.builder.add(object);
    }
    file.catalogEntries = GetParam().catalogEntries;
    auto document = support::opened(file.build());
    const Counts& expected = GetParam().counts;
    EXPECT_EQ(outlines::entryCount(*document), expected.outlineEntries);
    EXPECT_EQ(static_cast<int>(form_fields::terminalFields(*document).size()), expected.fields);
    EXPECT_EQ(signatures::count(*document), expected.signatures);
    EXPECT_EQ(attachments::count(*document), expected.attachments);
    EXPECT_EQ(layers::count(*document), expected.layers);
    EXPECT_EQ(structure::isTagged(*document), expected.tagged);
}

INSTANTIATE_TEST_SUITE_P(
    Document, Counters,
    testing::Values(
        Row{"plain", "", {}, {}},
        Row{"outline_on_two_levels",
            "/Outlines 10 0 R",
            {"<< /First 11 0 R /Last 12 0 R >>", "<< /Title (a) /Next 12 0 R >>",
             "<< /Title (b) /First 13 0 R /Count -1 >>", "<< /Title (c) >>"},
            {3}},
        Row{"outline_with_loops",
            "/Outlines 10 0 R",
            {"<< /First 11 0 R >>", "<< /Next 12 0 R /First 11 0 R >>",
             "<< /Next 11 0 R /First 10 0 R >>"},
            {3}}, // the dictionary itself is met as an entry
        Row{"fields_with_widgets_and_names_below",
            "/AcroForm << /Fields [10 0 R 13 0 R] >>",
            {"<< /T (a) /FT /Sig /Kids [11 0 R 12 0 R] >>", "<< /T (b) /Parent 10 0 R >>",
             "<< /T (c) /FT /Tx /Parent 10 0 R >>", "<< /T (d) /FT /Btn /Kids [14 0 R 15 0 R] >>",
             "<< /Subtype /Widget >>", "<< /Subtype /Widget >>"},
            {0, 3, 1}},
        Row{"fields_with_loops",
            "/AcroForm << /Fields [10 0 R 11 0 R 99 0 R 7] >>",
            {"<< /T (a) /Kids [10 0 R 11 0 R] >>", "<< /T (b) >>"},
            {0, 1}},
        Row{"form_of_a_wrong_type", "/AcroForm [1 2] /Outlines (x) /OCProperties 3", {}, {}},
        Row{"embedded_files_in_nodes_with_a_loop",
            "/Names << /EmbeddedFiles 10 0 R >>",
            {"<< /Kids [11 0 R 10 0 R 12 0 R] >>", "<< /Names [(a) << >> (b) << >>] >>",
             "<< /Names [(c) << >> (odd)] >>"},
            {0, 0, 0, 3}},
        Row{"layers_named_twice",
            "/OCProperties << /OCGs [10 0 R 11 0 R 10 0 R 99 0 R] >>",
            {"<< /Type /OCG /Name (a) >>", "<< /Type /OCG /Name (b) >>"},
            {0, 0, 0, 0, 2}},
        Row{"tagged", "/MarkInfo << /Marked true >>", {}, {0, 0, 0, 0, 0, true}},
        Row{"tagged_by_a_word", "/MarkInfo << /Marked /true >>", {}, {}}),
    [](const auto& info) { return info.param.name; });

TEST(Counters, TakeLongChainsWithoutRecursion)
{
    support::PagedDocument file(1);
    const int count = 200000;
    const int root = file.builder.reserve();
    for (int i = 1; i <= count; ++i) {
        const std::string next = support::PdfBuilder::reference(root + i + 1);
        file.builder.add("<< /T (a) /First " + next + " /Kids [" + next + "] >>");
    }
    const std::string first = support::PdfBuilder::reference(root + 1);
    file.builder.set(root, "<< /First " + first + " >>");
    file.catalogEntries = "/Outlines " + support::PdfBuilder::reference(root) +
                          " /AcroForm << /Fields [" + first + "] >>";
    auto document = support::opened(file.build());
    EXPECT_EQ(outlines::entryCount(*document), count);
    EXPECT_EQ(form_fields::terminalFields(*document).size(), 1U);
}

} // namespace
