#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using support::PagedDocument;
using support::PdfBuilder;

/// A three-page document whose root node is replaced by `root`, with %1, %2, %3 for the pages and
/// %R for the root itself, and extra objects added first as %A and %B.
struct OddTree {
    const char* name;
    const char* root;
    const char* extraA;
    const char* extraB;
    std::vector<int> expectedPages;
};

std::string filledIn(std::string text, const PagedDocument& document, int a, int b)
{
    const std::pair<std::string, int> places[] = {{"%1", document.pages[0]},
                                                  {"%2", document.pages[1]},
                                                  {"%3", document.pages[2]},
                                                  {"%R", document.root},
                                                  {"%A", a},
                                                  {"%B", b}};
    for (const auto& [mark, number] : places) {
        for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
            text.replace(at, mark.size(), PdfBuilder::reference(number));
        }
    }
    return text;
}

class OddTrees : public testing::TestWithParam<OddTree> {
protected:
    static std::unique_ptr<Document> document()
    {
        PagedDocument file(3);
        const int a = file.builder.reserve();
        const int b = file.builder.reserve();
        file.builder.set(a, filledIn(GetParam().extraA, file, a, b));
        file.builder.set(b, filledIn(GetParam().extraB, file, a, b));
        file.builder.set(file.root, filledIn(GetParam().root, file, a, b));
        return support::opened(file.build());
    }
};

TEST_P(OddTrees, AreReadAsViewersReadThem)
{
    const auto document = this->document();
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->pageCount(), static_cast<int>(GetParam().expectedPages.size()));

    // Adding a page makes the tree be written anew.
    QPDFObjectHandle blank =
        QPDFObjectHandle::parse("<< /Type /Page /MediaBox [0 0 9 9] /Resources << >> >>");
    document->insertPages(document->pageCount() + 1, {document->changes().add(blank)});
    const std::string bytes = support::savedIn(*document);
    std::vector<std::string> expected = support::pagesNamed(GetParam().expectedPages);
    expected.emplace_back();
    EXPECT_EQ(support::pageTexts(bytes), expected);
    EXPECT_EQ(support::problems(bytes), "");
}

TEST_P(OddTrees, AreRightWhenAPageHasGone)
{
    const auto document = this->document();
    ASSERT_NE(document, nullptr);
    ASSERT_TRUE(pages::deletePages(*document, {document->pageCount(), 1}).has_value());
    std::vector<int> left = GetParam().expectedPages;
    left.pop_back();
    const std::string bytes = support::savedIn(*document);
    EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed(left));
    EXPECT_EQ(support::problems(bytes), "");
}

INSTANTIATE_TEST_SUITE_P(
    PageTree, OddTrees,
    testing::Values(
        OddTree{"plain", "<< /Type /Pages /Count 3 /Kids [%1 %2 %3] >>", "null", "null", {1, 2, 3}},
        OddTree{"nested",
                "<< /Type /Pages /Count 3 /Kids [%1 %A] >>",
                "<< /Type /Pages /Count 2 /Parent %R /Kids [%B %3] >>",
                "<< /Type /Pages /Count 1 /Kids [%2] >>",
                {1, 2, 3}},
        OddTree{"wrong_count",
                "<< /Type /Pages /Count 77 /Kids [%1 %2 %3] >>",
                "null",
                "null",
                {1, 2, 3}},
        OddTree{"no_count_and_no_type", "<< /Kids [%1 %2 %3] >>", "null", "null", {1, 2, 3}},
        OddTree{"node_called_page",
                "<< /Type /Pages /Count 3 /Kids [%1 %A] >>",
                "<< /Type /Page /Kids [%2 %3] >>",
                "null",
                {1, 2, 3}},
        OddTree{"node_that_holds_its_ancestor",
                "<< /Type /Pages /Count 3 /Kids [%1 %A] >>",
                "<< /Type /Pages /Count 2 /Kids [%2 %R %3] >>",
                "null",
                {1, 2, 3}},
        OddTree{"node_used_twice",
                "<< /Type /Pages /Count 3 /Kids [%A %1 %A] >>",
                "<< /Type /Pages /Count 2 /Kids [%2 %3] >>",
                "null",
                {2, 3, 1}},
        OddTree{"page_used_twice",
                "<< /Type /Pages /Count 4 /Kids [%1 %2 %1 %3] >>",
                "null",
                "null",
                {1, 2, 1, 3}},
        OddTree{"kids_array_with_a_number",
                "<< /Type /Pages /Count 3 /Kids %A >>",
                "[%1 %2 %3]",
                "null",
                {1, 2, 3}},
        OddTree{"entries_that_are_no_pages",
                "<< /Type /Pages /Count 3 /Kids [null %1 42 %2 (page) 999 0 R %3] >>",
                "null",
                "null",
                {1, 2, 3}},
        OddTree{"node_without_children",
                "<< /Type /Pages /Count 3 /Kids [%A %1 %B %2 %3] >>",
                "<< /Type /Pages /Count 0 /Kids [] >>",
                "<< /Type /Pages /Count 0 >>",
                {1, 2, 3}}),
    [](const auto& info) { return info.param.name; });

