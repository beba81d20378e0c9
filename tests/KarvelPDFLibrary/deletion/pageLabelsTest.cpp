#include "DeletionCase.h"

namespace {

using support::PagedDocument;

struct Case {
    const char* name;
    std::string labels; // the number tree's /Nums
    std::vector<int> deleted;
    std::string expected;
};

TEST(PageLabels, GoOnNamingTheSamePages)
{
    const Case rows[] = {
        {"first page of a range", "0 << /S /D >>", {1}, "[ 0 << /S /D /St 2 >> ]"},
        {"page in the middle of a range",
         "0 << /S /D >>",
         {4},
         "[ 0 << /S /D >> 3 << /S /D /St 5 >> ]"},
        {"last page", "0 << /S /r >>", {8}, "[ 0 << /S /r >> ]"},
        {"whole range",
         "0 << /S /r >> 2 << /S /A >> 4 << /S /D >>",
         {4, 3},
         "[ 0 << /S /r >> 2 << /S /D >> ]"},
        {"ranges that now go on join",
         "0 << /S /D >> 4 << /P (A-) /S /D >> 5 << /S /D /St 5 >>",
         {5},
         "[ 0 << /S /D >> ]"},
        {"prefix without a number",
         "0 << /P (Cover) >> 3 << /S /D >>",
         {2},
         "[ 0 << /P (Cover) >> 2 << /S /D >> ]"},
        {"pages before the first range",
         "2 << /S /A >>",
         {1},
         "[ 0 << /S /D /St 2 >> 1 << /S /A >> ]"},
        {"every second page",
         "0 << /S /D >>",
         {7, 5, 3, 1},
         "[ 0 << /S /D /St 2 >> 1 << /S /D /St 4 >> 2 << /S /D /St 6 >> 3 << /S /D /St 8 >> ]"}};
    for (const Case& row : rows) {
        SCOPED_TRACE(row.name);
        PagedDocument file(8);
        file.catalogEntries = "/PageLabels << /Nums [" + row.labels + "] >>";
        auto document = support::opened(support::withoutPages(file.build(), row.deleted));
        EXPECT_EQ(document->catalog().getKey("/PageLabels").getKey("/Nums").unparse(),
                  row.expected);
    }
}

} // namespace
