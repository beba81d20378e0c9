#include "KarvelPDFLibrary/pages/DeletePages.h"

#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

struct Case {
    const char* name;
    int pages;
    std::vector<PageRun> runs;
    std::vector<int> remaining;
};

class Deleting : public testing::TestWithParam<Case> {};

TEST_P(Deleting, LeavesTheOtherPagesInOrder)
{
    auto document = support::opened(support::documentOfPages(GetParam().pages));
    for (const PageRun& run : GetParam().runs) {
        ASSERT_TRUE(pages::deletePages(*document, run).has_value());
    }
    EXPECT_EQ(document->pageCount(), static_cast<int>(GetParam().remaining.size()));
    const std::string bytes = saving::toString(*document, {}).value();
    EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed(GetParam().remaining));
    EXPECT_EQ(support::problems(bytes), "");
}

std::vector<PageRun> everyOddPageOf(int pages)
{
    std::vector<PageRun> runs;
    for (int page = pages - 1 + pages % 2; page >= 1; page -= 2) {
        runs.push_back({page, 1});
    }
    return runs;
}

std::vector<int> everyEvenPageOf(int pages)
{
    std::vector<int> numbers;
    for (int page = 2; page <= pages; page += 2) {
        numbers.push_back(page);
    }
    return numbers;
}

INSTANTIATE_TEST_SUITE_P(
    DeletePages, Deleting,
    testing::Values(Case{"the_first", 3, {{1, 1}}, {2, 3}}, Case{"the_last", 3, {{3, 1}}, {1, 2}},
                    Case{"all_but_one", 5, {{4, 2}, {1, 2}}, {3}},
                    Case{"runs_from_the_back", 6, {{5, 1}, {2, 2}}, {1, 4, 6}},
                    Case{"runs_from_the_front", 6, {{1, 1}, {1, 1}, {2, 2}}, {3, 6}},
                    Case{"every_odd_page_of_a_deep_tree", 300, everyOddPageOf(300),
                         everyEvenPageOf(300)}),
    [](const auto& info) { return info.param.name; });

TEST(DeletePages, RefusesRunsThatAreNotThereOrEmptyTheDocument)
{
    auto document = support::opened(support::documentOfPages(3));
    for (const PageRun run :
         {PageRun{0, 1}, PageRun{4, 1}, PageRun{3, 2}, PageRun{1, 3}, PageRun{1, 0}, PageRun{-1, 2},
          PageRun{2, -1}, PageRun{2, 2147483647}, PageRun{2147483647, 2147483647}}) {
        const Status status = pages::deletePages(*document, run);
        ASSERT_FALSE(status.has_value()) << run.first << " " << run.count;
        EXPECT_EQ(status.error().code, ErrorCode::BadPageList);
    }
    EXPECT_EQ(document->pageCount(), 3);
    EXPECT_FALSE(document->isModified());
}

TEST(DeletePages, DropsWhatOnlyTheRemovedPagesUse)
{
    support::PagedDocument file(2);
    auto& builder = file.builder;
    const int image =
        builder.addStream("SECRET-IMAGE", "/Type /XObject /Subtype /Image /Width 12 /Height 1 "
                                          "/BitsPerComponent 8 /ColorSpace /DeviceGray");
    builder.set(file.pages[0], "<< /Type /Page /MediaBox [0 0 9 9] /Resources << /XObject << /I " +
                                   support::PdfBuilder::reference(image) + " >> >> >>");
    // A link on the page that stays still refers to the one that goes.
    builder.set(file.pages[1],
                "<< /Type /Page /MediaBox [0 0 9 9] /Annots [<< /Type /Annot /Subtype /Link "
                "/Rect [0 0 1 1] /Dest [" +
                    support::PdfBuilder::reference(file.pages[0]) + " /Fit] >>] >>");
    auto document = support::opened(file.build());
    ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
    saving::SaveOptions plain;
    plain.objectStreams = saving::ObjectStreams::None;
    plain.streamData = saving::StreamData::Keep;
    EXPECT_EQ(saving::toString(*document, plain).value().find("SECRET-IMAGE"), std::string::npos);
}

} // namespace
