#include "KarvelPDFLibrary/pages/Arrange.h"

#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"
#include "KarvelPDFLibrary/pages/TabOrder.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <climits>
#include <functional>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::pages;

using Act = std::function<Outcome(Document&)>;

Act moving(PageRun run, int beforePage)
{
    return [=](Document& document) { return movePages(document, run, beforePage); };
}

Act reversing(PageRun run)
{
    return [=](Document& document) { return reversePages(document, run); };
}

Act reordering(const std::vector<int>& order)
{
    return [=](Document& document) { return reorderPages(document, order); };
}

Act deleting(const std::vector<int>& list)
{
    return [=](Document& document) {
        const Result<int> result = deletePages(document, list);
        return result ? Outcome() : tl::unexpected<Error>(result.error());
    };
}

Act inserting(int beforePage, int count)
{
    return [=](Document& document) { return insertBlankPages(document, beforePage, count); };
}

Act oneAfterTheOther(const Act& one, const Act& other)
{
    return
        [=](Document& document) { return one(document).and_then([&] { return other(document); }); };
}

struct Row {
    const char* name;
    Act arrange;
    std::vector<int> order; // of pages 1 to 6
};

TEST(Arrangements, AreWritten)
{
    const Row rows[] = {{"move forward", moving({2, 2}, 6), {1, 4, 5, 2, 3, 6}},
                        {"move back", moving({4, 2}, 1), {4, 5, 1, 2, 3, 6}},
                        {"move to the end", moving({1, 1}, 7), {2, 3, 4, 5, 6, 1}},
                        {"move nowhere", moving({2, 2}, 4), {1, 2, 3, 4, 5, 6}},
                        {"reverse", reversing({2, 3}), {1, 4, 3, 2, 5, 6}},
                        {"reorder", reordering({6, 1, 5, 2, 4, 3}), {6, 1, 5, 2, 4, 3}},
                        {"delete listed", deleting({6, 1, 3, 1}), {2, 4, 5}},
                        {"delete after reversing",
                         oneAfterTheOther(reversing({1, 6}), deleting({1, 2})),
                         {4, 3, 2, 1}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(support::documentOfPages(6));
        ASSERT_TRUE(row.arrange(*document).has_value());
        EXPECT_TRUE(document->isModified());
        EXPECT_EQ(support::pageTexts(support::saved(*document)), support::pagesNamed(row.order));
    }
}

struct Refusal {
    const char* name;
    Act arrange;
    ErrorCode code;
};

TEST(RefusedArrangements, ChangeNothing)
{
    const Refusal rows[] = {
        {"move into itself", moving({2, 3}, 3), ErrorCode::BadArgument},
        {"move before nothing", moving({2, 3}, 8), ErrorCode::BadPageList},
        {"move what is not there", moving({5, 3}, 1), ErrorCode::BadPageList},
        {"reverse all integers", reversing({1, INT_MAX}), ErrorCode::BadPageList},
        {"reverse nothing", reversing({1, 0}), ErrorCode::BadPageList},
        {"reorder some", reordering({1, 2, 3}), ErrorCode::BadPageList},
        {"reorder with a repeat", reordering({1, 2, 3, 4, 5, 5}), ErrorCode::BadPageList},
        {"delete all", deleting({1, 2, 3, 4, 5, 6}), ErrorCode::BadPageList},
        {"delete what is not there", deleting({1, 7}), ErrorCode::BadPageList},
        {"insert none", inserting(1, 0), ErrorCode::BadArgument},
        {"insert too many", inserting(1, INT_MAX), ErrorCode::BadArgument},
        {"insert nowhere", inserting(8, 1), ErrorCode::BadPageList}};
    for (const Refusal& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(support::documentOfPages(6));
        const Outcome status = row.arrange(*document);
        ASSERT_FALSE(status.has_value());
        EXPECT_EQ(status.error().code, row.code);
        EXPECT_FALSE(document->isModified());
        EXPECT_EQ(document->pageCount(), 6);
    }
}

TEST(Arrange, BlankPagesLookAsLargeAsTheirNeighbour)
{
    support::PagedDocument file(2, "/Rotate 90 /UserUnit 2");
    auto document = support::opened(file.build());
    ASSERT_TRUE(insertBlankPages(*document, 2, 2).has_value());
    ASSERT_TRUE(insertBlankPages(*document, 5, 1).has_value());
    const std::string pdf = support::saved(*document);
    EXPECT_EQ(support::pageTexts(pdf), (std::vector<std::string>{"Page 1", "", "", "Page 2", ""}));
    auto again = support::opened(pdf);
    for (int page = 1; page <= 5; ++page) {
        EXPECT_EQ(page_boxes::shownSize(*again, page).width, 1584) << page;
        EXPECT_EQ(page_boxes::shownSize(*again, page).height, 1224) << page;
    }
}

TEST(TabOrder, IsSetAndRemoved)
{
    auto document = support::opened(support::documentOfPages(1));
    for (int code = largestTabOrder; code >= 0; --code) {
        setTabOrder(*document, 1, static_cast<TabOrder>(code));
        EXPECT_EQ(static_cast<int>(tabOrder(*document, 1)), code);
    }
    EXPECT_FALSE(document->page(1).hasKey("/Tabs"));
}

} // namespace
