#include "KarvelPDFLibrary/saving/LinearizedWriter.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/saving/VerbatimWriter.h"
#include "tests/KarvelPDFLibrary/deletion/ResidueDocument.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SameDocument.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>
#include <random>
#include <tuple>

namespace {

using namespace karvel;
using namespace karvel::saving;
using support::PdfBuilder;
using support::Sketch;

SaveOptions linearizing(Way way = Way::CopyUnchanged)
{
    SaveOptions options = support::keeping(way);
    options.linearize = true;
    return options;
}

std::string linearizedIn(Document& document, Way way = Way::CopyUnchanged)
{
    const auto bytes = toString(document, linearizing(way));
    EXPECT_TRUE(bytes.has_value()) << (bytes ? std::string() : bytes.error().text);
    return bytes.value_or("");
}

std::string linearizedWithout(const std::string& pdf, const std::vector<PageRun>& runs,
                              Way way = Way::CopyUnchanged, const std::string& password = {})
{
    auto document = support::opened(pdf, password);
    for (const PageRun& run : runs) {
        EXPECT_TRUE(pages::deletePages(*document, run).has_value());
    }
    return linearizedIn(*document, way);
}

/// What qpdf finds wrong, and in the hint tables above all, in what must be linearised.
std::string flaws(const std::string& pdf, const std::string& password = {})
{
    const support::ScratchFolder scratch;
    const std::string told =
        support::runCommand("qpdf --show-linearization '--password=" + password + "' '" +
                            scratch.write("a.pdf", pdf) + "' | head -1")
            .output;
    return (told.find("linearization data") == std::string::npos ? told : std::string()) +
           support::problems(pdf, password);
}

// --- the same document as libqpdf's writer makes ---

struct Form {
    const char* name;
    const char* qpdfOptions;
    const char* password;
};

#ifdef VANTORA_SANITIZED
constexpr unsigned seeds = 2;
#else
constexpr unsigned seeds = 4;
#endif

class BothWriters : public testing::TestWithParam<Form> {};

TEST_P(BothWriters, GiveTheSameDocumentUnderRandomDeletions)
{
    const auto& [name, options, password] = GetParam();
    const std::string pdf = support::rewritten(support::residueDocument(40).built(),
                                               std::string("--linearize ") + options);
    for (unsigned seed = 1; seed <= seeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::vector<PageRun> runs;
        for (int page = 38; page >= 2; page -= 2 + static_cast<int>(random() % 9)) {
            runs.push_back({page - static_cast<int>(seed % 2), 1 + static_cast<int>(random() % 2)});
        }
        const std::string own = linearizedWithout(pdf, runs, Way::CopyUnchanged, password);
        const std::string other = linearizedWithout(pdf, runs, Way::Rewrite, password);
        EXPECT_EQ(support::firstDifference(own, other, password), "");
        EXPECT_EQ(flaws(own, password), "");
        EXPECT_EQ(support::pageTexts(own, password), support::pageTexts(other, password));
    }
}

INSTANTIATE_TEST_SUITE_P(
    LinearizedWriter, BothWriters,
    testing::Values(Form{"tables", "--object-streams=disable", ""},
                    Form{"object_streams", "--object-streams=generate", ""},
                    Form{"rc4_40_bits", "--allow-weak-crypto --encrypt u o 40 --", "o"},
                    Form{"rc4_128_bits", "--allow-weak-crypto --encrypt u o 128 --", "o"},
                    Form{"aes_128_bits", "--encrypt u o 128 --use-aes=y --", "u"},
                    Form{"aes_128_bits_with_object_streams",
                         "--object-streams=generate --encrypt u o 128 --use-aes=y --", "u"},
                    Form{"aes_256_bits", "--encrypt u o 256 --", "u"},
                    Form{"aes_256_bits_with_object_streams",
                         "--object-streams=generate --encrypt u o 256 --", "o"},
                    Form{"clear_metadata", "--encrypt u o 128 --use-aes=y --cleartext-metadata --",
                         "o"}),
    [](const auto& info) { return info.param.name; });

// --- what stands where ---

std::string streamOf(std::size_t length)
{
    return "/Kind /Large|" + std::string(length, 'x');
}

const char* const form = "<< /Fields [@parent] >>";

struct Shape {
    const char* name;
    Sketch sketch;
};

TEST(LinearizedWriter, PutsEveryKindOfUseInItsPlace)
{
    const std::string font =
        "<< /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >>";
    const Shape shapes[] = {
        {"attributes of the page tree",
         {{"", "", "/Rotate 90", ""},
          "",
          {},
          "/MediaBox [0 0 300 300] /Rotate 180 /Resources " + font}},
        {"outline in the catalog itself",
         {{"", "", "", ""},
          "/Outlines << /First @a /Last @a /Count 1 >>",
          {{"a", "<< /Title (a) /Dest [@p3 /Fit] >>"}}}},
        {"outline that shows first",
         {{"/Own @a", "", "", "/Own @a"},
          "/PageMode /UseOutlines /Outlines @o",
          {{"o", "<< /First @a /Last @b /Count 2 >>"},
           {"a", "<< /Title (a) /Parent @o /Next @b /Dest [@p3 /Fit] >>"},
           {"b", "<< /Title (b) /Parent @o /Prev @a /Dest [@p4 /Fit] >>"}}}},
        {"outline that shows last",
         {{"", "", "", ""},
          "/Outlines @o",
          {{"b", "<< /Title (b) /Parent @o /Prev @a /Dest [@p4 /Fit] >>"},
           {"a", "<< /Title (a) /Parent @o /Next @b /Dest [@p3 /Fit] >>"},
           {"o", "<< /First @a /Last @b /Count 2 >>"}}}},
        {"thumbnails, own and shared, and used otherwise",
         {{"/Thumb @a", "/Thumb @b", "/Thumb @a", "/Thumb @c /Own @c", "/Thumb @d", "/Thumb @e"},
          "/Other @d",
          {{"a", "/Width 1|x"},
           {"b", "/Width 1|x"},
           {"c", "/Width 1|x"},
           {"d", "/Width 1|x"},
           {"e", "/Width 1|x"}}}},
        {"null as an object",
         {{"", "/Own [@a @b]", "/Own @a", "/Own << /A @a >>"},
          "/Odd @a",
          {{"a", "null"}, {"b", "null"}}}},
        {"fields reached from all pages",
         {{"/Annots [@f1]", "/Annots [@f2]", "/Annots [@f3]", "/Annots [@f4]"},
          std::string("/AcroForm ") + form,
          {{"parent", "<< /T (a) /FT /Tx /Kids [@f1 @f2 @f3 @f4] >>"},
           {"f1", "<< /Subtype /Widget /Rect [0 0 9 9] /Parent @parent /P @p1 >>"},
           {"f2", "<< /Subtype /Widget /Rect [0 0 9 9] /Parent @parent /P @p2 >>"},
           {"f3", "<< /Subtype /Widget /Rect [0 0 9 9] /Parent @parent /P @p3 >>"},
           {"f4", "<< /Subtype /Widget /Rect [0 0 9 9] /Parent @parent /P @p4 >>"}}}},
        {"a chain that two pages share from its middle",
         {{"", "", "/Own @a", "/Own @c", "/Own @d"},
          "",
          {{"a", "[@b]"}, {"b", "[@c]"}, {"c", "[@d @e @a]"}, {"d", "[@e]"}, {"e", "(end)"}}}},
        {"comments in references and loops",
         {{"", "", "/Own [@a 1 2]", ""},
          "/Odd @a",
          {{"a", "[@a @b]"}, {"b", "<< /A @a /B[@b @a]/C(5 0 R)/D 8% 8 0\n0 R >>"}}}},
        {"pages outside of the page tree",
         {{"/Own @a", "", "/Own @b", "/Annots [@n]"},
          "/Outlines @o /Names << /Templates << /Names [(c) @c (d) @d] >> >>",
          {{"a", "<< /Type /Page /Parent @pages /Thumb @p3 >>"},
           {"b", "<< /Type /Page /Own @e /Parent @p3 >>"},
           {"c", "<< /Type /Page /MediaBox [0 0 9 9] /Annots [@n] /Own @e >>"},
           {"d", "<< /Type @t /Parent @c /Own [<< /Type /Page /Own [@c @d @p1] >>] >>"},
           {"e", "[(only on such pages)]"},
           {"n", "<< /Subtype /Text /Rect [0 0 9 9] /P @c >>"},
           {"o", "<< /First @c /Last @c /Count 1 >>"},
           {"t", "/Page"}}}},
        {"large data",
         {{"/Own @a", "", "/Own @b", "/Own @b"},
          "",
          {{"a", streamOf(300000)}, {"b", streamOf(700000)}}}},
        {"one page left", {{"", ""}, "", {}}}};
    for (const Shape& shape : shapes) {
        for (const char* options : {"--object-streams=disable", "--object-streams=generate",
                                    "--encrypt '' o 128 --use-aes=y --"}) {
            SCOPED_TRACE(std::string(shape.name) + " " + options);
            const std::string pdf = support::rewritten(shape.sketch.built(), options);
            const PageRun removed{shape.sketch.pages.size() > 3 ? 2 : 1, 1};
            const std::string own = linearizedWithout(pdf, {removed});
            EXPECT_EQ(flaws(own), "");
            EXPECT_EQ(
                support::firstDifference(own, linearizedWithout(pdf, {removed}, Way::Rewrite)), "");
        }
    }
}

TEST(LinearizedWriter, KeepsTheTextOfObjectsButForNumbers)
{
    const std::string odd = "<< /A   (9 0 R \\050) % and 9 0 R\n /Real 1.500000 /Name /A#42 /Next";
    const std::string pdf = Sketch{{"", "", ""}, "/Odd @odd", {{"odd", odd + " @odd >>"}}}.built();
    EXPECT_NE(linearizedWithout(pdf, {{2, 1}}).find(odd), std::string::npos);
}

/// libqpdf's linearisation, which writes some of these, would leave such pages out.
TEST(LinearizedWriter, KeepsPagesOutsideOfThePageTree)
{
    const Sketch plain{{"", "", ""},
                       "/Names << /Templates << /Names [(a) @hidden (b) @parted] >> >>",
                       {{"hidden", "<< /Type /Page /MediaBox [0 0 9 9] /Own @own >>"},
                        {"parted", "[<< /Type @type /Own [@own] >>]"},
                        {"own", "(hidden away)"},
                        {"type", "/Page"}}};
    Sketch odd = plain;
    odd.pages.back() = "/Own @s";
    odd.objects.emplace_back("s", "/Type /ObjStm /N 0 /First 0|");
    SaveOptions readable = linearizing();
    readable.readable = true;
    const std::tuple<const char*, Sketch, SaveOptions> rows[] = {
        {"copied", plain, linearizing()},
        {"rewritten", plain, linearizing(Way::Rewrite)},
        {"readable", plain, readable},
        {"reference to what looks like an object stream", odd, linearizing()}};
    for (const auto& [name, sketch, options] : rows) {
        SCOPED_TRACE(name);
        auto document = support::opened(sketch.built());
        ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
        const std::string bytes = toString(*document, options).value_or("");
        EXPECT_EQ(flaws(bytes), "");
        EXPECT_EQ(support::valueAt(bytes, "Root/Names/Templates/Names/1/Own"), "(hidden away)");
        EXPECT_EQ(support::valueAt(bytes, "Root/Names/Templates/Names/3/0/Own/0"), "(hidden away)");
        EXPECT_EQ(support::valueAt(bytes, "Root/Names/Templates/Names/3/0/Type"), "/Page");
    }
}

TEST(LinearizedWriter, KeepsThePermanentHalfOfTheIdentifierAndIsDeterministic)
{
    const std::string pdf = support::rewritten(support::documentOfPages(5), "--linearize");
    const auto bytes = [&] {
        auto document = support::opened(pdf);
        EXPECT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
        SaveOptions options = linearizing();
        options.deterministicIdentifier = true;
        return toString(*document, options).value_or("");
    };
    EXPECT_EQ(bytes(), bytes());
    EXPECT_EQ(support::opened(bytes())->file().getTrailer().getKey("/ID").getArrayItem(0).unparse(),
              support::opened(pdf)->file().getTrailer().getKey("/ID").getArrayItem(0).unparse());
}

// --- what the input is like ---

struct Input {
    const char* name;
    std::string pdf;
    bool copied;
};

/// A linearised file whose hint tables say something else.
std::string withBrokenHints()
{
    std::string pdf = support::rewritten(support::documentOfPages(3), "--linearize");
    const std::size_t hints = std::stoul(pdf.substr(pdf.find("/H [ ") + 5));
    const std::size_t data = pdf.find("stream\n", hints) + 7;
    pdf.replace(data + 4, 4, "oops");
    return pdf;
}

TEST(LinearizedWriter, TakesEveryInput)
{
    const std::string plain = support::documentOfPages(3);
    const std::string linearized = support::rewritten(plain, "--linearize");
    const Input inputs[] = {
        {"not linearised", plain, true},
        {"linearised with broken hint tables", withBrokenHints(), true},
        {"linearised with another length", linearized + "% longer than it says\n", true},
        {"rebuilt table", support::replaced(plain, "startxref\n", "startxref\n9"), true},
        {"wrong length", support::replaced(plain, "<< /Length 37", "<< /Length 31"), true},
        {"junk before the header", "HTTP/1.1 200 OK\r\n\r\n" + plain, false},
        {"page without its type",
         support::replaced(plain, "<< /Type /Page /Parent", "<< /Type /Pqge /Parent"), true},
        {"hybrid references", support::asHybridFile(plain), true},
        {"reference to what looks like an object stream",
         Sketch{{"", "", ""}, "/Own @s", {{"s", "/Type /ObjStm /N 0 /First 0|"}}}.built(), false}};
    for (const Input& input : inputs) {
        SCOPED_TRACE(input.name);
        EXPECT_EQ(whyNotVerbatim(*support::opened(input.pdf), linearizing()).empty(), input.copied);
        const std::string bytes = linearizedWithout(input.pdf, {{2, 1}});
        EXPECT_EQ(flaws(bytes), "");
        EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed({1, 3}));
    }
}

