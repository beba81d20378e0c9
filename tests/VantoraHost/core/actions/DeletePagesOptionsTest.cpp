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

struct Case {
    const char* name;
    const char* range;
    const char* complaint; ///< a part of it; null when the range is fine
};

class RangeOption : public testing::TestWithParam<Case> {};

TEST_P(RangeOption, IsChecked)
{
    const Outcome checked = deletepages::check(withRange(GetParam().range));
    if (!GetParam().complaint) {
        EXPECT_TRUE(checked) << checked.error().sentence;
        return;
    }
    ASSERT_FALSE(checked);
    EXPECT_EQ(checked.error().reason, Reason::BadPageRange);
    EXPECT_THAT(checked.error().sentence, HasSubstr(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, RangeOption,
    testing::Values(Case{"several", "1,4-6,9-15,21", nullptr},
                    Case{"spaces_between", "1, 4 - 6", nullptr},
                    Case{"the_largest_number", "2147483647", nullptr},
                    Case{"empty", "", "not a page range"}, Case{"page_0", "0", "not a page range"},
                    Case{"descending", "6-4", "not a page range"},
                    Case{"words", "all", "not a page range"},
                    // These pass the check of the syntax, and would then be read as page 0 or as
                    // nothing at all.
                    Case{"too_large", "1,2147483648", "no page number"},
                    Case{"digits_of_another_script", "\u0663", "no page number"},
                    Case{"a_space_inside_a_number", "1 2", "space inside a number"},
                    Case{"a_space_inside_the_end", "3-1 5", "space inside a number"}),
    [](const auto& info) { return info.param.name; });

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
