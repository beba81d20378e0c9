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

TEST(Instances, ThatAreNotReleasedDoNoHarmAtTheEnd)
{
    const std::string pdf = support::documentOfPages(3);
    const auto leave = [&] {
        const int instance = KPLCreateLibrary();
        for (int i = 0; i < 3; ++i) {
            KPLLoadFromString(instance, pdf.c_str(), nullptr);
        }
        KPLCloseDocument(instance);
        std::exit(KPLDocumentCount(instance)); // NOLINT: the end of the process is what is tested
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(2), "");
}

struct PageSources {
    const char* name;
    int (*call)(Caller& caller, int source);
    std::vector<int> order; // of the selected document's three pages and the source's two
};

TEST(TakingPages, OutlivesTheirDocument)
{
    const PageSources rows[] = {
        {"append",
         [](Caller& c, int source) { return KPLAppendDocument(c.instance, source); },
         {1, 2, 3, 4, 5}},
        {"insert",
         [](Caller& c, int source) { return KPLInsertDocumentPages(c.instance, source, 2, 1, 1); },
         {5, 1, 2, 3}},
        {"replace",
         [](Caller& c, int source) { return KPLReplacePage(c.instance, 2, source, 1); },
         {1, 4, 3}},
        {"interleave",
         [](Caller& c, int source) { return KPLInterleaveDocument(c.instance, source, 1); },
         {1, 5, 2, 4, 3}}};
    for (const PageSources& row : rows) {
        SCOPED_TRACE(row.name);
        Caller caller;
        const int self = caller.instance;
        const int source = caller.load(support::documentOfPages(5));
        ASSERT_EQ(KPLDeletePages(self, 1, 3), 1);
        const int target = caller.load(support::documentOfPages(3));
        ASSERT_GT(row.call(caller, source), 0) << KPLLastErrorCode(self);
        ASSERT_EQ(KPLSelectDocument(self, source), 1);
        ASSERT_EQ(KPLCloseDocument(self), 1);
        ASSERT_EQ(KPLSelectDocument(self, target), 1);
        EXPECT_EQ(support::pageTexts(caller.bytes(KPLSaveToString(self))),
                  support::pagesNamed(row.order));
    }
}

