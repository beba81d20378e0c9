#include "VantoraHost/core/documents/PageForecast.h"

#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;

Sequence deleting(const std::vector<std::string>& ranges)
{
    std::vector<Step> steps;
    for (const std::string& range : ranges) {
        Step step;
        step.action.name = deletepages::actionName;
        step.preferences.insert(deletepages::rangeKey, QString::fromStdString(range));
        steps.push_back(step);
    }
    return Sequence(steps);
}

struct Case {
    const char* name;
    std::vector<std::string> ranges;
    int pages;
    std::vector<int> removed;
    int pagesAfter;
    std::vector<std::string> warnings; ///< a part of each
};

class Forecast : public testing::TestWithParam<Case> {};

TEST_P(Forecast, Is)
{
    const auto forecast = forecastPages(deleting(GetParam().ranges), GetParam().pages);
    ASSERT_TRUE(forecast);
    EXPECT_EQ(forecast->removed, GetParam().removed);
    EXPECT_EQ(forecast->pagesAfter, GetParam().pagesAfter);
    ASSERT_EQ(forecast->warnings.size(), GetParam().warnings.size());
    for (std::size_t i = 0; i < forecast->warnings.size(); ++i) {
        EXPECT_THAT(forecast->warnings[i], HasSubstr(GetParam().warnings[i]));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Pages, Forecast,
    testing::Values(
        Case{"some", {"2,4-6"}, 12, {2, 4, 5, 6}, 8, {}},
        Case{"out_of_order_and_repeated", {"6,2,6,3-4"}, 12, {2, 3, 4, 6}, 8, {}},
        Case{"partly_beyond", {"8-12"}, 10, {8, 9, 10}, 7, {"up to 12, but the document has 10"}},
        Case{"all_beyond", {"11-20"}, 10, {}, 10, {"none was taken out"}},
        Case{"beyond_in_an_early_item", {"20,1"}, 10, {1}, 9, {"up to 20"}},
        Case{"the_last_page_exactly", {"10"}, 10, {10}, 9, {}},
        Case{"every_page", {"1-3"}, 3, {1, 2, 3}, 1, {"one blank page is left"}},
        Case{"every_page_and_more",
             {"1-9"},
             1,
             {1},
             1,
             {"up to 9, but the document has 1 page", "one blank page is left"}},
        Case{"a_second_step_counts_what_the_first_left", {"1", "1"}, 5, {1, 2}, 3, {}},
        Case{"a_second_step_reaches_further_back", {"2-3", "2"}, 5, {2, 3, 4}, 2, {}},
        Case{"a_blank_page_that_goes_again",
             {"1-2", "1"},
             2,
             {1, 2},
             1,
             {"one blank page is left", "one blank page is left"}},
        Case{"no_step", {}, 4, {}, 4, {}}),
    [](const auto& info) { return info.param.name; });

TEST(ForecastOfAnotherAction, IsNotMade)
{
    Step unknown;
    unknown.action.name = "Another";
    EXPECT_FALSE(forecastPages(Sequence({unknown}), 10));
}

TEST(PageNumbers, AreRunsForPeople)
{
    EXPECT_EQ(pageNumbersText({}), "");
    EXPECT_EQ(pageNumbersText({7}), "7");
    EXPECT_EQ(pageNumbersText({1, 2, 4, 6, 7, 8}), "1-2, 4, 6-8");
    EXPECT_EQ(pageNumbersText({1, 3, 5, 7}, 3), "1, 3, 5, ...");
    EXPECT_EQ(pageNumbersText({1, 3, 5}, 3), "1, 3, 5");
}

} // namespace
