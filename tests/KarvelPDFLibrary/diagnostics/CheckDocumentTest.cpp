#include "KarvelPDFLibrary/diagnostics/CheckDocument.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::diagnostics;

/// Two pages; the second has what the row says in place of its content.
std::string withContent(const std::string& data, const std::string& entries = {})
{
    support::PagedDocument file(2);
    const int content = file.pages[1] - 1;
    file.builder.setStream(content, data, entries);
    return file.build();
}

struct Row {
    const char* name;
    std::string (*make)();
    int lowestLevel; // that finds a problem; 4: none does
};

class Checks : public testing::TestWithParam<Row> {};

TEST_P(Checks, FindProblemsFromTheirLevelOn)
{
    auto document = support::opened(GetParam().make());
    ASSERT_TRUE(document);
    for (int level = 1; level <= 3; ++level) {
        const std::size_t before = document->warnings().size();
        const int problems = checkDocument(*document, static_cast<CheckLevel>(level)).value();
        EXPECT_EQ(problems > 0, level >= GetParam().lowestLevel) << "level " << level;
        EXPECT_EQ(document->warnings().size() - before, static_cast<std::size_t>(problems));
    }
    EXPECT_FALSE(document->isModified());
}

INSTANTIATE_TEST_SUITE_P(
    Diagnostics, Checks,
    testing::Values(
        Row{"intact", [] { return support::documentOfPages(3); }, 4},
        Row{"encrypted_and_linearized",
            [] {
                return support::rewritten(support::documentOfPages(3),
                                          "--linearize --encrypt '' o 256 --");
            },
            4},
        Row{"table_with_a_wrong_offset",
            [] {
                std::string file = support::documentOfPages(2);
                const auto row = file.find(" 00000 n", file.rfind("xref\n0"));
                return file.replace(row - 2, 2, "99");
            },
            1},
        Row{"kids_with_a_loop",
            [] {
                support::PagedDocument file(2);
                file.builder.set(file.root, "<< /Type /Pages /Count 2 /Kids [" +
                                                support::PdfBuilder::reference(file.pages[0]) +
                                                " " + support::PdfBuilder::reference(file.root) +
                                                "] >>");
                return file.build();
            },
            1},
        Row{"flate_data_that_is_none", [] { return withContent("x", "/Filter /FlateDecode"); }, 2},
        Row{"content_with_a_bad_token", [] { return withContent("BT <zz> Tj ET"); }, 3}),
    [](const auto& info) { return info.param.name; });

TEST(Diagnostics, ChecksTheDocumentAsItIsNow)
{
    auto document = support::opened(withContent("x", "/Filter /FlateDecode"));
    EXPECT_GT(checkDocument(*document, CheckLevel::Streams).value(), 0);
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    EXPECT_EQ(checkDocument(*document, CheckLevel::Content).value(), 0);
    EXPECT_TRUE(document->isModified());
}

} // namespace
