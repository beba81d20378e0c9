#include "KarvelPDFLibrary/saving/VerbatimWriter.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/KarvelPDFLibrary/deletion/ResidueDocument.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SameDocument.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace karvel;
using namespace karvel::saving;
using support::PdfBuilder;
using support::Sketch;

std::string savedWithout(const std::string& pdf, const std::vector<PageRun>& runs, Way way,
                         const std::string& password = {})
{
    auto document = support::opened(pdf, password);
    for (const PageRun& run : runs) {
        EXPECT_TRUE(pages::deletePages(*document, run).has_value());
    }
    return support::savedIn(*document, way);
}

std::string refusal(const std::string& pdf, const std::string& password = {})
{
    return whyNotVerbatim(*support::opened(pdf, password), support::keeping());
}

// --- both ways of saving give the same document ---

struct Form {
    const char* name;
    const char* qpdfOptions;
    const char* password;
};

class BothWaysOfSaving : public testing::TestWithParam<Form> {};

TEST_P(BothWaysOfSaving, GiveTheSameDocumentUnderRandomDeletions)
{
    const auto& [name, options, password] = GetParam();
    const std::string pdf = support::rewritten(support::documentOfPages(150), options);
    ASSERT_EQ(refusal(pdf, password), "");
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::vector<PageRun> runs;
        std::vector<int> remaining;
        for (int page = 1; page <= 150; ++page) {
            remaining.push_back(page);
        }
        for (int page = 150; page >= 1; page -= 1 + static_cast<int>(random() % 9)) {
            const int count = std::min(1 + static_cast<int>(random() % 3), 151 - page);
            const int left = static_cast<int>(remaining.size());
            if (count < left && page + count - 1 <= left) {
                runs.push_back({page, count});
                remaining.erase(remaining.begin() + page - 1, remaining.begin() + page - 1 + count);
            }
        }
        const std::string copied = savedWithout(pdf, runs, Way::CopyUnchanged, password);
        const std::string rewritten = savedWithout(pdf, runs, Way::Rewrite, password);
        EXPECT_EQ(support::firstDifference(copied, rewritten, password), "");
        EXPECT_EQ(support::problems(copied, password), "");
        EXPECT_EQ(support::pageTexts(copied, password), support::pagesNamed(remaining));
    }
}

INSTANTIATE_TEST_SUITE_P(
    VerbatimWriter, BothWaysOfSaving,
    testing::Values(
        Form{"cross_reference_table", "--object-streams=disable", ""},
        Form{"object_streams", "--object-streams=generate", ""},
        Form{"linearized_input", "--linearize", ""},
        Form{"linearized_input_with_object_streams", "--linearize --object-streams=generate", ""},
        Form{"rc4_40_bits", "--allow-weak-crypto --encrypt u o 40 --", "u"},
        Form{"rc4_128_bits", "--allow-weak-crypto --encrypt u o 128 --", "o"},
        Form{"aes_128_bits", "--encrypt u o 128 --use-aes=y --", "u"},
        Form{"aes_128_bits_with_object_streams",
             "--object-streams=generate --encrypt u o 128 --use-aes=y --", "u"},
        Form{"aes_256_bits", "--encrypt u o 256 --", "u"},
        Form{"aes_256_bits_with_object_streams", "--object-streams=generate --encrypt u o 256 --",
             "o"},
        Form{"clear_metadata",
             "--object-streams=generate --encrypt u o 256 --cleartext-metadata --", "o"}),
    [](const auto& info) { return info.param.name; });

TEST(VerbatimWriter, EnciphersChangedObjects)
{
    for (const char* options :
         {"--allow-weak-crypto --encrypt u o 128 --", "--encrypt u o 128 --use-aes=y --",
          "--encrypt u o 256 --", "--object-streams=generate --encrypt u o 256 --"}) {
        SCOPED_TRACE(options);
        auto document =
            support::opened(support::rewritten(support::documentOfPages(2), options), "u");
        document->editPage(1).replaceKey("/Note", QPDFObjectHandle::newString("a private note"));
        QPDFObjectHandle stream =
            document->changes().add(document->file().newStream("a private stream"));
        document->editPage(2).replaceKey("/Extra", stream);
        const std::string bytes = support::savedIn(*document);
        EXPECT_EQ(bytes.find("a private"), std::string::npos);
        auto again = support::opened(bytes, "o");
        EXPECT_EQ(again->page(1).getKey("/Note").getStringValue(), "a private note");
        const auto data = again->page(2).getKey("/Extra").getStreamData();
        EXPECT_EQ(std::string(reinterpret_cast<char*>(data->getBuffer()), data->getSize()),
                  "a private stream");
        EXPECT_EQ(support::problems(bytes, "u"), "");
    }
}

// --- files that are fit for copying, and files that are not ---