TEST(PageTree, KeepsThePageWhoseTwinIsDeleted)
{
    PagedDocument file(2);
    file.builder.set(file.root, filledIn("<< /Type /Pages /Count 3 /Kids [%1 %2 %1] >>",
                                         PagedDocument(3), 0, 0));
    auto document = support::opened(file.build());
    ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
    EXPECT_EQ(support::pageTexts(support::savedIn(*document)), support::pagesNamed({2, 1}));
}

TEST(PageTree, FailsWhenAPageIsLost)
{
    PagedDocument file(3);
    file.builder.set(file.pages[1], "<< /Type /Page /Parent ]]]");
    const auto document = Document::load(io::fromMemory(file.build()), {});
    ASSERT_FALSE(document.has_value());
    EXPECT_EQ(document.error().code, ErrorCode::NotPdf);
    EXPECT_NE(document.error().text.find("1 page cannot be recovered"), std::string::npos)
        << document.error().text;
}

TEST(PageTree, IsNotThereUnderAnotherGenerationThanItsOwn)
{
    PagedDocument file(2);
    std::string pdf = file.build();
    const std::string catalog = "/Pages " + PdfBuilder::reference(file.root);
    ASSERT_NE(pdf.find(catalog), std::string::npos);
    pdf.replace(pdf.find(catalog) + catalog.size() - 3, 1, "1");
    const auto document = Document::load(io::fromMemory(pdf), {});
    ASSERT_FALSE(document.has_value());
    EXPECT_EQ(document.error().text, "data in memory: the document has no page tree");
}

TEST(PageTree, IsReadAtAnyDepth)
{
    PagedDocument file(1);
    const int deep = 20000;
    std::vector<int> nodes;
    for (int i = 0; i < deep; ++i) {
        nodes.push_back(file.builder.reserve());
    }
    for (int i = 0; i < deep; ++i) {
        const int kid = i + 1 < deep ? nodes[static_cast<std::size_t>(i) + 1] : file.pages[0];
        file.builder.set(nodes[static_cast<std::size_t>(i)],
                         "<< /Type /Pages /Count 1 /Kids [" + PdfBuilder::reference(kid) + "] >>");
    }
    file.builder.set(file.root,
                     "<< /Type /Pages /Count 1 /Kids [" + PdfBuilder::reference(nodes[0]) + "] >>");
    auto document = support::opened(file.build());
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->pageCount(), 1);
}

