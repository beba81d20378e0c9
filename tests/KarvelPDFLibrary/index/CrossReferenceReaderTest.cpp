#include "KarvelPDFLibrary/index/CrossReferenceReader.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "tests/KarvelPDFLibrary/deletion/ResidueDocument.h"
#include "tests/support/IndexAgreement.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

/// What is read without libqpdf is what libqpdf reads, and whatever is odd is left to it.
namespace {

using namespace karvel;
using support::PdfBuilder;
using support::replaced;

struct File {
    const char* name;
    std::string pdf;
    bool isRead;
};

const std::string plain = support::documentOfPages(3);
const std::string packed = support::rewritten(plain, "--object-streams=generate");

/// A file with another newest section, whose trailer names the one before. `rows` are those of a
/// table, without "xref".
std::string withSection(const std::string& pdf, const std::string& rows,
                        const std::string& entries = "/Size 10")
{
    const std::size_t last = pdf.rfind("startxref\n") + 10;
    const std::string previous = pdf.substr(last, pdf.find('\n', last) - last);
    const std::size_t root = pdf.rfind("/Root ");
    return pdf + "xref\n" + rows + "trailer\n<< " +
           pdf.substr(root, pdf.find('R', root + 6) + 1 - root) + " " + entries + " /Prev " +
           previous + " >>\nstartxref\n" + std::to_string(pdf.size()) + "\n%%EOF\n";
}

/// Its newest section is a stream of what `data` says, in fields of 1, 2 and 1 bytes.
std::string withStream(const std::string& pdf, const std::string& entries, const std::string& data)
{
    const std::size_t last = pdf.rfind("startxref\n") + 10;
    const std::string previous = pdf.substr(last, pdf.find('\n', last) - last);
    return pdf + "9 0 obj\n<< /Type /XRef /W [1 2 1] /Root 1 0 R /Prev " + previous + " " +
           entries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
           "\nendstream\nendobj\nstartxref\n" + std::to_string(pdf.size()) + "\n%%EOF\n";
}

std::string entryAt(std::size_t offset)
{
    return {1, static_cast<char>(offset >> 8U), static_cast<char>(offset), 0};
}

/// A stream whose data go on to the last byte but one of the file.
std::string streamToTheEnd()
{
    const std::string end = "\nstartxref\n" + std::to_string(plain.size()) + "\n%%EOF\n";
    const std::size_t count = (end.size() + 2) / 4;
    const std::string data(4 * count + 1 - end.size(), '\0');
    return plain + "9 0 obj\n<< /Type /XRef /W [1 2 1] /Root 1 0 R /Size 10 /Index [0 " +
           std::to_string(count) + "] /Length " + std::to_string(4 * count) + " >>\nstream\n" +
           data + end;
}

std::string loop()
{
    const std::string two = withSection(plain, "0 1\n0000000000 65535 f \n");
    return replaced(two, "/Root 1 0 R  >>",
                    "/Root 1 0 R /Prev " + std::to_string(plain.size()) + " >>");
}

std::vector<File> files()
{
    const std::string rich = support::residueDocument(2).built();
    const std::string freed = "0000000000 00001 f \n";
    const std::string row = PdfBuilder::tableRow(plain.find("9 0 obj"));
    const std::string itself = entryAt(plain.size());
    return {
        {"a table", plain, true},
        {"a table of a document with everything", rich, true},
        {"a cross-reference stream", packed, true},
        {"tables of a linearised file", support::rewritten(rich, "--linearize"), true},
        {"streams of a linearised file",
         support::rewritten(rich, "--linearize --object-streams=generate"), true},
        {"a later revision", support::withLaterRevision(rich, 2), true},
        {"a stream beside the table", support::asHybridFile(plain), true},
        {"a later section that frees an object", withSection(plain, "9 1\n" + freed), true},
        {"a later section that frees it under its generation",
         withSection(plain, "9 1\n0000000000 00000 f \n"), true},
        {"an object that is used anew under its old generation",
         withSection(withSection(plain, "9 1\n" + freed), "9 1\n" + row), true},
        {"an object that is used anew under another one",
         withSection(withSection(plain, "9 1\n" + freed),
                     "9 1\n" + replaced(row, " 00000 ", " 00001 ")),
         false},
        {"lines that end otherwise",
         withSection(plain, "0 1\r\n0000000000 65535 f\r\n9 1 \n0000000000 00001 f \r"), true},
        {"a section of nothing", withSection(plain, "0 0\n"), true},
        {"a stream in a later revision", withStream(plain, "/Size 10 /Index [9 1]", itself), true},
        {"a stream that frees an object",
         withStream(plain, "/Size 10 /Index [8 2]", std::string(4, '\0') + itself), true},
        {"a text in which the white space ends the file", plain + "\n \r\n", true},
        {"a file that begins late", " " + plain, false},
        {"a file that goes on", plain + "more", false},
        {"a start that leads nowhere", replaced(plain, "startxref\n", "startxref\n9"), false},
        {"a start of 0",
         replaced(plain, plain.substr(plain.rfind("startxref")), "startxref\n0\n%%EOF\n"), false},
        {"an encrypted file", support::rewritten(plain, "--encrypt '' o 256 --"), false},
        {"a wrong size", replaced(plain, "/Size 10", "/Size 11"), false},
        {"a root that is no reference", replaced(plain, "/Root 1 0 R", "/Root (1 0)"), false},
        {"a key that stands twice", replaced(plain, "/Root", "/Root 1 0 R /Root"), false},
        {"a name that is written otherwise", replaced(plain, "/Root", "/Kind /A#42 /Root"), false},
        {"sections that go round", loop(), false},
        {"a section before the file",
         replaced(withSection(plain, "0 0\n"), "/Size 10 /Prev", "/Size 10 /Prev -"), false},
        {"more entries than there are", replaced(plain, "xref\n0 10\n", "xref\n0 99\n"), false},
        {"fewer entries than there are", replaced(plain, "xref\n0 10\n", "xref\n0 9\n"), false},
        {"a number that is too high for the file",
         withSection(plain, "9999999 1\n" + freed, "/Size 10000000"), false},
        {"a row that is too short", withSection(plain, "9 1\n0000000000 0001 f  \n"), false},
        {"a row of another kind", withSection(plain, "9 1\n0000000000 00001 x \n"), false},
        {"an object of number 0 that is used", withSection(plain, "0 1\n" + row), false},
        {"white space before the table",
         replaced(plain, "xref\n0 10", " xref\n0 10").substr(0, plain.size() + 1), false},
        {"a stream of too little", withStream(plain, "/Size 10 /Index [8 2]", itself), false},
        {"a stream of too much", withStream(plain, "/Size 10 /Index [9 1]", itself + itself),
         false},
        {"a stream that says more than a file of its size can hold",
         withStream(plain, "/Size 99999999", itself), false},
        {"a stream with an entry of another kind",
         withStream(plain, "/Size 10 /Index [8 2]", std::string(4, '\3') + itself), false},
        {"a stream with a range of nothing", withStream(plain, "/Size 10 /Index [5 0 9 1]", itself),
         false},
        {"a stream whose fields take no room",
         replaced(withStream(plain, "/Size 10", itself), "/W [1 2 1]", "/W [0 0 0]"), false},
        {"a stream that does not name itself",
         withStream(plain, "/Size 10 /Index [8 1]", std::string(4, '\0')), false},
        {"a stream that has another object under its number",
         withStream(plain, "/Size 10 /Index [9 1]", entryAt(plain.find("9 0 obj"))), false},
        {"a stream of an odd number of ranges", withStream(plain, "/Size 10 /Index [9]", itself),
         false},
        {"a stream that ends with the file", streamToTheEnd(), false},
        {"a stream whose length is elsewhere",
         replaced(withStream(plain, "/Size 10 /Index [9 1]", itself), "/Length 4 ",
                  "/Length 8 0 R "),
         false},
        {"a stream that can't be decoded",
         withStream(plain, "/Size 10 /Index [9 1] /Filter /FlateDecode", itself), false},
    };
}

TEST(ReadingCrossReferences, GivesWhatLibqpdfReadsOrNothing)
{
    for (const File& file : files()) {
        SCOPED_TRACE(file.name);
        const auto read = index::readCrossReferences(*io::fromMemory(file.pdf));
        EXPECT_EQ(read.has_value(), file.isRead);
        EXPECT_EQ(support::crossReferenceDisagreement(file.pdf), "");
    }
}

TEST(ReadingCrossReferences, LeavesOutFreeNumbersAtTheEnd)
{
    const std::string pdf = withSection(plain, "10 1\n0000000000 00001 f \n", "/Size 11");
    EXPECT_TRUE(index::readCrossReferences(*io::fromMemory(pdf)).has_value());
    EXPECT_EQ(support::opened(pdf)->index()->size(), support::opened(plain)->index()->size());
}

TEST(ReadingCrossReferences, SufficesForDocumentsUntilSomethingNeedsTheirObjects)
{
    struct Row {
        const char* name;
        std::string pdf;
        bool sufficesToRead;
        bool sufficesToSave;
        const char* rotation;
    };
    const std::string deflated =
        support::rewritten(plain, "--compress-streams=y --object-streams=disable");
    const Row rows[] = {
        {"a font that pages share", plain, true, true, "null"},
        {"the same with compressed content", deflated, true, true, "null"},
        {"what pages inherit", support::Sketch{{"", "", ""}, "", {}, "/Rotate 90"}.built(), true,
         true, "90"},
        {"null instead of what pages inherit",
         support::Sketch{{"", "", ""}, "", {}, "/Rotate null"}.built(), false, false, "null"},
        {"additional actions of the document",
         support::Sketch{{"", "", ""}, "/AA << >>", {}}.built(), true, false, "null"},
        {"a catalog in an object stream", packed, false, false, "null"},
        {"a damaged file", replaced(plain, "startxref\n", "startxref\n9"), false, false, "null"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(row.pdf);
        EXPECT_EQ(document->roots() != nullptr, row.sufficesToRead);
        ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
        const std::string saved = support::savedIn(*document);
        EXPECT_EQ(document->roots() != nullptr, row.sufficesToSave);
        EXPECT_EQ(support::pageTexts(saved), support::pagesNamed({1, 3}));
        EXPECT_EQ(document->inheritedAttribute(2, "/Rotate").unparse(), row.rotation);
        document->file(); // comes late
        EXPECT_EQ(document->roots(), nullptr);
        EXPECT_EQ(support::pageTexts(support::saved(*document)), support::pagesNamed({1, 3}));
    }
}

} // namespace