TEST(Exports, FilesAndStringsGiveTheirPages)
{
    const support::ScratchFolder scratch;
    const auto path = [&](const std::string& name) {
        const std::string file = scratch.path(name);
        return std::wstring(file.begin(), file.end());
    };
    const std::string locked =
        support::rewritten(support::documentOfPages(4), "--encrypt secret owner 256 --");
    scratch.write("a.pdf", locked);
    Caller caller;
    const int self = caller.instance;
    ASSERT_GT(caller.load(support::documentOfPages(1)), 0);
    EXPECT_EQ(KPLAppendFile(self, caller.wide(path("a.pdf")), caller.wide(L"wrong"), nullptr), 0);
    EXPECT_EQ(KPLLastErrorCode(self), 8);
    EXPECT_EQ(KPLAppendFile(self, caller.wide(path("a.pdf")), caller.wide(L"secret"),
                            caller.wide(L"z,2")),
              2);
    EXPECT_EQ(KPLInsertFilePages(self, caller.wide(path("a.pdf")), caller.wide(L"secret"),
                                 caller.wide(L"3"), 1),
              1);
    char* data = caller.buffer(locked.data(), locked.size());
    EXPECT_EQ(KPLAppendFromString(self, data, caller.wide(L"owner")), 4);
    EXPECT_EQ(KPLCopyPages(self, 1, 1, 2), 2);
    EXPECT_EQ(support::pageTexts(caller.bytes(KPLSaveToString(self))),
              support::pagesNamed({3, 3, 1, 4, 2, 1, 2, 3, 4}));
    EXPECT_EQ(KPLSavePagesToFile(self, caller.wide(L"4,1,4"), caller.wide(path("b.pdf"))), 3);
    EXPECT_EQ(support::pageTexts(support::readFile(scratch.path("b.pdf"))),
              support::pagesNamed({4, 3, 4}));
    EXPECT_EQ(support::pageTexts(caller.bytes(KPLSavePagesToString(self, 8, 2))),
              support::pagesNamed({3, 4}));
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

TEST(SelectedPages, StayWithTheirPageOrMoveToTheNext)
{
    const Selection rows[] = {{"before", 5, L"1,3", 3},
                              {"after", 2, L"5-8", 2},
                              {"itself", 5, L"4-6", 4},
                              {"itself at the end", 8, L"7,8,7", 6},
                              {"repeats", 5, L"1,1,1-2", 3}};
    for (const Selection& row : rows) {
        SCOPED_TRACE(row.name);
        Caller caller;
        ASSERT_GT(caller.load(support::documentOfPages(8)), 0);
        ASSERT_EQ(KPLSelectPage(caller.instance, row.selected), 1);
        ASSERT_GT(KPLDeletePageRanges(caller.instance, caller.wide(row.deleted)), 0);
        EXPECT_EQ(KPLSelectedPage(caller.instance), row.afterwards);
    }
}

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

TEST(Exports, ForgottenWarningsStillKeepLostPagesFromBeingSaved)
{
    // The content of page 1 is lost.
    const std::string damaged =
        support::replaced(support::documentOfPages(3), "4 0 obj", "4 0 xxx");
    Caller caller;
    const int self = caller.instance;
    ASSERT_GT(caller.load(damaged), 0);
    KPLDeletePages(self, 2, 1);
    EXPECT_EQ(KPLSaveToString(self), nullptr);
    EXPECT_EQ(KPLLastErrorCode(self), 7);
    const int warnings = KPLWarningCount(self);
    ASSERT_GT(warnings, 0);
    EXPECT_NE(caller.text(KPLGetWarningText(self, warnings)), L"");
    EXPECT_EQ(KPLGetWarningText(self, warnings + 1), nullptr);
    EXPECT_EQ(KPLClearWarnings(self), 1);
    EXPECT_EQ(KPLWarningCount(self), 0);
    EXPECT_EQ(KPLGetWarningText(self, 1), nullptr);
    EXPECT_EQ(KPLSaveToString(self), nullptr);
}

TEST(Exports, ReconstructionCanBeRefused)
{
    const std::string damaged =
        support::replaced(support::documentOfPages(3), "startxref\n", "startxref\n99");
    Caller caller;
    const int self = caller.instance;
    EXPECT_EQ(KPLSetReconstruction(self, 3), 0);
    ASSERT_EQ(KPLSetReconstruction(self, 0), 1);
    EXPECT_EQ(caller.load(damaged), 0);
    ASSERT_EQ(KPLSetReconstruction(self, 1), 1);
    ASSERT_GT(caller.load(damaged), 0);
    EXPECT_EQ(KPLWasReconstructed(self), 1);
    EXPECT_GT(KPLCheckDocument(self, 1), 0);
    EXPECT_EQ(KPLCheckDocument(self, 4), -1);
}

TEST(Exports, OfLossesAreAllowedForDocumentsThatAreLoadedThen)
{
    const std::string damaged =
        support::replaced(support::documentOfPages(3), "4 0 obj", "4 0 xxx");
    Caller caller;
    const int self = caller.instance;
    for (const int mode : {1, 2, 1}) {
        ASSERT_EQ(KPLSetReconstruction(self, mode), 1);
        ASSERT_GT(caller.load(damaged), 0);
        EXPECT_EQ(KPLSaveToString(self) != nullptr, mode == 2);
        const std::wstring last = caller.text(KPLGetWarningText(self, KPLWarningCount(self)));
        EXPECT_EQ(last.find(L"lost of page 1: ") == 0, mode == 2);
    }
}

TEST(Exports, OfFunctionsThatAreNotAvailableSaySo)
{
    Caller caller;
    EXPECT_EQ(KPLRepairPageTree(caller.instance), 0);
    EXPECT_EQ(KPLLastErrorCode(caller.instance), 13);
}

TEST(Exports, ThatAreNotAvailableFreeTheBuffersOfTheirWideStrings)
{
    Caller caller;
    wchar_t* buffers[5];
    for (wchar_t*& buffer : buffers) {
        buffer = caller.wide(L"text");
    }
    const auto isFreed = [&](wchar_t* buffer) {
        return KPLReleaseBuffer(caller.instance, reinterpret_cast<char*>(buffer)) == 0;
    };
    EXPECT_EQ(KPLOverlayFile(caller.instance, buffers[0], buffers[1], buffers[2], 1, 0), 0);
    EXPECT_EQ(KPLBeginMarkedContent(caller.instance, buffers[3]), 0);
    EXPECT_EQ(KPLLastErrorCode(caller.instance), 13);
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(isFreed(buffers[i])) << i;
    }
    EXPECT_FALSE(isFreed(buffers[4])) << "nobody took it";
    EXPECT_EQ(KPLBeginMarkedContent(caller.instance, nullptr), 0);
}

