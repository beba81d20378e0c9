#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using support::PagedDocument;
using support::Sketch;

/// A three-page document with entries of its own in the tree's root, and further objects.
struct OddTree {
    const char* name;
    const char* root;
    std::vector<std::pair<std::string, std::string>> objects;
    std::vector<int> expectedPages;
    bool isCertain = true; // that all readers number its pages so
};

const OddTree oddTrees[] = {
    {"plain", "/Type /Pages /Count 3 /Kids [@p1 @p2 @p3]", {}, {1, 2, 3}},
    {"nested",
     "/Type /Pages /Count 3 /Kids [@p1 @a]",
     {{"a", "<< /Type /Pages /Count 2 /Parent @pages /Kids [@b @p3] >>"},
      {"b", "<< /Type /Pages /Count 1 /Kids [@p2] >>"}},
     {1, 2, 3}},
    {"wrong count", "/Type /Pages /Count 77 /Kids [@p1 @p2 @p3]", {}, {1, 2, 3}},
    {"no count and no type", "/Kids [@p1 @p2 @p3]", {}, {1, 2, 3}},
    {"node called page",
     "/Type /Pages /Count 3 /Kids [@p1 @a]",
     {{"a", "<< /Type /Page /Kids [@p2 @p3] >>"}},
     {1, 2, 3}},
    {"node that holds its ancestor",
     "/Type /Pages /Count 3 /Kids [@p1 @a]",
     {{"a", "<< /Type /Pages /Count 2 /Kids [@p2 @pages @p3] >>"}},
     {1, 2, 3}},
    {"node used twice",
     "/Type /Pages /Count 3 /Kids [@a @p1 @a]",
     {{"a", "<< /Type /Pages /Count 2 /Kids [@p2 @p3] >>"}},
     {2, 3, 1}},
    {"page used twice", "/Type /Pages /Count 4 /Kids [@p1 @p2 @p1 @p3]", {}, {1, 2, 1, 3}},
    {"kids array with a number",
     "/Type /Pages /Count 3 /Kids @a",
     {{"a", "[@p1 @p2 @p3]"}},
     {1, 2, 3}},
    {"entries that are no pages",
     "/Type /Pages /Count 3 /Kids [null @p1 42 @p2 (page) 999 0 R @p3]",
     {},
     {1, 2, 3},
     false},
    {"node without children",
     "/Type /Pages /Count 3 /Kids [@a @p1 @b @p2 @p3]",
     {{"a", "<< /Type /Pages /Count 0 /Kids [] >>"}, {"b", "<< /Type /Pages /Count 0 >>"}},
     {1, 2, 3}},
};

std::unique_ptr<Document> documentOf(const OddTree& tree)
{
    return support::opened(Sketch{{"", "", ""}, "", tree.objects, tree.root}.built());
}

TEST(OddTrees, AreReadAsViewersReadThem)
{
    for (const OddTree& tree : oddTrees) {
        SCOPED_TRACE(tree.name);
        const auto document = documentOf(tree);
        ASSERT_NE(document, nullptr);
        EXPECT_EQ(document->pageCount(), static_cast<int>(tree.expectedPages.size()));

        // Adding a page makes the tree be written anew.
        QPDFObjectHandle blank =
            QPDFObjectHandle::parse("<< /Type /Page /MediaBox [0 0 9 9] /Resources << >> >>");
        document->insertPages(document->pageCount() + 1, {document->changes().add(blank)});
        const std::string bytes = support::savedIn(*document);
        std::vector<std::string> expected = support::pagesNamed(tree.expectedPages);
        expected.emplace_back();
        EXPECT_EQ(support::pageTexts(bytes), expected);
        EXPECT_EQ(support::problems(bytes), "");
    }
}

TEST(OddTrees, AreRightWhenAPageHasGone)
{
    for (const OddTree& tree : oddTrees) {
        SCOPED_TRACE(tree.name);
        const auto document = documentOf(tree);
        ASSERT_NE(document, nullptr);
        ASSERT_TRUE(pages::deletePages(*document, {document->pageCount(), 1}).has_value());
        if (!tree.isCertain) {
            EXPECT_FALSE(saving::copyToString(*document, support::keeping()).has_value());
            continue;
        }
        std::vector<int> left = tree.expectedPages;
        left.pop_back();
        const std::string bytes = support::savedIn(*document);
        EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed(left));
        EXPECT_EQ(support::problems(bytes), "");
    }
}

TEST(PageTree, KeepsThePageWhoseTwinIsDeleted)
{
    const Sketch sketch = {{"", ""}, "", {}, "/Type /Pages /Count 3 /Kids [@p1 @p2 @p1]"};
    auto document = support::opened(sketch.built());
    ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
    EXPECT_EQ(support::pageTexts(support::savedIn(*document)), support::pagesNamed({2, 1}));
}

TEST(PageTree, KeepsWhatElseItListsAsAPage)
{
    const std::string resources = "/Resources << /Font << /F1 @font >> >>";
    const Sketch sketch = {{resources, resources},
                           "",
                           {{"font", "<< /Type /Font /Subtype /Type1 /BaseFont /Courier >>"}},
                           "/Type /Pages /Count 3 /Kids [@p1 @font @p2]"};
    for (const int removed : {1, 2, 3}) {
        auto document = support::opened(sketch.built());
        ASSERT_EQ(document->pageCount(), 3);
        ASSERT_TRUE(pages::deletePages(*document, {removed, 1}).has_value());
        std::vector<std::string> left = {"Page 1", "", "Page 2"};
        left.erase(left.begin() + removed - 1);
        const std::string bytes = support::savedIn(*document);
        EXPECT_EQ(support::pageTexts(bytes), left);
        EXPECT_EQ(support::problems(bytes), "");
    }
}

