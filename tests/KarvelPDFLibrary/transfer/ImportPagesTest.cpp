#include "KarvelPDFLibrary/transfer/ImportPages.h"

#include "KarvelPDFLibrary/deletion/Synchronize.h"
#include "KarvelPDFLibrary/pages/Arrange.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/saving/Snapshot.h"
#include "KarvelPDFLibrary/transfer/Frozen.h"
#include "tests/KarvelPDFLibrary/transfer/Told.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::transfer;
using Names = std::vector<std::string>;

std::shared_ptr<Document> source(const std::string& pdf, const std::string& password = {})
{
    return support::opened(pdf, password);
}

Outcome append(Document& target, const std::shared_ptr<Document>& pages, std::vector<int> list)
{
    Imports imports;
    return importPages(target, imports, pages, list, target.pageCount() + 1, WithOutline::Yes);
}

/// What is saved when pages of one document have come behind those of another.
std::string appended(const std::string& target, const std::string& pages, std::vector<int> list)
{
    auto document = support::opened(target);
    EXPECT_TRUE(append(*document, source(pages), std::move(list)).has_value());
    return support::saved(*document);
}

/// A rich document with all pages of another one behind its own.
std::string twice()
{
    return appended(told::richDocument(), told::richDocument(), {1, 2, 3});
}

struct Row {
    const char* name;
    std::vector<int> list;
    int before;
    std::vector<int> order;
};

TEST(Imported, PagesStandWhereTheyShall)
{
    const Row rows[] = {{"at the front", {2}, 1, {2, 1, 2, 3, 4}},
                        {"in between", {4, 3}, 2, {1, 4, 3, 2, 3, 4}},
                        {"at the end", {1, 2, 3, 4}, 5, {1, 2, 3, 4, 1, 2, 3, 4}},
                        {"again and again", {2, 2, 3, 2}, 5, {1, 2, 3, 4, 2, 2, 3, 2}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const char* qpdfOptions : {"", "--object-streams=generate --encrypt u o 256 --"}) {
            const std::string pdf = support::rewritten(support::documentOfPages(4), qpdfOptions);
            auto document = support::opened(pdf, "u");
            Imports imports;
            ASSERT_TRUE(importPages(*document, imports, source(pdf, "u"), row.list, row.before,
                                    WithOutline::No)
                            .has_value());
            for (const auto way : {saving::Way::CopyUnchanged, saving::Way::Rewrite}) {
                const std::string saved = support::savedIn(*document, way);
                EXPECT_EQ(support::problems(saved, "u"), "");
                EXPECT_EQ(support::pageTexts(saved, "u"), support::pagesNamed(row.order));
            }
        }
    }
}

TEST(Transfer, FieldsComeAlongUnderFreeNames)
{
    const std::string pdf = twice();
    EXPECT_EQ(told::fields(pdf), (Names{"name@1", "name@2", "group.last@3", "name-2@4", "name-2@5",
                                        "group-2.last@6"}));
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/Fields"), "array 4");
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/CO"), "array 2");
    EXPECT_EQ(support::valueAt(pdf, "p6/Annots/0/Parent/T"), "(group-2)");
    EXPECT_EQ(support::valueAt(pdf, "p4/Annots/0/Parent/TU"), "(value)");
    EXPECT_EQ(support::valueAt(pdf, "p4/Annots/0/P"), "page 4");
}

TEST(Transfer, FieldsOfPagesLeftBehindStayBehind)
{
    const std::string pdf = appended(support::documentOfPages(1), told::richDocument(), {2});
    EXPECT_EQ(told::fields(pdf), Names{"name@2"});
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/Fields/0/Kids"), "array 1");
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/CO"), "nothing");
}

TEST(Transfer, DestinationsAndLinksLeadToThePagesThatCame)
{
    const std::string pdf = twice();
    EXPECT_EQ(told::destinations(pdf), (Names{"one>1", "two>2", "one-2>4", "two-2>5"}));
    EXPECT_EQ(told::links(pdf, 1), (Names{"(two)", "page 3"}));
    EXPECT_EQ(told::links(pdf, 4), (Names{"(two-2)", "page 6"}));
    EXPECT_EQ(told::links(pdf, 6), (Names{"(one-2)"}));
}

