#include "VantoraHost/core/documents/PageForecast.h"

#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
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

TEST(Forecast, IsWhatTheActionDoes)
{
    const char* const blank = "names every page";
    const char* const later = "in step 2, the range 1 names every page";
    const struct {
        const char* name;
        std::vector<std::string> ranges;
        int pages;
        std::vector<int> removed;
        int pagesAfter;
        std::vector<std::string> warnings; ///< a part of each
    } rows[] = {
        {"some", {"2,4-6"}, 12, {2, 4, 5, 6}, 8, {}},
        {"out of order and repeated", {"6,2,6,3-4"}, 12, {2, 3, 4, 6}, 8, {}},
        {"partly beyond", {"8-12"}, 10, {8, 9, 10}, 7, {"up to 12, but the document has 10"}},
        {"all beyond", {"11-20"}, 10, {}, 10, {"none was taken out"}},
        {"beyond in an early item", {"20,1"}, 10, {1}, 9, {"up to 20"}},
        {"the last page exactly", {"10"}, 10, {10}, 9, {}},
        {"every page", {"1-3"}, 3, {1, 2, 3}, 1, {blank}},
        {"every page and more",
         {"1-9"},
         1,
         {1},
         1,
         {"up to 9, but the document has 1 page", blank}},
        {"a second step counts what the first left", {"1", "1"}, 5, {1, 2}, 3, {}},
        {"a second step reaches further back", {"2-3", "2"}, 5, {2, 3, 4}, 2, {}},
        {"a blank page that goes again",
         {"1-2", "1"},
         2,
         {1, 2},
         1,
         {"in step 1, the range 1-2 names", later}},
        {"a second step beyond what the first left",
         {"1", "5"},
         5,
         {1},
         4,
         {"in step 2, the range 5 names pages up to 5, but the document has 4 pages"}},
        {"no step", {}, 4, {}, 4, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto forecast = forecastPages(deleting(row.ranges), row.pages);
        ASSERT_TRUE(forecast);
        EXPECT_EQ(forecast->removed, row.removed);
        EXPECT_EQ(forecast->pagesAfter, row.pagesAfter);
        std::vector<std::string> warnings = forecast->unmet;
        warnings.insert(warnings.end(), forecast->emptied.begin(), forecast->emptied.end());
        ASSERT_EQ(warnings.size(), row.warnings.size());
        for (std::size_t i = 0; i < row.warnings.size(); ++i) {
            EXPECT_THAT(warnings[i], HasSubstr(row.warnings[i]));
        }
    }
}

TEST(ForecastOfAnotherAction, IsNotMade)
{
    Step unknown;
    unknown.action.name = "Another";
    EXPECT_FALSE(forecastPages(Sequence({unknown}), 10));
}

} // namespace
