#include "DeletionCase.h"
#include "tests/support/Sketch.h"

#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>
#include <sys/resource.h>

/// Files that are looped, deep, large or swollen: each ends in a right document, in bounded time
/// (the test runner's limit, which anything quadratic would exceed by far), stack and memory.
namespace {

using namespace karvel;
using support::PdfBuilder;
using support::Sketch;

struct AnyFile {
    const char* name;
    std::string (*make)();

    /// Pages before the first one goes, and whether their texts are compared.
    int pages;
    bool isSmall;
};

std::string ref(int number)
{
    return PdfBuilder::reference(number);
}

// --- loops ---

std::string withLoops(const std::string& catalog, const Sketch& more)
{
    Sketch sketch = more;
    sketch.pages = {"/StructParents 0 /Annots [@link]", "/StructParents 1", ""};
    sketch.catalog = catalog;
    sketch.objects.emplace_back("link",
                                "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A @act >>");
    sketch.objects.emplace_back("act", "<< /S /GoTo /D [@p2 /Fit] /Next [@act @act] >>");
    return sketch.built();
}

std::string loopedNameTree()
{
    return withLoops("/Names << /Dests @tree >>",
                     {{},
                      "",
                      {{"tree", "<< /Limits [(a) (b)] /Kids [@leaf @tree @leaf] >>"},
                       {"leaf", "<< /Limits [(a) (b)] /Names [(a) [@p1 /Fit] (b) [@p2 /Fit]] /Kids "
                                "[@tree] >>"}}});
}

std::string loopedNumberTree()
{
    return withLoops("/PageLabels @tree",
                     {{},
                      "",
                      {{"tree", "<< /Kids [@leaf @tree] >>"},
                       {"leaf", "<< /Limits [0 2] /Nums [0 << /S /r >>] /Kids [@tree @leaf] >>"}}});
}

std::string loopedStructure()
{
    return withLoops(
        "/MarkInfo << /Marked true >> /StructTreeRoot @root",
        {{},
         "",
         {{"root", "<< /Type /StructTreeRoot /K @a /ParentTree @parents >>"},
          {"parents", "<< /Nums [0 [@b] 1 [@a]] /Kids [@parents] >>"},
          {"a",
           "<< /Type /StructElem /S /Sect /P @b /K [@b @a << /Type /MCR /Pg @p2 /MCID 0 >>] >>"},
          {"b", "<< /Type /StructElem /S /P /P @a /Pg @p1 /K [0 @a @b] >>"}}});
}

std::string loopedForm()
{
    return withLoops("/AcroForm << /Fields [@a] /CO [@b @a] >>",
                     {{},
                      "",
                      {{"a", "<< /T (a) /FT /Tx /Kids [@b @a] /Parent @b >>"},
                       {"b", "<< /T (b) /Kids [@a] /Parent @a >>"}}});
}

std::string loopedThreads()
{
    return withLoops("/Threads [@thread @thread]",
                     {{},
                      "",
                      {{"thread", "<< /F @one >>"},
                       {"one", "<< /T @thread /P @p1 /N @two /V @three /R [0 0 1 1] >>"},
                       {"two", "<< /T @thread /P @p2 /N @three /V @one /R [0 0 1 1] >>"},
                       {"three", "<< /T @thread /P @p3 /N @two /V @two /R [0 0 1 1] >>"}}});
}

/// Every value that may stand in an object of its own does.
std::string indirectEverything()
{
    Sketch sketch = {{},
                     "",
                     {{"font", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"},
                      {"fonts", "<< /F1 @font >>"},
                      {"resources", "<< /Font @fonts >>"},
                      {"box", "[0 0 612 792]"},
                      {"count", "3"},
                      {"type", "/Pages"},
                      {"pagetype", "/Page"},
                      {"kids", "[@page1 @page2 @page3]"},
                      {"fit", "/Fit"}},
                     "/Type @type /Count @count /Kids @kids /MediaBox @box"};
    for (int page = 1; page <= 3; ++page) {
        const std::string number = std::to_string(page);
        const std::string next = std::to_string(page % 3 + 1);
        const std::pair<const char*, std::string> objects[] = {
            {"content", "|" + support::showText("Page " + number)},
            {"contents", "[@content" + number + "]"},
            {"target", "[@page" + next + " @fit]"},
            {"link",
             "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest @target" + number + " >>"},
            {"links", "[@link" + number + "]"},
            {"page", "<< /Type @pagetype /Parent @pages /Contents @contents" + number +
                         " /Resources @resources /Annots @links" + number + " >>"}};
        for (const auto& [name, text] : objects) {
            sketch.objects.emplace_back(name + number, text);
        }
    }
    return sketch.built();
}

// --- size ---

// Deep and wide enough to end anything recursive or quadratic, sanitized or not.
#ifdef VANTORA_SANITIZED
constexpr int pagesInChain = 60000;
constexpr int pagesInRow = 40000;
#else
constexpr int pagesInChain = 300000;
constexpr int pagesInRow = 200000;
#endif

/// A page tree in which every node has one page and one more node.
std::string chainOfPages()
{
    constexpr int count = pagesInChain;
    PdfBuilder builder;
    const int catalog = builder.reserve();
    int node = builder.reserve();
    builder.set(catalog, "<< /Type /Catalog /Pages " + ref(node) + " >>");
    int parent = 0;
    for (int i = 0; i < count; ++i) {
        const int next = i + 1 < count ? builder.reserve() : 0;
        const int page =
            builder.add("<< /Type /Page /Parent " + ref(node) + " /MediaBox [0 0 9 9] >>");
        builder.set(node, "<< /Type /Pages /Count " + std::to_string(count - i) + " /Kids [" +
                              ref(page) + (next == 0 ? "" : " " + ref(next)) + "]" +
                              (parent == 0 ? "" : " /Parent " + ref(parent)) + " >>");
        parent = node;
        node = next;
    }
    return builder.build(catalog);
}

std::string flatPages()
{
    const std::vector<std::string> pages(pagesInRow, "/Contents @content");
    return Sketch{pages, "", {{"content", "|"}}, "/MediaBox [0 0 9 9] /Resources << >>"}.built();
}

std::string longOutline()
{
    constexpr int count = 200000;
    Sketch sketch = {{"", "", ""}, "/Outlines @root", {}};
    sketch.objects.emplace_back("root", "<< /First @e1 /Last @e" + std::to_string(count) +
                                            " /Count " + std::to_string(count) + " >>");
    for (int i = 1; i <= count; ++i) {
        const auto entry = [](int number) { return "@e" + std::to_string(number); };
        sketch.objects.emplace_back(entry(i).substr(1),
                                    "<< /Title (t) /Parent @root /Dest [@p" +
                                        std::to_string(i % 3 + 1) + " /Fit]" +
                                        (i > 1 ? " /Prev " + entry(i - 1) : "") +
                                        (i < count ? " /Next " + entry(i + 1) : "") + " >>");
    }
    return sketch.built();
}

/// An action that others follow, one after the other.
std::string longActionChain()
{
    constexpr int count = 50000;
    Sketch sketch = {{"/Annots [@link]", "", ""}, "/OpenAction @a1", {}};
    sketch.objects.emplace_back("link", "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A @a1 >>");
    for (int i = 1; i <= count; ++i) {
        sketch.objects.emplace_back("a" + std::to_string(i),
                                    "<< /S /GoTo /D [@p" + std::to_string(i % 3 + 1) + " /Fit]" +
                                        (i < count ? " /Next @a" + std::to_string(i + 1) : "") +
                                        " >>");
    }
    return sketch.built();
}

std::string manyRepliesInARow()
{
    constexpr int count = 50000;
    Sketch sketch = {{"/Annots [@r0]", "/Annots @list", ""}, "", {}};
    std::string list;
    for (int i = 0; i < count; ++i) {
        const std::string name = "r" + std::to_string(i);
        list += "@" + name + " ";
        sketch.objects.emplace_back(name, "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9]" +
                                              (i > 0 ? " /IRT @r" + std::to_string(i - 1) : "") +
                                              " >>");
    }
    sketch.objects.emplace_back("list", "[" + list + "]");
    return sketch.built();
}

// --- deflate bombs ---

std::string deflatedSpaces(std::size_t megabytes)
{
    std::string packed;
    Pl_String end("packed", nullptr, packed);
    Pl_Flate flate("deflate", &end, Pl_Flate::a_deflate);
    const std::string spaces(1 << 20, ' ');
    for (std::size_t i = 0; i < megabytes; ++i) {
        flate.writeString(spaces);
    }
    flate.finish();
    return packed;
}

/// Content that nothing asks for, and content that has to be read since resources are shared.
std::string swollenContent()
{
    const std::string bomb = deflatedSpaces(600);
    return Sketch{{"/Contents [@small @bomb] /Resources @res",
                   "/Contents [@text @bomb] /Resources "
                   "@res",
                   ""},
                  "",
                  {{"res", "<< /XObject << /A @form >> /Font << /F1 << /Type /Font /Subtype /Type1 "
                           "/BaseFont /Helvetica >> >> >>"},
                   {"form", "/Subtype /Form /BBox [0 0 9 9]|q Q"},
                   {"small", "|/A Do"},
                   {"text", "|" + support::showText("Page 2")},
                   {"bomb", "/Filter /FlateDecode|" + bomb}}}
        .built();
}

class AnyFiles : public testing::TestWithParam<AnyFile> {};

TEST_P(AnyFiles, EndInARightDocumentWithinBounds)
{
    const std::string pdf = GetParam().make();
    auto document = support::opened(pdf);
    ASSERT_EQ(document->pageCount(), GetParam().pages);
    ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
    const std::string saved = support::savedIn(*document, saving::Way::CopyUnchanged);
#ifndef VANTORA_SANITIZED
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss, 1000 * 1024);
#endif
    if (GetParam().isSmall) {
        EXPECT_EQ(support::problems(saved), "");
        EXPECT_EQ(support::pageTexts(saved), support::pagesNamed({2, 3}));
        EXPECT_EQ(support::firstDifference(saved, support::withoutPages(pdf, {1})), "");
    } else {
        EXPECT_EQ(support::opened(saved)->pageCount(), GetParam().pages - 1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Deletion, AnyFiles,
    testing::Values(AnyFile{"loops_in_a_name_tree", loopedNameTree, 3, true},
                    AnyFile{"loops_in_a_number_tree", loopedNumberTree, 3, true},
                    AnyFile{"loops_in_the_structure", loopedStructure, 3, true},
                    AnyFile{"loops_in_the_form", loopedForm, 3, true},
                    AnyFile{"threads_that_cross", loopedThreads, 3, true},
                    AnyFile{"indirect_everything", indirectEverything, 3, true},
                    AnyFile{"flat_page_tree", flatPages, pagesInRow, false},
                    AnyFile{"page_tree_as_a_chain", chainOfPages, pagesInChain, false},
                    AnyFile{"long_outline", longOutline, 3, false},
                    AnyFile{"long_chain_of_actions", longActionChain, 3, false},
                    AnyFile{"replies_to_replies", manyRepliesInARow, 3, false},
                    AnyFile{"swollen_content", swollenContent, 3, false}),
    [](const auto& info) { return info.param.name; });

} // namespace
