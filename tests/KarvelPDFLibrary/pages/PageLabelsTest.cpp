#include "KarvelPDFLibrary/pages/PageLabels.h"

#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

std::string labelsOf(const std::string& catalog)
{
    const std::string pdf = support::Sketch{{"", "", "", ""}, catalog, {}}.built();
    auto document = support::opened(pdf);
    const std::string before = document->catalog().unparseResolved();
    std::string labels;
    for (int page = 1; page <= 4; ++page) {
        labels += (page > 1 ? " " : "") + pages::pageLabel(*document, page).value();
    }
    EXPECT_EQ(document->catalog().unparseResolved(), before) << "reading changes nothing";
    return labels;
}

TEST(PageLabels, AreThoseThatViewersShow)
{
    const struct {
        const char* name;
        const char* catalog;
        const char* labels;
    } rows[] = {
        {"no labels", "", "1 2 3 4"},
        {"no dictionary", "/PageLabels 7", "1 2 3 4"},
        {"small Roman, then digits", "/PageLabels << /Nums [0 << /S /r >> 2 << /S /D >>] >>",
         "i ii 1 2"},
        {"capitals with a first number", "/PageLabels << /Nums [0 << /S /R /St 1998 >>] >>",
         "MCMXCVIII MCMXCIX MM MMI"},
        {"letters past z", "/PageLabels << /Nums [0 << /S /a /St 25 >>] >>", "y z aa bb"},
        {"a prefix alone", "/PageLabels << /Nums [0 << /P (A-) >> 1 << /P (B\\344) /S /D >>] >>",
         "A- B\xc3\xa4"
         "1 B\xc3\xa4"
         "2 B\xc3\xa4"
         "3"},
        {"ranges out of order",
         "/PageLabels << /Kids [<< /Nums [2 << /S /D >> 0 << /S /r >>] /Limits [2 0] >>] >>",
         "i ii 1 2"},
        {"a first range that comes late", "/PageLabels << /Nums [2 << /S /a >>] >>", "1 2 a b"},
        {"what is no label", "/PageLabels << /Nums [0 << /S /r >> (x) << >> 2 7] >>",
         "i ii iii iv"},
        {"numbers too large to count on",
         "/PageLabels << /Nums [0 << /S /D /St 9223372036854775807 >>] >>", "1 2 3 4"},
        {"a number no one spells", "/PageLabels << /Nums [0 << /S /A /St 2000000000 >>] >>",
         "2000000000 2000000001 2000000002 2000000003"},
    };
    for (const auto& [name, catalog, labels] : rows) {
        EXPECT_EQ(labelsOf(catalog), labels) << name;
    }
}

TEST(PageLabels, AreRefusedForPagesThatAreNotThere)
{
    auto document = support::opened(support::Sketch{{""}, "", {}}.built());
    for (const int page : {0, -1, 2}) {
        const auto label = pages::pageLabel(*document, page);
        ASSERT_FALSE(label) << page;
        EXPECT_EQ(label.error().code, ErrorCode::BadPageList);
    }
}

} // namespace