/// Two halves of a document that inherit different attributes.
std::string documentThatInherits()
{
    PagedDocument file(4);
    PdfBuilder& builder = file.builder;
    const int font = builder.add("<< /Type /Font /Subtype /Type1 /BaseFont /Courier >>");
    const std::string fonts =
        " /Resources << /Font << /F1 " + PdfBuilder::reference(font) + " >> >> ";
    const int left = builder.reserve();
    const int right = builder.reserve();
    for (std::size_t i = 0; i < 4; ++i) {
        const int contents = builder.addStream(support::showText("Page " + std::to_string(i + 1)));
        builder.set(file.pages[i], "<< /Type /Page /Parent " +
                                       PdfBuilder::reference(i < 2 ? left : right) +
                                       (i == 3 ? " /Rotate 0" : "") + " /Contents " +
                                       PdfBuilder::reference(contents) + " >>");
    }
    builder.set(left, "<< /Type /Pages /Count 2 /Parent " + PdfBuilder::reference(file.root) +
                          fonts + "/Kids [" + PdfBuilder::reference(file.pages[0]) + " " +
                          PdfBuilder::reference(file.pages[1]) + "] >>");
    builder.set(right, "<< /Type /Pages /Count 2 /Parent " + PdfBuilder::reference(file.root) +
                           fonts + "/Rotate 90 /MediaBox [0 0 300 800] /Kids [" +
                           PdfBuilder::reference(file.pages[2]) + " " +
                           PdfBuilder::reference(file.pages[3]) + "] >>");
    builder.set(file.root, "<< /Type /Pages /Count 4 /MediaBox [0 0 500 800] /Kids [" +
                               PdfBuilder::reference(left) + " " + PdfBuilder::reference(right) +
                               "] >>");
    return file.build();
}

TEST(PageTree, KeepsWhatPagesInherit)
{
    auto document = support::opened(documentThatInherits());
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    const std::string bytes = support::savedIn(*document);
    EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed({1, 3, 4}));
    auto again = support::opened(bytes);
    const struct {
        int page;
        int width;
        int rotation; // -1: none
    } expected[] = {{1, 500, -1}, {2, 300, 90}, {3, 300, 0}};
    for (const auto& [page, width, rotation] : expected) {
        EXPECT_EQ(again->pageAttribute(page, "/MediaBox").getArrayItem(2).getIntValue(), width);
        QPDFObjectHandle rotate = again->pageAttribute(page, "/Rotate");
        EXPECT_EQ(rotate.isNull() ? -1 : rotate.getIntValueAsInt(), rotation) << "page " << page;
    }
}

/// The entries of pages below a node that rotates them by 90 degrees, with "%P" for the node and
/// "%N" for an object that is null, and how the pages are rotated.
constexpr std::pair<const char*, int> deepPages[] = {
    {"/Parent %P", 90},
    {"/Parent %P", 90},
    {"/Parent %P /Rotate 180", 180},
    {"/Parent %P /Rotate null", 90},
    {"/Parent %P /Rotate %N", 90},
    {"/Parent %P /Parent null", 90},
    {"/Par#65nt %P", 90},
    {"/Parent 1 0 R /PieceInfo << /Parent %P >>", 90},
    {"/PieceInfo <</A(/Parent)/B<00>>>/Parent %P", 90},
    {"", 90},
};
constexpr int deepPageCount = std::size(deepPages);

/// These pages below a row of nodes that is too long to be kept, and a page at the root.
std::string tooDeepTree()
{
    PagedDocument file(deepPageCount + 1);
    PdfBuilder& builder = file.builder;
    std::string parent = PdfBuilder::reference(file.root);
    std::string node = PdfBuilder::reference(builder.reserve());
    builder.set(file.root, "<< /Type /Pages /Count 11 /Kids [" + node + " " +
                               PdfBuilder::reference(file.pages.back()) + "] >>");
    for (int depth = 0; depth < 50; ++depth) {
        const std::string next = PdfBuilder::reference(builder.reserve());
        builder.set(std::stoi(node),
                    "<< /Type /Pages /Count 10 /Parent " + parent + " /Kids [" + next + "] >>");
        parent = std::exchange(node, next);
    }
    const std::string nothing = PdfBuilder::reference(builder.add("null"));
    std::string kids;
    for (std::size_t i = 0; i < deepPageCount; ++i) {
        const int page = file.pages[i];
        std::string entries = deepPages[i].first;
        for (const auto& [mark, reference] : {std::pair{"%P", node}, std::pair{"%N", nothing}}) {
            if (const std::size_t at = entries.find(mark); at != std::string::npos) {
                entries.replace(at, 2, reference);
            }
        }
        builder.set(page,
                    "<</Type/Page /Contents " + PdfBuilder::reference(page - 1) + entries + ">>");
        kids += PdfBuilder::reference(page) + " ";
    }
    builder.set(std::stoi(node), "<< /Type /Pages /Parent " + parent + " /Count 10 /Kids [" + kids +
                                     "] /Rotate 90 /MediaBox [0 0 612 792] /Resources << /Font << "
                                     "/F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> "
                                     ">> >> >>");
    return file.build();
}

