#include "KarvelPDFLibrary/pages/DeletePages.h"

#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

struct Case {
    const char* name;
    int pages;
    std::vector<PageRun> runs;
    std::vector<int> remaining;
};

TEST(DeletePages, LeavesTheOtherPagesInOrder)
{
    const Case cases[] = {{"the first", 3, {{1, 1}}, {2, 3}},
                          {"the last", 3, {{3, 1}}, {1, 2}},
                          {"all but one", 5, {{4, 2}, {1, 2}}, {3}},
                          {"runs from the back", 6, {{5, 1}, {2, 2}}, {1, 4, 6}},
                          {"runs from the front", 6, {{1, 1}, {1, 1}, {2, 2}}, {3, 6}}};
    for (const Case& given : cases) {
        SCOPED_TRACE(given.name);
        auto document = support::opened(support::documentOfPages(given.pages));
        for (const PageRun& run : given.runs) {
            ASSERT_TRUE(pages::deletePages(*document, run).has_value());
        }
        EXPECT_EQ(document->pageCount(), static_cast<int>(given.remaining.size()));
        EXPECT_EQ(support::pageTexts(support::saved(*document)),
                  support::pagesNamed(given.remaining));
    }
}

TEST(DeletePages, RefusesRunsThatAreNotThereOrEmptyTheDocument)
{
    auto document = support::opened(support::documentOfPages(3));
    for (const PageRun run :
         {PageRun{0, 1}, PageRun{4, 1}, PageRun{3, 2}, PageRun{1, 3}, PageRun{1, 0}, PageRun{-1, 2},
          PageRun{2, -1}, PageRun{2, 2147483647}, PageRun{2147483647, 2147483647}}) {
        const Outcome status = pages::deletePages(*document, run);
        ASSERT_FALSE(status.has_value()) << run.first << " " << run.count;
        EXPECT_EQ(status.error().code, ErrorCode::BadPageList);
    }
    EXPECT_EQ(document->pageCount(), 3);
    EXPECT_FALSE(document->isModified());
}

} // namespace