TEST(Transfer, LinksToPagesLeftBehindStayBehind)
{
    const std::string pdf = appended(told::richDocument(), told::richDocument(), {1});
    EXPECT_EQ(told::destinations(pdf), (Names{"one>1", "two>2"}))
        << "names that nothing uses do not come with single pages";
    EXPECT_EQ(told::links(pdf, 4), Names{});
    EXPECT_EQ(support::valueAt(pdf, "p4/Annots"), "array 1") << "the field";
}

TEST(Transfer, ActionsThatWouldLeadNowhereStayBehind)
{
    const support::Sketch sketch = {
        {"/AA << /O << /S /GoTo /D [@p2 /Fit] >> /C << /S /URI /URI (x) >> >> /Annots [@button]",
         ""},
        "",
        {{"button", "<< /Subtype /Widget /FT /Btn /T (b) /Rect [0 0 9 9] /A @action >>"},
         {"action", "<< /S /GoTo /D [@p2 /Fit] >>"}}};
    const std::string pdf = appended(support::documentOfPages(1), sketch.built(), {1});
    EXPECT_EQ(support::valueAt(pdf, "p2/AA/O"), "nothing");
    EXPECT_EQ(support::valueAt(pdf, "p2/AA/C/S"), "/URI");
    EXPECT_EQ(support::valueAt(pdf, "p2/Annots/0/A"), "nothing");
}

TEST(Transfer, DestinationsByPageNumberAndOldNamesAreUnderstood)
{
    const support::Sketch sketch = {
        {"/Annots [<< /Subtype /Link /Rect [0 0 9 9] /Dest [1 /Fit] >> << /Subtype /Link /Rect [0 "
         "0 9 9] /Dest /old >>]",
         ""},
        "/Dests << /old [@p2 /Fit] >>",
        {}};
    const std::string pdf = appended(support::documentOfPages(3), sketch.built(), {1, 2});
    EXPECT_EQ(told::links(pdf, 4), (Names{"page 5", "(old)"}));
    EXPECT_EQ(told::destinations(pdf), Names{"old>5"});
}

TEST(Transfer, OutlineEntriesComeBehindTheOthers)
{
    const std::string pdf = twice();
    EXPECT_EQ(told::outline(pdf), "One>1 (Two>2 Three>3) One>4 (Two>5 Three>6)");
    EXPECT_EQ(support::valueAt(pdf, "Root/Outlines/Count"), "6");

    EXPECT_EQ(told::outline(appended(support::documentOfPages(1), told::richDocument(), {3})),
              "One> (Three>2)")
        << "the entry above stays without its target";
}

TEST(Transfer, LayersStayShownOrHidden)
{
    const std::string pdf = twice();
    EXPECT_EQ(support::valueAt(pdf, "Root/OCProperties/OCGs"), "array 4");
    EXPECT_EQ(support::valueAt(pdf, "Root/OCProperties/D/OFF"), "array 2");
    EXPECT_EQ(support::valueAt(pdf, "Root/OCProperties/D/OFF/1/Name"), "(hidden)");
    EXPECT_EQ(support::valueAt(pdf, "Root/OCProperties/D/Order"), "array 4");
    EXPECT_EQ(support::valueAt(pdf, "Root/OCProperties/D/RBGroups"), "array 2");

    const std::string second = appended(support::documentOfPages(1), told::richDocument(), {2});
    EXPECT_EQ(support::valueAt(second, "Root/OCProperties/OCGs"), "array 1");
    EXPECT_EQ(support::valueAt(second, "Root/OCProperties/D/OFF/0/Name"), "(hidden)");
}

