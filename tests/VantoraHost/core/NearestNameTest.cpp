#include "VantoraHost/core/NearestName.h"

#include <gtest/gtest.h>

namespace {

using vantora::nearestName;

TEST(NearestName, IsTheOneThatWasProbablyMeant)
{
    const std::vector<std::string> names = {"byPageRangeTextEdit", "evenPages", "oddPages"};
    const struct {
        const char* name;
        std::string misspelt;
        const char* nearest;
    } rows[] = {
        {"a letter left out", "byPageRangTextEdit", "byPageRangeTextEdit"},
        {"another case", "BYPAGERANGETEXTEDIT", "byPageRangeTextEdit"},
        {"letters added", "oddddPages", "oddPages"},
        {"letters replaced", "evnePages", "evenPages"},
        {"something else", "colour", ""},
        {"nothing", "", ""},
        {"what nobody would misspell", std::string(100000, 'x'), ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(nearestName(row.misspelt, names), row.nearest);
    }
    EXPECT_EQ(nearestName("oddPages", {}), "");
}

} // namespace
