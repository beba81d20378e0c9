#include "KarvelPDFLibrary/pages/PageList.h"

#include <gtest/gtest.h>
#include <numeric>
#include <qpdf/QUtil.hh>

namespace {

using namespace karvel;
using pages::parsePageList;

struct Row {
    const char* name;
    const char* text;
};

class PageLists : public testing::TestWithParam<Row> {};

TEST_P(PageLists, NameWhatQpdfSays)
{
    EXPECT_EQ(parsePageList(GetParam().text, 12).value(),
              QUtil::parse_numrange(GetParam().text, 12));
}

INSTANTIATE_TEST_SUITE_P(PageList, PageLists,
                         testing::Values(Row{"one", "7"}, Row{"runs_and_repeats", "1-3,2,12-9"},
                                         Row{"last", "z"}, Row{"last_but_one", "r2"},
                                         Row{"from_the_end", "r3-r1"}, Row{"backwards", "z-1"},
                                         Row{"up_to_the_last", "10-z"},
                                         Row{"odd_places", "2-7,12:odd"},
                                         Row{"even_places", "2-7,12:even"},
                                         Row{"leading_zeros", "007"}),
                         [](const auto& info) { return info.param.name; });

class RefusedPageLists : public testing::TestWithParam<Row> {};

TEST_P(RefusedPageLists, AreNotUnderstood)
{
    const auto pages = parsePageList(GetParam().text, 12);
    ASSERT_FALSE(pages.has_value());
    EXPECT_EQ(pages.error().code, ErrorCode::BadPageList);
    EXPECT_LT(pages.error().text.size(), 100U);
}

INSTANTIATE_TEST_SUITE_P(
    PageList, RefusedPageLists,
    testing::Values(Row{"page_zero", "0"}, Row{"page_too_many", "13"}, Row{"from_the_end", "r13"},
                    Row{"negative", "-3"}, Row{"open_range", "3-"}, Row{"empty_item", "1,,2"},
                    Row{"comma_at_the_end", "1,"}, Row{"words", "all"}, Row{"space", "1, 2"},
                    Row{"unknown_filter", "1-3:prime"}, Row{"filter_twice", "1-3:odd:odd"},
                    Row{"nothing_left", "1:even"}, Row{"thousand_million", "1-1000000000"},
                    Row{"beyond_every_integer", "99999999999999999999999999999999999999"}),
    [](const auto& info) { return info.param.name; });

TEST(PageList, ThatIsEmptyNamesEveryPage)
{
    EXPECT_EQ(parsePageList("", 3).value(), (std::vector<int>{1, 2, 3}));
}

TEST(PageList, ExpandsOnlySoFar)
{
    std::string text = "1-z";
    for (int i = 0; i < 100000; ++i) {
        text += ",1-z";
    }
    const auto pages = parsePageList(text, 1000000);
    ASSERT_FALSE(pages.has_value());
    EXPECT_EQ(pages.error().code, ErrorCode::OutOfMemory);
    EXPECT_EQ(parsePageList(std::string(1000000, ','), 10).error().code, ErrorCode::BadPageList);
}

} // namespace
