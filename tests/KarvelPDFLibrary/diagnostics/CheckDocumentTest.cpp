#include "KarvelPDFLibrary/diagnostics/CheckDocument.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::diagnostics;

/// Two pages; the second has what the row says in place of its content.
std::string withContent(const std::string& data, const std::string& entries = {})
{
    return support::Sketch{{"", "/Contents @content"}, "", {{"content", entries + "|" + data}}}
        .built();
}

struct Row {
    const char* name;
    std::string (*make)();
    int lowestLevel; // that finds a problem; 4: none does
};

TEST(Checks, FindProblemsFromTheirLevelOn)
{
    const Row rows[] = {
        {"intact", [] { return support::documentOfPages(3); }, 4},
        {"encrypted and linearized",
         [] {
             return support::rewritten(support::documentOfPages(3),
                                       "--linearize --encrypt '' o 256 --");
         },
         4},
        {"table with a wrong offset",
         [] {
             std::string file = support::documentOfPages(2);
             const auto row = file.find(" 00000 n", file.rfind("xref\n0"));
             return file.replace(row - 2, 2, "99");
         },
         1},
        {"kids with a loop",
         [] {
             return support::Sketch{{"", ""}, "", {}, "/Type /Pages /Count 2 /Kids [@p1 @pages]"}
                 .built();
         },
         1},
        {"flate data that is none", [] { return withContent("x", "/Filter /FlateDecode"); }, 2},
        {"content with a bad token", [] { return withContent("BT <zz> Tj ET"); }, 3}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(row.make());
        ASSERT_TRUE(document);
        for (int level = 1; level <= 3; ++level) {
            const std::size_t before = document->warnings().size();
            const int problems = checkDocument(*document, static_cast<CheckLevel>(level)).value();
            EXPECT_EQ(problems > 0, level >= row.lowestLevel) << "level " << level;
            EXPECT_EQ(document->warnings().size() - before, static_cast<std::size_t>(problems));
        }
        EXPECT_FALSE(document->isModified());
    }
}

TEST(Diagnostics, ChecksTheDocumentAsItIsNow)
{
    auto document = support::opened(withContent("x", "/Filter /FlateDecode"));
    EXPECT_GT(checkDocument(*document, CheckLevel::Streams).value(), 0);
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    EXPECT_EQ(checkDocument(*document, CheckLevel::Content).value(), 0);
    EXPECT_TRUE(document->isModified());
}

} // namespace