TEST(PageTree, HasAPlaceForAPageThatIsLost)
{
    PagedDocument file(2);
    file.builder.set(file.pages[0], "<< /Type /Page /Parent ]]]");
    const auto document = support::opened(file.build());
    ASSERT_EQ(document->pageCount(), 2);
    EXPECT_TRUE(document->isLost(1));
    EXPECT_FALSE(document->isLost(2));

    file.builder.set(file.pages[1], "<< /Type /Page /Parent ]]]");
    const auto none = Document::load(io::fromMemory(file.build()), {});
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().code, ErrorCode::NotPdf);
    EXPECT_NE(none.error().text.find("none of its pages can be recovered"), std::string::npos);
}

TEST(PageTree, IsNotThereUnderAnotherGenerationThanItsOwn)
{
    const std::string pdf =
        support::replaced(support::documentOfPages(2), "/Pages 2 0 R", "/Pages 2 1 R");
    const auto document = Document::load(io::fromMemory(pdf), {});
    ASSERT_FALSE(document.has_value());
    EXPECT_EQ(document.error().text, "data in memory: the document has no page tree");
}

TEST(PageTree, KeepsWhatPagesInherit)
{
    // Two halves inherit different attributes.
    const Sketch sketch = {
        {"/Parent @left", "/Parent @left", "/Parent @right", "/Parent @right /Rotate 0"},
        "",
        {{"left", "<< /Type /Pages /Count 2 /Parent @pages /Resources @fonts /Kids [@p1 @p2] >>"},
         {"right", "<< /Type /Pages /Count 2 /Parent @pages /Resources @fonts /Kids [@p3 @p4] "
                   "/Rotate 90 /MediaBox [0 0 300 800] >>"},
         {"fonts", "<< /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Courier >> >> >>"}},
        "/Type /Pages /Count 4 /MediaBox [0 0 500 800] /Kids [@left @right]"};
    auto document = support::opened(sketch.built());
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

/// The entries of pages below a node, "@n50", that rotates them by 90 degrees, and how the pages
/// are rotated.
constexpr std::pair<const char*, int> deepPages[] = {
    {"/Parent @n50", 90},
    {"/Parent @n50", 90},
    {"/Parent @n50 /Rotate 180", 180},
    {"/Parent @n50 /Rotate null", 90},
    {"/Parent @n50 /Rotate @nothing", 90},
    {"/Parent @n50 /Parent null", 90},
    {"/Par#65nt @n50", 90},
    {"/Parent 1 0 R /PieceInfo << /Parent @n50 >>", 90},
    {"/PieceInfo <</A(/Parent)/B<00>>>/Parent @n50", 90},
    {"", 90},
};
constexpr int deepPageCount = std::size(deepPages);

/// These pages below a row of nodes that is too long to be kept, and a page at the root.
std::string tooDeepTree()
{
    const auto content = [](int page) {
        return "|" + support::showText("Page " + std::to_string(page));
    };
    Sketch sketch = {{"/Contents @last"},
                     "",
                     {{"last", content(deepPageCount + 1)}, {"nothing", "null"}},
                     "/Type /Pages /Count 11 /Kids [@n0 @p1]"};
    for (int depth = 0; depth < 50; ++depth) {
        const std::string parent = depth == 0 ? "pages" : "n" + std::to_string(depth - 1);
        sketch.objects.emplace_back("n" + std::to_string(depth),
                                    "<< /Type /Pages /Count 10 /Parent @" + parent + " /Kids [@n" +
                                        std::to_string(depth + 1) + "] >>");
    }
    std::string kids;
    for (int page = 1; page <= deepPageCount; ++page) {
        const std::string number = std::to_string(page);
        sketch.objects.emplace_back("content" + number, content(page));
        sketch.objects.emplace_back("deep" + number, "<</Type/Page /Contents @content" + number +
                                                         deepPages[page - 1].first + ">>");
        kids += "@deep" + number + " ";
    }
    sketch.objects.emplace_back(
        "n50", "<< /Type /Pages /Parent @n49 /Count 10 /Kids [" + kids +
                   "] /Rotate 90 /MediaBox [0 0 612 792] /Resources << /Font << /F1 << /Type "
                   "/Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> >>");
    return sketch.built();
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
    Sketch sketch = {{}, "", {}, "/Type /Pages /Count 60 /Kids [@even @odd]"};
    std::string kids[2];
    for (int page = 1; page <= 60; ++page) {
        sketch.pages.emplace_back(page % 2 == 0 ? "/Parent @even" : "/Parent @odd");
        kids[page % 2] += "@p" + std::to_string(page) + " ";
    }
    const std::string large = "/Type /Pages /Count 30 /Resources << /ColorSpace << /C [/Indexed "
                              "/DeviceRGB 255 <" +
                              std::string(1536, '0') + ">] >> >>";
    sketch.objects = {{"even", "<< " + large + " /Kids [" + kids[0] + "] >>"},
                      {"odd", "<< " + large + " /Kids [" + kids[1] + "] >>"}};
    const std::string before = sketch.built();
    auto document = support::opened(before);
    ASSERT_TRUE(pages::deletePages(*document, {1, 2}).has_value());
    EXPECT_LT(support::savedIn(*document).size(), before.size());
}

} // namespace