TEST(Transfer, FontsOfFieldsKeepTheirMeaning)
{
    const support::Sketch sketch = {
        {"/Annots [@f]"},
        "/AcroForm << /Fields [@f] /DA (/Helv 9 Tf) /DR << /Font << /Helv << /Type /Font /Subtype "
        "/Type1 /BaseFont /Courier >> >> >> >>",
        {{"f", "<< /Subtype /Widget /Rect [0 0 9 9] /T (f) /FT /Tx >>"}}};
    const std::string pdf = appended(told::richDocument(), sketch.built(), {1});
    EXPECT_EQ(support::valueAt(pdf, "p4/Annots/0/DA"), "(/Helv-2 9 Tf)");
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/DR/Font/Helv-2/BaseFont"), "/Courier");
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/DR/Font/Helv/BaseFont"), "/Helvetica");
}

TEST(Transfer, PagesBringWhatTheyInherit)
{
    const support::Sketch sketch = {
        {""},
        "",
        {{"font", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"}},
        "/Rotate 90 /Resources << /Font << /F1 @font >> >>"};
    const std::string pdf = appended(support::documentOfPages(1), sketch.built(), {1});
    EXPECT_EQ(support::pageTexts(pdf), (Names{"Page 1", "Page 1"}));
    EXPECT_EQ(support::valueAt(pdf, "p2/Rotate"), "90");
    EXPECT_EQ(support::valueAt(pdf, "p1/Rotate"), "nothing");
}

/// One resource of `size` bytes that all pages share.
std::string withSharedResource(int pages, std::size_t size)
{
    support::Sketch sketch;
    sketch.pages.assign(static_cast<std::size_t>(pages), "/Shared @resource");
    std::string data(size, ' ');
    for (std::size_t i = 0; i < size; ++i) {
        data[i] = static_cast<char>('a' + i * i % 23);
    }
    sketch.objects = {{"resource", "|" + data}};
    return sketch.built();
}

TEST(Transfer, WhatPagesShareComesOnceThoughTheyComeOneByOne)
{
    auto document = support::opened(support::documentOfPages(1));
    auto pages = support::opened(withSharedResource(20, 100000));
    Frozen frozen;
    Imports imports;
    for (int page = 1; page <= 20; ++page) {
        ASSERT_TRUE(importPages(*document, imports, frozen.of(*pages).value(), {page},
                                document->pageCount() + 1, WithOutline::No)
                        .has_value());
    }
    pages.reset(); // the pages that came stay whole without it
    saving::SaveOptions plain;
    plain.streamData = saving::StreamData::Keep;
    const std::string pdf = saving::toString(*document, plain).value_or("");
    EXPECT_LT(pdf.size(), 150000U);
    EXPECT_EQ(support::pageTexts(pdf).size(), 21U);
    EXPECT_EQ(support::problems(pdf), "");
}

TEST(Transfer, ComesFromTheSourceAsItWas)
{
    auto document = support::opened(support::documentOfPages(1));
    auto pages = support::opened(support::documentOfPages(4));
    ASSERT_TRUE(pages::deletePages(*pages, std::vector{1, 3}).has_value());
    Frozen frozen;
    Imports imports;
    ASSERT_TRUE(
        importPages(*document, imports, frozen.of(*pages).value(), {1, 2}, 1, WithOutline::No)
            .has_value());
    ASSERT_TRUE(pages::deletePages(*pages, std::vector{1}).has_value());
    EXPECT_EQ(frozen.of(*pages).value()->pageCount(), 1);
    EXPECT_EQ(support::pageTexts(support::saved(*document)), support::pagesNamed({2, 4, 1}));
}

TEST(Transfer, PagesThatCameCanGoAgain)
{
    auto document = support::opened(told::richDocument());
    ASSERT_TRUE(append(*document, source(told::richDocument()), {1, 2, 3}).has_value());
    ASSERT_TRUE(pages::deletePages(*document, std::vector{4, 5, 6}).has_value());
    const std::string pdf = support::saved(*document);
    EXPECT_EQ(support::pageTexts(pdf), support::pagesNamed({1, 2, 3}));
    EXPECT_EQ(told::destinations(pdf), (Names{"one>1", "two>2"}));
    EXPECT_EQ(told::outline(pdf), "One>1 (Two>2 Three>3)");
}

struct Refusal {
    const char* name;
    std::string pages;
    std::vector<int> list;
    int before;
    ErrorCode code;
};

TEST(RefusedImports, ChangeNothing)
{
    const std::string three = support::documentOfPages(3);
    const Refusal rows[] = {
        {"page that is not there", three, {1, 4}, 1, ErrorCode::BadPageList},
        {"place that is not there", three, {1}, 4, ErrorCode::BadPageList},
        {"place zero", three, {1}, 0, ErrorCode::BadPageList},
        {"no page", three, {}, 1, ErrorCode::OutOfMemory},
        {"one page too often", three, std::vector<int>(1001, 1), 1, ErrorCode::OutOfMemory},
        {"content lost to damage",
         support::replaced(three, "4 0 obj", "4 0 xxx"),
         {1},
         1,
         ErrorCode::NotPdf}};
    for (const Refusal& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(support::documentOfPages(2));
        Imports imports;
        const Outcome status = importPages(*document, imports, source(row.pages), row.list,
                                           row.before, WithOutline::Yes);
        ASSERT_FALSE(status.has_value());
        EXPECT_EQ(status.error().code, row.code);
        EXPECT_FALSE(document->isModified());
        EXPECT_EQ(document->pageCount(), 2);
    }
}

TEST(Transfer, TakesHostileDocumentsWithoutLoopingOrRecursion)
{
    support::Sketch sketch;
    sketch.pages = {"/Annots [@w @w 7 @link] /Own @p1 /Chain @chain0"};
    sketch.catalog = "/AcroForm << /Fields [@f @f @w] /DR 7 >> /Outlines @o /Names << /Dests @n >> "
                     "/OCProperties << /OCGs [@w 3] /D << /Order [@order] >> >>";
    sketch.objects = {
        {"f", "<< /T (f) /Kids [@f @w] /Parent @f >>"},
        {"w", "<< /Subtype /Widget /T (w) /Parent @w /Kids [@w @f] >>"},
        {"link", "<< /Subtype /Link /Next @link /Popup @link /Dest (n) /A [@link] >>"},
        {"o", "<< /First @o1 /Last @o >>"},
        {"o1", "<< /Title (x) /First @o1 /Next @o1 /Parent @o1 /Dest (n) >>"},
        {"n", "<< /Kids [@n] /Names [(n) @n2] >>"},
        {"n2", "<< /D [@p1 @n2] >>"},
        {"order", "[@order @w]"},
    };
    for (int i = 0; i < 50000; ++i) {
        sketch.objects.emplace_back("chain" + std::to_string(i),
                                    "<< /Next @chain" + std::to_string((i + 1) % 50000) + " >>");
    }
    auto document = support::opened(support::documentOfPages(1));
    ASSERT_TRUE(append(*document, source(sketch.built()), {1}).has_value());
    EXPECT_EQ(document->pageCount(), 2);
    support::saved(*document);
}

TEST(Transfer, InterleavesFrontsAndBacks)
{
    struct Case {
        int fronts;
        int backs;
        bool reversed;
        Names texts;
    };
    const auto page = [](int number) { return "Page " + std::to_string(number); };
    for (const Case& row : {Case{2, 2, false, {page(1), page(1), page(2), page(2)}},
                            Case{2, 2, true, {page(1), page(2), page(2), page(1)}},
                            Case{1, 3, true, {page(1), page(3), page(2), page(1)}},
                            Case{3, 1, false, {page(1), page(1), page(2), page(3)}}}) {
        auto document = support::opened(support::documentOfPages(row.fronts));
        Imports imports;
        EXPECT_EQ(interleave(*document, imports, source(support::documentOfPages(row.backs)),
                             row.reversed)
                      .value(),
                  row.backs);
        EXPECT_EQ(support::pageTexts(support::saved(*document)), row.texts);
    }
}

TEST(Transfer, CopiedPagesHaveFieldsOfTheirOwn)
{
    const std::string before = told::richDocument();
    auto document = support::opened(before);
    ASSERT_TRUE(copyPages(*document, {1, 2}, 4).has_value());
    const std::string pdf = support::saved(*document);
    EXPECT_EQ(support::pageTexts(pdf), support::pagesNamed({1, 2, 3, 1, 2}));
    EXPECT_EQ(told::fields(pdf),
              (Names{"name@1", "name@2", "group.last@3", "name-2@4", "name-2@5"}));
    EXPECT_EQ(support::valueAt(pdf, "Root/AcroForm/Fields/0/Kids"), "array 2");
    EXPECT_EQ(told::links(pdf, 4), (Names{"(two)", "page 3"}));
    EXPECT_EQ(support::valueAt(pdf, "p4/Annots/1/P"), "page 4");
    EXPECT_EQ(copyPages(*document, {5, 2}, 1).error().code, ErrorCode::BadPageList);
    EXPECT_EQ(copyPages(*document, {1, 1}, 7).error().code, ErrorCode::BadPageList);
}

TEST(Transfer, CopiesAreOfPagesAsTheyWereLastSeen)
{
    const support::Sketch sketch = {
        {"/Annots [@link]", ""},
        "",
        {{"link", "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest [@p2 /Fit] /T (LOST) >>"}}};
    auto document = support::opened(sketch.built());
    document->removePages({2, 1});
    ASSERT_TRUE(saving::snapshot(*document, saving::Encrypting::AsLoaded).has_value());
    ASSERT_TRUE(copyPages(*document, {1, 1}, 1).has_value());
    EXPECT_EQ(support::everythingIn(support::saved(*document)).find("LOST"), std::string::npos);
}

TEST(Transfer, CopiesShareWhatPagesUse)
{
    auto document = support::opened(withSharedResource(1, 100000));
    ASSERT_TRUE(copyPages(*document, {1, 1}, 1).has_value());
    ASSERT_TRUE(copyPages(*document, {1, 2}, 1).has_value());
    saving::SaveOptions plain;
    plain.streamData = saving::StreamData::Keep;
    EXPECT_LT(saving::toString(*document, plain).value_or("").size(), 130000U);
}

TEST(Transfer, AReplacedPageKeepsWhatLeadsToIt)
{
    auto document = support::opened(told::richDocument());
    const int object = document->order().at(2).object;
    Imports imports;
    const auto other = source(support::PagedDocument(7, "/Rotate 90").build());
    ASSERT_TRUE(replacePage(*document, imports, 2, other, 7).has_value());
    EXPECT_EQ(document->order().at(2).object, object);
    const std::string pdf = support::saved(*document);
    EXPECT_EQ(support::pageTexts(pdf), support::pagesNamed({1, 7, 3}));
    EXPECT_EQ(support::valueAt(pdf, "p2/Rotate"), "90");
    EXPECT_EQ(told::outline(pdf), "One>1 (Two>2 Three>3)");
    EXPECT_EQ(told::destinations(pdf), (Names{"one>1", "two>2"}));
    EXPECT_EQ(support::valueAt(pdf, "p2/Annots"), "nothing");
    EXPECT_EQ(replacePage(*document, imports, 4, other, 1).error().code, ErrorCode::BadPageList);
    EXPECT_EQ(replacePage(*document, imports, 1, other, 8).error().code, ErrorCode::BadPageList);
}

TEST(Transfer, AReplacingPageBringsItsFields)
{
    auto document = support::opened(support::documentOfPages(3));
    Imports imports;
    ASSERT_TRUE(replacePage(*document, imports, 2, source(told::richDocument()), 3).has_value());
    const std::string pdf = support::saved(*document);
    EXPECT_EQ(support::pageTexts(pdf), support::pagesNamed({1, 3, 3}));
    EXPECT_EQ(told::fields(pdf), Names{"group.last@2"});
    EXPECT_EQ(support::valueAt(pdf, "p2/Annots/0/P"), "page 2");
}

} // namespace
