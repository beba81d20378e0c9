#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/KarvelPDFLibrary/deletion/ResidueDocument.h"
#include "tests/support/IndexAgreement.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SameDocument.h"
#include "tests/support/Sketch.h"

#include <algorithm>
#include <gtest/gtest.h>

/// Damage that can be told exactly: the index is there, believes what libqpdf believes, and all
/// comes out as it does without one.
namespace {

using namespace karvel;
using support::PdfBuilder;
using support::replaced;
using support::Sketch;

struct DamagedFile {
    const char* name;
    std::string pdf; ///< three pages
    bool hasIndex;
};

const std::string content = support::showText("Page 1");

/// A document whose first page has a stream as its content that is written so.
std::string withContent(const std::string& stream, const std::string& length = "0")
{
    return Sketch{{"/Contents @content", "", ""}, "", {{"content", stream}, {"length", length}}}
        .built();
}

std::string withLength(const std::string& entry, const std::string& length = "0")
{
    return withContent("<< " + entry + " >>\nstream\n" + content + "\nendstream", length);
}

/// A document with an object that its catalog leads to.
std::string withObject(const std::string& text)
{
    return Sketch{{"", "", ""}, "/Odd @odd", {{"odd", text}}}.built();
}

std::string withoutTable(std::string pdf)
{
    const std::size_t table = pdf.rfind("xref\n0 ", pdf.rfind("trailer"));
    return pdf.erase(table, pdf.find("trailer", table) - table);
}

std::string withOffset(std::string pdf, int number, std::size_t offset)
{
    const std::size_t rows = pdf.find('\n', pdf.find("xref\n0 ") + 5) + 1;
    return pdf.replace(rows + 20 * static_cast<std::size_t>(number), 20,
                       PdfBuilder::tableRow(offset));
}

/// A file with a text before its first object, which has the number 1.
std::string after(const std::string& text, const std::string& pdf)
{
    return replaced(pdf, "1 0 obj", text + "1 0 obj");
}

/// A file with a text behind its last object, and the table where the file says.
std::string followedBy(const std::string& text, std::string pdf)
{
    const std::size_t table = pdf.rfind("xref\n0 ", pdf.rfind("trailer"));
    return replaced(pdf.insert(table, text), "startxref\n" + std::to_string(table),
                    "startxref\n" + std::to_string(table + text.size()));
}

/// A file that ends with its last object, and has its trailer before the first.
std::string endingInAnObject(std::string pdf)
{
    const std::size_t trailer = pdf.rfind("trailer");
    const std::string end = pdf.substr(trailer, pdf.find(">>\nstartxref", trailer) + 3 - trailer);
    pdf.erase(pdf.rfind("endobj") + 6);
    return after(end, pdf);
}

std::vector<DamagedFile> damagedFiles()
{
    const std::string plain = support::documentOfPages(3);
    const std::string encrypted = support::rewritten(plain, "--encrypt '' o 128 --use-aes=y --");
    const std::string old = "<< /Length 3 >>\nstream\nold\nendstream\nendobj\n";
    const std::string data = "stream\n" + content;
    return {
        {"a length that is too small", replaced(plain, "<< /Length 37", "<< /Length 31"), true},
        {"a length that is too large", replaced(plain, "<< /Length 37", "<< /Length 99"), true},
        {"a length beyond the file", withLength("/Length 9999999999"), true},
        {"a length of nothing", withLength("/Length 0"), true},
        {"a length below nothing", withLength("/Length -1"), true},
        {"a length that is no number", withLength("/Length (37)"), true},
        {"a length that is missing", withLength("/Kind /Any"), true},
        {"a wrong length in an object of its own", withLength("/Length @length", "5"), true},
        {"a length in an object that is not there", withLength("/Length 99 0 R"), true},
        {"white space behind the data",
         withContent("<< /Length " + std::to_string(content.size()) + " >>\n" + data +
                     " \n \nendstream"),
         true},
        {"a wrong length and data that say endstream",
         withContent("<< /Length 5 >>\n" + data + "\nendstream\nmore\nendstream"), false},
        {"a wrong length and no end", withContent("<< /Length 5 >>\n" + data + "\n"), false},
        {"a wrong length and no data", withContent("<< /Length 5 >>\nstream\nendstream"), false},
        {"a wrong length and a key that stands twice",
         withLength("/Length 5 /Note << /A 1 /B 2 /A 3 >>"), true},
        {"a wrong length of what is like an object stream",
         withObject("<< /Type /ObjStm /N 0 /First 0 /Length 5 >>\nstream\n \nendstream"), false},
        {"no table", withoutTable(plain), true},
        {"no table and a wrong length",
         withoutTable(replaced(plain, "<< /Length 37", "<< /Length 31")), true},
        {"a start that leads nowhere", replaced(plain, "startxref\n", "startxref\n9"), true},
        {"an object twice and no table", withoutTable(after("4 0 obj\n" + old, plain)), true},
        {"an object under two generations and no table",
         withoutTable(after("4 1 obj\n" + old, plain)), false},
        {"an object within a stream and no table",
         withoutTable(withObject("|\n3 0 obj\n(inner)\nendobj\n")), false},
        {"a file that ends with an object", endingInAnObject(plain), false},
        {"a key that stands twice and no table", withoutTable(withObject("<< /A 1 /A 2 >>")), true},
        {"an inner key that stands twice and no table",
         withoutTable(withObject("[<< /A 1 /B << /A 2 >> /A 3 >>]")), true},
        {"a name with a stray # and no table", withoutTable(withObject("[/A#4 /B#]")), true},
        {"entries that are no pairs and no table", withoutTable(withObject("[<< 1 2 >>]")), false},
        {"a number that is none and no table", withoutTable(withObject("[1-2 --3 4]")), false},
        {"a reference that is all of an object and no table", withoutTable(withObject("3 0 R")),
         false},
        {"words that run together and no table",
         withoutTable(
             replaced(withObject("<< /A 1 >>"), "<< /A 1 >>\nendobj\n", "<< /A 1 >>\nendobj5\n")),
         false},
        {"content that is lost and no table",
         withoutTable(replaced(plain, "/Contents 4 0 R", "/Contents 99 0 R")), false},
        {"a page that is lost and no table", withoutTable(replaced(plain, "5 0 obj", "5 0 xxx")),
         false},
        {"a page that is something else and no table",
         withoutTable(replaced(plain, "<< /Type /Page /Parent", "<< /Type /Pqge /Parent")), false},
        {"content that is null and no table",
         withoutTable(Sketch{{"/Contents @c", "", ""}, "", {{"c", "null"}}}.built()), true},
        {"content that is something else and no table",
         withoutTable(Sketch{{"/Contents @c", "", ""}, "", {{"c", "(text)"}}}.built()), true},
        {"a wrong offset", withOffset(plain, 5, 3), true},
        {"an offset beyond the file", withOffset(plain, 5, 999999), true},
        {"a wrong offset and an object twice, of which the table has the first",
         withOffset(followedBy("4 0 obj\n" + old, plain), 5, 3), false},
        {"an offset of 0", withOffset(withObject("(text)"), 7, 0), false},
        {"an offset of 0 for what nothing refers to",
         withOffset(Sketch{{"", "", ""}, "", {{"odd", "(text)"}}}.built(), 7, 0), true},
        {"a wrong size", replaced(plain, "/Size 10", "/Size 99"), true},
        {"hybrid references", support::asHybridFile(plain), true},
        {"encrypted and a start that leads nowhere",
         replaced(encrypted, "startxref\n", "startxref\n9"), false}};
}

struct Saved {
    std::string error;
    std::string pdf;
};

Saved savedWithoutPage2(const std::string& pdf, saving::Way way, bool linearize)
{
    auto document = support::opened(pdf);
    EXPECT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    saving::SaveOptions options = support::keeping(way);
    options.linearize = linearize;
    const auto saved = saving::toString(*document, options);
    return saved ? Saved{"", *saved} : Saved{saved.error().text, ""};
}

Warnings sortedWarnings(const std::string& pdf)
{
    auto document = support::opened(pdf);
    Warnings warnings = document->warnings();
    std::sort(warnings.begin(), warnings.end());
    return warnings;
}

TEST(ToldDamage, ComesOutAsWithoutAnIndex)
{
    for (const DamagedFile& row : damagedFiles()) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(row.pdf);
        EXPECT_EQ(document->index() != nullptr, row.hasIndex) << document->indexRefusal();
        EXPECT_EQ(document->indexRefusal().empty(), row.hasIndex);
        EXPECT_EQ(support::indexDisagreement(*document), "");

        const std::string unfit = " " + row.pdf;
        ASSERT_EQ(support::opened(unfit)->index(), nullptr);
        EXPECT_EQ(sortedWarnings(row.pdf), sortedWarnings(unfit));
        for (const bool linearize : {false, true}) {
            const Saved other = savedWithoutPage2(unfit, saving::Way::CopyUnchanged, linearize);
            for (const auto way : {saving::Way::CopyUnchanged, saving::Way::Rewrite}) {
                const Saved saved = savedWithoutPage2(row.pdf, way, linearize);
                EXPECT_EQ(saved.error, other.error);
                if (!saved.error.empty() || !other.error.empty()) {
                    continue;
                }
                EXPECT_EQ(support::firstDifference(saved.pdf, other.pdf), "");
                if (way == saving::Way::CopyUnchanged) {
                    EXPECT_EQ(support::problems(saved.pdf).empty(),
                              support::problems(other.pdf).empty());
                }
            }
        }
    }
}

TEST(ToldDamage, ThatLostContentIsRefused)
{
    for (const char* lost : {"null", "(text)"}) {
        const std::string pdf = Sketch{{"/Contents @c", "", ""}, "", {{"c", lost}}}.built();
        EXPECT_EQ(savedWithoutPage2(pdf, saving::Way::CopyUnchanged, false).error, "") << lost;
        EXPECT_NE(savedWithoutPage2(withoutTable(pdf), saving::Way::CopyUnchanged, false)
                      .error.find("the content of page 1 cannot be recovered"),
                  std::string::npos)
            << lost;
    }
}

} // namespace
