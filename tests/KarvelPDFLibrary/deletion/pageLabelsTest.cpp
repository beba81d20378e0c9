#include "DeletionCase.h"

namespace {

using support::PagedDocument;

struct Case {
    const char* name;
    std::string labels; // the number tree's /Nums
    std::vector<int> deleted;
    std::string expected;
};

class PageLabels : public testing::TestWithParam<Case> {};

TEST_P(PageLabels, GoOnNamingTheSamePages)
{
    PagedDocument file(8);
    file.catalogEntries = "/PageLabels << /Nums [" + GetParam().labels + "] >>";
    auto document = support::opened(support::withoutPages(file.build(), GetParam().deleted));
    EXPECT_EQ(document->catalog().getKey("/PageLabels").getKey("/Nums").unparse(),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Deletion, PageLabels,
    testing::Values(
        Case{"first_page_of_a_range", "0 << /S /D >>", {1}, "[ 0 << /S /D /St 2 >> ]"},
        Case{"page_in_the_middle_of_a_range",
             "0 << /S /D >>",
             {4},
             "[ 0 << /S /D >> 3 << /S /D /St 5 >> ]"},
        Case{"last_page", "0 << /S /r >>", {8}, "[ 0 << /S /r >> ]"},
        Case{"whole_range",
             "0 << /S /r >> 2 << /S /A >> 4 << /S /D >>",
             {4, 3},
             "[ 0 << /S /r >> 2 << /S /D >> ]"},
        Case{"ranges_that_now_go_on_join",
             "0 << /S /D >> 4 << /P (A-) /S /D >> 5 << /S /D /St 5 >>",
             {5},
             "[ 0 << /S /D >> ]"},
        Case{"prefix_without_a_number",
             "0 << /P (Cover) >> 3 << /S /D >>",
             {2, 1},
             "[ 0 << /P (Cover) >> 1 << /S /D >> ]"},
        Case{"pages_before_the_first_range",
             "2 << /S /A >>",
             {1},
             "[ 0 << /S /D /St 2 >> 1 << /S /A >> ]"},
        Case{
            "every_second_page",
            "0 << /S /D >>",
            {7, 5, 3, 1},
            "[ 0 << /S /D /St 2 >> 1 << /S /D /St 4 >> 2 << /S /D /St 6 >> 3 << /S /D /St 8 >> ]"}),
    [](const auto& info) { return info.param.name; });

} // namespace
