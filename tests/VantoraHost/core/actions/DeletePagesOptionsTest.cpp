#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;

PreferencesMap withRange(const QString& range)
{
    return {{deletepages::rangeKey, range}};
}

TEST(RangeOption, IsChecked)
{
    const struct {
        const char* name;
        const char* range;
        const char* complaint; ///< a part of it; null when the range is fine
    } rows[] = {
        {"several", "1,4-6,9-15,21", nullptr},
        {"spaces between", "1, 4 - 6", nullptr},
        {"the largest number", "2147483647", nullptr},
        {"empty", "", "not a page range"},
        {"page 0", "0", "not a page range"},
        {"descending", "6-4", "not a page range"},
        {"words", "all", "not a page range"},
        // These pass the check of the syntax, and would then be read as page 0 or as nothing.
        {"too large", "1,2147483648", "no page number"},
        {"digits of another script", "\u0663", "no page number"},
        {"a space inside a number", "1 2", "space inside a number"},
        {"a space inside the end", "3-1 5", "space inside a number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Outcome checked = deletepages::check(withRange(row.range));
        ASSERT_EQ(checked.has_value(), !row.complaint);
        if (!checked) {
            EXPECT_EQ(checked.error().reason, Reason::BadPageRange);
            EXPECT_THAT(checked.error().sentence, HasSubstr(row.complaint));
        }
    }
}

TEST(RangeOption, IsMissing)
{
    EXPECT_FALSE(deletepages::check({}));
}

TEST(RangeOption, NamesTheHighestPageWhereverItStands)
{
    EXPECT_EQ(deletepages::highestPageNamed(withRange("3,12-40,7")), 40);
    EXPECT_EQ(deletepages::highestPageNamed(withRange("3,")), 3);
}

TEST(RangeOption, IsCutInMessagesWhenItIsLong)
{
    const QString odd = QString("1,3,").repeated(100000) + "x";
    EXPECT_EQ(deletepages::shownRange(withRange("1,3")), "1,3");
    EXPECT_THAT(deletepages::shownRange(withRange(odd)), testing::EndsWith("1,3,..."));
    EXPECT_LT(deletepages::check(withRange(odd)).error().sentence.size(), 200U);
}

TEST(RangeOption, NeverTakesPage0)
{
    EXPECT_THAT(deletepages::pagesTaken(withRange("0,2"), 5), ElementsAre(2));
}

} // namespace