/// Expects what tooDeepTree() gave without its first pages, each page where its parent says.
void expectDeepPagesWithout(int removed, const std::string& pdf)
{
    std::vector<int> numbers;
    auto document = support::opened(pdf, "o");
    for (int page = 1; page <= document->pageCount(); ++page) {
        const int number = removed + page;
        numbers.push_back(number);
        QPDFObjectHandle dictionary = document->page(page);
        QPDFObjectHandle rotation = document->pageAttribute(page, "/Rotate");
        EXPECT_EQ(rotation.isNull() ? 0 : rotation.getIntValueAsInt(),
                  number > deepPageCount ? 0 : deepPages[number - 1].second)
            << "page " << number;
        bool isKid = false;
        for (const QPDFObjectHandle& kid : dictionary.getKey("/Parent").getKey("/Kids").aitems()) {
            isKid = isKid || kid.getObjGen() == dictionary.getObjGen();
        }
        EXPECT_TRUE(isKid) << "page " << number;
        if (number == 9) {
            EXPECT_EQ(dictionary.getKey("/PieceInfo").getKey("/A").getStringValue(), "/Parent");
        }
    }
    EXPECT_EQ(support::pageTexts(pdf, "o"), support::pagesNamed(numbers));
    EXPECT_EQ(support::problems(pdf, "o"), "");
}

TEST(PageTree, IsWrittenAnewWhenItIsTooDeep)
{
    const std::string asBuilt = tooDeepTree();
    std::string withoutTwoKeys = asBuilt;
    const std::string second = " /Parent null";
    withoutTwoKeys.replace(asBuilt.find(second), second.size(), second.size(), ' ');
    for (const char* form : {"", "--object-streams=generate", "--encrypt u o 256 --",
                             "--object-streams=generate --encrypt u o 256 --"}) {
        SCOPED_TRACE(form);
        auto document =
            support::opened(*form == 0 ? asBuilt : support::rewritten(withoutTwoKeys, form), "o");
        QPDFObjectHandle data = document->page(9).getKey("/PieceInfo");
        for (const int removed : {1, 2}) {
            ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
            expectDeepPagesWithout(removed, support::savedIn(*document));
            expectDeepPagesWithout(removed, support::savedIn(*document, saving::Way::Rewrite));
        }
        // Who holds a part of a page changes that page, however its place was written.
        document->editPage(7);
        data.replaceKey("/New", QPDFObjectHandle::newBool(true));
        EXPECT_TRUE(support::opened(support::savedIn(*document), "o")
                        ->page(7)
                        .getKey("/PieceInfo")
                        .hasKey("/New"));
    }
}

TEST(PageTree, DoesNotGrowWhenPagesInheritALargeDictionary)
{
    PagedDocument file(60);
    PdfBuilder& builder = file.builder;
    const std::string large =
        "/ColorSpace << /C [/Indexed /DeviceRGB 255 <" + std::string(1536, '0') + ">] >>";
    std::string kids[2];
    const int nodes[2] = {builder.reserve(), builder.reserve()};
    for (std::size_t i = 0; i < 60; ++i) {
        builder.set(file.pages[i], "<< /Type /Page /MediaBox [0 0 9 9] >>");
        kids[i % 2] += PdfBuilder::reference(file.pages[i]) + " ";
    }
    for (int i = 0; i < 2; ++i) {
        builder.set(nodes[i], "<< /Type /Pages /Count 30 /Resources << " + large + " >> /Kids [" +
                                  kids[i] + "] >>");
    }
    builder.set(file.root, "<< /Type /Pages /Count 60 /Kids [" + PdfBuilder::reference(nodes[0]) +
                               " " + PdfBuilder::reference(nodes[1]) + "] >>");
    const std::string before = file.build();
    auto document = support::opened(before);
    ASSERT_TRUE(pages::deletePages(*document, {1, 2}).has_value());
    EXPECT_LT(support::savedIn(*document).size(), before.size());
}

} // namespace
