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

TEST(PageLists, NameWhatQpdfSays)
{
    const Row rows[] = {{"one", "7"},
                        {"runs and repeats", "1-3,2,12-9"},
                        {"last", "z"},
                        {"last but one", "r2"},
                        {"from the end", "r3-r1"},
                        {"backwards", "z-1"},
                        {"up to the last", "10-z"},
                        {"odd places", "2-7,12:odd"},
                        {"even places", "2-7,12:even"},
                        {"leading zeros", "007"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(parsePageList(row.text, 12).value(), QUtil::parse_numrange(row.text, 12));
    }
}

TEST(RefusedPageLists, AreNotUnderstood)
{
    const Row rows[] = {{"page zero", "0"},
                        {"page too many", "13"},
                        {"from the end", "r13"},
                        {"negative", "-3"},
                        {"open range", "3-"},
                        {"empty item", "1,,2"},
                        {"comma at the end", "1,"},
                        {"words", "all"},
                        {"space", "1, 2"},
                        {"unknown filter", "1-3:prime"},
                        {"filter twice", "1-3:odd:odd"},
                        {"nothing left", "1:even"},
                        {"thousand million", "1-1000000000"},
                        {"beyond every integer", "99999999999999999999999999999999999999"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto pages = parsePageList(row.text, 12);
        ASSERT_FALSE(pages.has_value());
        EXPECT_EQ(pages.error().code, ErrorCode::BadPageList);
        EXPECT_LT(pages.error().text.size(), 100U);
    }
}

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