/// libqpdf finds the page used twice then, and gives up.
TEST(LinearizedWriter, WritesPagesThatAreThumbnailsOfOthers)
{
    const std::string pdf = Sketch{{"/Thumb @p3", "", ""}, "", {}}.built();
    for (const std::string& input : {pdf, support::replaced(pdf, "startxref\n", "startxref\n9")}) {
        const std::string bytes = linearizedWithout(input, {{2, 1}});
        EXPECT_TRUE(support::opened(bytes)->file().isLinearized());
        EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed({1, 3}));
    }
}

TEST(LinearizedWriter, LeavesTheDocumentAsItWas)
{
    SaveOptions readable = linearizing();
    readable.readable = true;
    for (const SaveOptions& options : {linearizing(), linearizing(Way::Rewrite), readable}) {
        auto document = support::opened(
            Sketch{{"", "", ""}, "", {}, "/MediaBox [0 0 300 300] /Rotate 180"}.built());
        const std::string first = toString(*document, options).value_or("");
        ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
        const std::string second = toString(*document, options).value_or("");
        EXPECT_EQ(flaws(first) + flaws(second), "");
        EXPECT_EQ(support::valueAt(second, "p1/Rotate"), "180");
        EXPECT_EQ(support::problems(support::savedIn(*document)), "");
    }
}

TEST(LinearizedWriter, MakesReadableDocuments)
{
    auto document = support::opened(
        support::rewritten(support::documentOfPages(3), "--object-streams=generate"));
    SaveOptions options = linearizing();
    options.readable = true;
    options.objectStreams = ObjectStreams::None;
    options.streamData = StreamData::Decode;
    const std::string bytes = toString(*document, options).value_or("");
    EXPECT_EQ(flaws(bytes), "");
    EXPECT_NE(bytes.find("(Page 2) Tj"), std::string::npos);
    EXPECT_NE(bytes.find("\n  /Type /Page\n"), std::string::npos);
}

} // namespace
