#include "exports.h"
#include "tests/support/Images.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Calls the built library as its callers do: strings in buffers, results copied at once.
class Caller {
public:
    Caller() : instance(KPLCreateLibrary()) {}
    ~Caller() { KPLReleaseLibrary(instance); }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    wchar_t* wide(const std::wstring& text)
    {
        return reinterpret_cast<wchar_t*>(
            buffer(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)));
    }

    char* buffer(const char* bytes, std::size_t length)
    {
        char* created = KPLCreateBuffer(instance, static_cast<int>(length));
        KPLAddToBuffer(instance, created, bytes, static_cast<int>(length));
        return created;
    }

    std::wstring text(const wchar_t* result) const
    {
        return std::wstring(result, static_cast<std::size_t>(KPLStringResultLength(instance)));
    }

    std::string bytes(const char* result) const
    {
        return std::string(result, static_cast<std::size_t>(KPLAnsiStringResultLength(instance)));
    }

    int load(const std::string& pdf)
    {
        char* data = buffer(pdf.data(), pdf.size());
        const int document = KPLLoadFromString(instance, data, nullptr);
        KPLReleaseBuffer(instance, data);
        return document;
    }

    const int instance;
};

/// Loads, changes, shows and saves a document of `pages` pages again and again.
void work(int pages, const std::string& pdf, std::atomic<int>& failures)
{
    const auto expect = [&](bool holds) { failures += holds ? 0 : 1; };
    Caller caller;
    const int self = caller.instance;
    const std::wstring title = L"Thread " + std::to_wstring(pages);
    for (int round = 1; round <= 15; ++round) {
        const int document = caller.load(pdf);
        expect(document > 0);
        expect(KPLPageCount(self) == pages);
        expect(KPLDeletePages(self, 2, pages / 2) == 1);
        expect(KPLSetDocumentInformation(self, 1, caller.wide(title)) == 1);
        expect(caller.text(KPLGetDocumentInformation(self, 1)) == title);
        expect(caller.text(KPLGetPageText(self, 2, 1)) ==
               L"Page " + std::to_wstring(2 + pages / 2));
        const support::Image image =
            support::decoded(caller.bytes(KPLRenderThumbnailToString(self, 1, 40, 1)));
        expect(image.width == 31 && image.height == 40);
        KPLClearLastError(self);
        expect(KPLSelectPage(self, pages + round) == 0);
        expect(KPLLastErrorCode(self) == 10);
        expect(KPLSetFlateLevel(self, round % 10) == 1);
        const std::string saved = caller.bytes(KPLSaveToString(self));
        expect(caller.load(saved) > document);
        expect(KPLPageCount(self) == pages - pages / 2);
        expect(caller.text(KPLGetDocumentInformation(self, 1)) == title);
        expect(KPLCloseAllDocuments(self) == 2);
    }
}

TEST(Instances, WorkSideBySideInThreads)
{
    std::atomic<int> failures(0);
    std::vector<std::thread> threads;
    for (const int pages : {8, 40}) {
        threads.emplace_back(work, pages, support::documentOfPages(pages), std::ref(failures));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, 0);
}

TEST(Instances, KeepTheirErrorsAndDocumentsToThemselves)
{
    Caller one;
    Caller other;
    ASSERT_GT(one.load(support::documentOfPages(2)), 0);
    EXPECT_EQ(KPLDeletePages(one.instance, 1, 2), 0);
    EXPECT_EQ(KPLLastErrorCode(one.instance), 10);
    EXPECT_EQ(KPLLastErrorCode(other.instance), 0);
    EXPECT_EQ(KPLPageCount(other.instance), 0);
    EXPECT_EQ(KPLLastErrorCode(other.instance), 2);
    EXPECT_EQ(KPLPageCount(one.instance), 2);
}

struct Selection {
    const char* name;
    int selected;
    const wchar_t* deleted;
    int afterwards;
};

class SelectedPages : public testing::TestWithParam<Selection> {};

TEST_P(SelectedPages, StayWithTheirPageOrMoveToTheNext)
{
    Caller caller;
    ASSERT_GT(caller.load(support::documentOfPages(8)), 0);
    ASSERT_EQ(KPLSelectPage(caller.instance, GetParam().selected), 1);
    ASSERT_GT(KPLDeletePageRanges(caller.instance, caller.wide(GetParam().deleted)), 0);
    EXPECT_EQ(KPLSelectedPage(caller.instance), GetParam().afterwards);
}

INSTANTIATE_TEST_SUITE_P(Exports, SelectedPages,
                         testing::Values(Selection{"before", 5, L"1,3", 3},
                                         Selection{"after", 2, L"5-8", 2},
                                         Selection{"itself", 5, L"4-6", 4},
                                         Selection{"itself_at_the_end", 8, L"7,8,7", 6},
                                         Selection{"repeats", 5, L"1,1,1-2", 3}),
                         [](const auto& info) { return info.param.name; });

TEST(Exports, MovingPagesTakesTheSelectionAlong)
{
    Caller caller;
    const int self = caller.instance;
    ASSERT_GT(caller.load(support::documentOfPages(5)), 0);
    ASSERT_EQ(KPLSelectPage(self, 2), 1);
    EXPECT_EQ(KPLMovePages(self, 1, 2, 6), 1);
    EXPECT_EQ(KPLSelectedPage(self), 5);
    EXPECT_EQ(KPLInsertPages(self, 1, 3), 1);
    EXPECT_EQ(KPLSelectedPage(self), 8);
    EXPECT_EQ(KPLGetPageOfObject(self, KPLGetPageObject(self, 8)), 8);
    EXPECT_EQ(caller.text(KPLExpandPageRanges(self, caller.wide(L"z-6,1"))), L"8,7,6,1");
}

TEST(Exports, OfFunctionsThatAreNotAvailableSaySo)
{
    Caller caller;
    EXPECT_EQ(KPLRepairPageTree(caller.instance), 0);
    EXPECT_EQ(KPLLastErrorCode(caller.instance), 13);
}

} // namespace