/// A document with an object of a text, number 7, in its catalog.
std::string withObject(const std::string& body)
{
    return Sketch{{"", "", ""}, "/Odd @odd", {{"odd", body}}}.built();
}

TEST(VerbatimWriter, KeepsEveryByteOfObjectsThatStay)
{
    const std::string odd =
        "<< /Odd   (spacing \\050 kept) % and comments\n /Real 1.500000 /Name /A#42 >>";
    EXPECT_NE(savedWithout(withObject(odd), {{2, 1}}, Way::CopyUnchanged).find(odd),
              std::string::npos);
}

/// An incremental update in which page 1 gets a new content stream.
std::string updated()
{
    const std::string file = support::documentOfPages(3);
    const std::string old = file.substr(file.find("startxref\n") + 10);
    const std::string content = support::showText("Page 1");
    const std::string longer = file + "4 0 obj\n<< /Length " + std::to_string(content.size()) +
                               " >>\nstream\n" + content + "\nendstream\nendobj\n";
    return longer + "xref\n4 1\n" + PdfBuilder::tableRow(file.size()) +
           "trailer\n<< /Size 10 /Root 1 0 R /Prev " + old.substr(0, old.find('\n')) +
           " >>\nstartxref\n" + std::to_string(longer.size()) + "\n%%EOF\n";
}

/// A document whose table has another offset for an object: that of a text in the file.
std::string withOffset(int number, const std::string& ofText, std::string pdf)
{
    const std::size_t table = pdf.find("xref\n0 ");
    const std::size_t rows = pdf.find('\n', table + 5) + 1;
    return pdf.replace(rows + 20 * static_cast<std::size_t>(number), 20,
                       PdfBuilder::tableRow(pdf.find(ofText)));
}

std::string withGenerationAboveZero()
{
    std::string pdf = support::replaced(support::documentOfPages(3), "4 0 obj", "4 7 obj");
    const std::size_t row = pdf.find("xref\n0 ") + 11 + 20 * 4;
    pdf.replace(pdf.find("00000 n", row), 5, "00007");
    return support::replaced(pdf, "/Contents 4 0 R", "/Contents 4 7 R");
}

struct Oddity {
    const char* name;
    std::string pdf;
    bool copied;
};

TEST(Oddities, AreCopiedOrRewrittenButNeverWrong)
{
    const std::string plain = support::documentOfPages(3);
    const std::string content = support::showText("Page 1");
    const Oddity rows[] = {
        {"endobj in a string", withObject("(endobj 9 0 obj)"), true},
        {"endobj in a comment", withObject("<< /A 1 % endobj\n>>"), true},
        {"number as object", withObject("5"), true},
        {"entry for an object that is not there",
         support::replaced(withObject("5"), "7 0 obj\n5\nendobj", "% nothing here  "), false},
        {"reference to nothing", withObject("[99 0 R 3 7 R]"), true},
        {"generation above zero", withGenerationAboveZero(), true},
        {"offset off by one", withOffset(5, "\n5 0 obj", plain), true},
        {"indirect length",
         Sketch{{"/Contents @content", "", ""},
                "",
                {{"content", "<< /Length @length >>\nstream\n" + content + "\nendstream"},
                 {"length", std::to_string(content.size())}}}
             .built(),
         true},
        {"wrong length", support::replaced(plain, "<< /Length 37", "<< /Length 31"), true},
        {"stream data that says endstream", withObject("|endstream endobj 4 0 obj"), true},
        {"junk before the header", "HTTP/1.1 200 OK\r\n\r\n" + plain, false},
        {"junk after the end", plain + std::string(300, '\n') + "<html>", true},
        {"incremental update", updated(), true},
        {"two objects at one offset", withOffset(7, "3 0 obj", withObject("(text)")), true},
        {"object inside another one",
         withOffset(8, "8 0 obj (inner)",
                    Sketch{{"", "", ""},
                           "/Odd [@outer @inner]",
                           {{"outer", "|xx 8 0 obj (inner) endobj xx"}, {"inner", "(inner)"}}}
                        .built()),
         false},
        {"hybrid references", support::asHybridFile(plain), true},
        {"missing endobj", support::replaced(plain, "endobj\n5 0 obj", "      \n5 0 obj"), false}};
    for (const Oddity& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string why = refusal(row.pdf);
        EXPECT_EQ(why.empty(), row.copied) << why;
        const std::string bytes = savedWithout(row.pdf, {{2, 1}}, Way::CopyUnchanged);
        EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed({1, 3}));
        EXPECT_EQ(support::problems(bytes), "");
        EXPECT_EQ(bytes.find("/Prev"), std::string::npos) << "an earlier revision";
        EXPECT_EQ(support::firstDifference(bytes, savedWithout(row.pdf, {{2, 1}}, Way::Rewrite)),
                  "");
    }
}

} // namespace