/// A document whose two pages share their one content stream.
std::string sharingDocument()
{
    support::PagedDocument file(2);
    const int content = file.builder.addStream(support::showText("Both"));
    for (const int page : file.pages) {
        file.builder.set(page,
                         "<< /Type /Page /Parent " + support::PdfBuilder::reference(file.root) +
                             " /MediaBox [0 0 612 792] /Resources << /Font << /F1 << /Type /Font "
                             "/Subtype /Type1 /BaseFont /Helvetica >> >> >> /Contents " +
                             support::PdfBuilder::reference(content) + " >>");
    }
    return file.build();
}

TEST(Content, ThatIsSharedIsTheOwnOfAPageThatChanges)
{
    for (const bool isAskedFor : {true, false}) {
        for (const int position : {1, 2}) {
            Caller caller;
            const int self = caller.instance;
            ASSERT_GT(caller.load(sharingDocument()), 0);
            if (isAskedFor) {
                ASSERT_EQ(KPLRemoveSharedContentStreams(self), 1);
            }
            ASSERT_EQ(KPLIsDocumentModified(self), 0) << "nothing is copied before a change";
            ASSERT_EQ(KPLSelectPage(self, 2), 1);
            const std::string added = "BT /F1 24 Tf 72 600 Td (Added) Tj ET";
            ASSERT_EQ(KPLAddPageContentFromString(self, added.c_str(), position), 1);
            const std::string both = support::showText("Both");
            EXPECT_EQ(caller.bytes(KPLGetPageContentToString(self, 1)), both);
            const std::string changed = caller.bytes(KPLGetPageContentToString(self, 2));
            EXPECT_EQ(changed.find(added) < changed.find(both), position == 1);
            const std::string saved = caller.bytes(KPLSaveToString(self));
            EXPECT_EQ(support::pageTexts(saved), (std::vector<std::string>{"Both", "Both  Added"}));
            EXPECT_EQ(support::problems(saved), "");
        }
    }
}

TEST(Content, StaysSharedInAFileAsLongAsNothingChangesIt)
{
    std::string saved[2];
    for (const bool isAskedFor : {false, true}) {
        Caller caller;
        ASSERT_GT(caller.load(sharingDocument()), 0);
        if (isAskedFor) {
            ASSERT_EQ(KPLRemoveSharedContentStreams(caller.instance), 1);
        }
        saved[isAskedFor] = caller.bytes(KPLSaveToString(caller.instance));
    }
    EXPECT_EQ(saved[0].size(), saved[1].size());
}

TEST(Content, ThatCannotBeReadIsRefused)
{
    const std::pair<const char*, int> rows[] = {{"q BT (x) Tj ET Q", 1},
                                                {"", 1},
                                                {"BI /W 1 /H 1 /BPC 8 /CS /G ID Q EI", 1},
                                                {"(q) Tj [(Q)] TJ /q gs", 1},
                                                {"q", 0},
                                                {"Q q", 0},
                                                {"BT", 0},
                                                {"(open", 0},
                                                {"[1 2", 0},
                                                {"<< /A 1", 0},
                                                {">> <<", 0}};
    Caller caller;
    ASSERT_GT(caller.load(support::documentOfPages(1)), 0);
    for (const auto& [content, added] : rows) {
        KPLClearLastError(caller.instance);
        EXPECT_EQ(KPLAddPageContentFromString(caller.instance, content, 2), added) << content;
        EXPECT_EQ(KPLLastErrorCode(caller.instance), added == 1 ? 0 : 14) << content;
    }
    EXPECT_EQ(KPLAddPageContentFromString(caller.instance, "q Q", 3), 0);
    EXPECT_EQ(KPLLastErrorCode(caller.instance), 1);
}

} // namespace
