#include "KarvelPDFLibrary/pages/Arrange.h"

#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"
#include "KarvelPDFLibrary/pages/TabOrder.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <climits>
#include <functional>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::pages;

std::string saved(Document& document)
{
    const auto bytes = saving::toString(document, {});
    EXPECT_TRUE(bytes.has_value()) << (bytes ? std::string() : bytes.error().text);
    const std::string pdf = bytes.value_or("");
    EXPECT_EQ(support::problems(pdf), "");
    return pdf;
}

using Act = std::function<Status(Document&)>;

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
        return result ? Status() : tl::unexpected<Error>(result.error());
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

class Arrangements : public testing::TestWithParam<Row> {};

TEST_P(Arrangements, AreWritten)
{
    auto document = support::opened(support::documentOfPages(6));
    ASSERT_TRUE(GetParam().arrange(*document).has_value());
    EXPECT_TRUE(document->isModified());
    EXPECT_EQ(support::pageTexts(saved(*document)), support::pagesNamed(GetParam().order));
}

INSTANTIATE_TEST_SUITE_P(
    Arrange, Arrangements,
    testing::Values(Row{"move_forward", moving({2, 2}, 6), {1, 4, 5, 2, 3, 6}},
                    Row{"move_back", moving({4, 2}, 1), {4, 5, 1, 2, 3, 6}},
                    Row{"move_to_the_end", moving({1, 1}, 7), {2, 3, 4, 5, 6, 1}},
                    Row{"move_nowhere", moving({2, 2}, 4), {1, 2, 3, 4, 5, 6}},
                    Row{"reverse", reversing({2, 3}), {1, 4, 3, 2, 5, 6}},
                    Row{"reorder", reordering({6, 1, 5, 2, 4, 3}), {6, 1, 5, 2, 4, 3}},
                    Row{"delete_listed", deleting({6, 1, 3, 1}), {2, 4, 5}},
                    Row{"delete_after_reversing",
                        oneAfterTheOther(reversing({1, 6}), deleting({1, 2})),
                        {4, 3, 2, 1}}),
    [](const auto& info) { return info.param.name; });

struct Refusal {
    const char* name;
    Act arrange;
    ErrorCode code;
};

class RefusedArrangements : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedArrangements, ChangeNothing)
{
    auto document = support::opened(support::documentOfPages(6));
    const Status status = GetParam().arrange(*document);
    ASSERT_FALSE(status.has_value());
    EXPECT_EQ(status.error().code, GetParam().code);
    EXPECT_FALSE(document->isModified());
    EXPECT_EQ(document->pageCount(), 6);
}

INSTANTIATE_TEST_SUITE_P(
    Arrange, RefusedArrangements,
    testing::Values(
        Refusal{"move_into_itself", moving({2, 3}, 3), ErrorCode::BadArgument},
        Refusal{"move_before_nothing", moving({2, 3}, 8), ErrorCode::BadPageList},
        Refusal{"move_what_is_not_there", moving({5, 3}, 1), ErrorCode::BadPageList},
        Refusal{"reverse_all_integers", reversing({1, INT_MAX}), ErrorCode::BadPageList},
        Refusal{"reverse_nothing", reversing({1, 0}), ErrorCode::BadPageList},
        Refusal{"reorder_some", reordering({1, 2, 3}), ErrorCode::BadPageList},
        Refusal{"reorder_with_a_repeat", reordering({1, 2, 3, 4, 5, 5}), ErrorCode::BadPageList},
        Refusal{"delete_all", deleting({1, 2, 3, 4, 5, 6}), ErrorCode::BadPageList},
        Refusal{"delete_what_is_not_there", deleting({1, 7}), ErrorCode::BadPageList},
        Refusal{"insert_none", inserting(1, 0), ErrorCode::BadArgument},
        Refusal{"insert_too_many", inserting(1, INT_MAX), ErrorCode::BadArgument},
        Refusal{"insert_nowhere", inserting(8, 1), ErrorCode::BadPageList}),
    [](const auto& info) { return info.param.name; });

TEST(Arrange, BlankPagesLookAsLargeAsTheirNeighbour)
{
    support::PagedDocument file(2, "/Rotate 90 /UserUnit 2");
    auto document = support::opened(file.build());
    ASSERT_TRUE(insertBlankPages(*document, 2, 2).has_value());
    ASSERT_TRUE(insertBlankPages(*document, 5, 1).has_value());
    const std::string pdf = saved(*document);
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
