#include "KarvelPDFLibrary/saving/VerbatimWriter.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SameDocument.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace karvel;
using namespace karvel::saving;
using support::PdfBuilder;

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

TEST(VerbatimWriter, KeepsEveryByteOfObjectsThatStay)
{
    support::PagedDocument file(3);
    const std::string odd =
        "<< /Odd   (spacing \\050 kept) % and comments\n /Real 1.500000 /Name /A#42 >>";
    const int object = file.builder.add(odd);
    file.catalogEntries = "/Odd " + PdfBuilder::reference(object);
    EXPECT_NE(savedWithout(file.build(), {{2, 1}}, Way::CopyUnchanged).find(odd),
              std::string::npos);
}

// --- files that are fit for copying, and files that are not ---

struct Oddity {
    const char* name;
    std::string (*make)();
    bool copied;
};

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

/// A document with an object of a text in its catalog. Same-length replacements keep offsets right.
std::string withObject(const std::string& body)
{
    support::PagedDocument file(3);
    const int object = file.builder.add(body);
    file.catalogEntries = "/Odd " + PdfBuilder::reference(object);
    return file.build();
}

/// An incremental update in which page 1 gets a new content stream.
std::string updated()
{
    std::string file = support::documentOfPages(3);
    const std::string old = file.substr(file.find("startxref\n") + 10);
    const std::size_t object = file.size();
    const std::string content = support::showText("Page 1");
    file += "4 0 obj\n<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content +
            "\nendstream\nendobj\n";
    const std::size_t start = file.size();
    char row[32];
    std::snprintf(row, sizeof row, "%010zu 00000 n \n", object);
    return file + "xref\n4 1\n" + row + "trailer\n<< /Size 10 /Root 1 0 R /Prev " +
           old.substr(0, old.find('\n')) + " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
}

/// A cross-reference table in which the entry of one object says where another one is.
std::string withEntryOf(int number, std::size_t offset, const std::string& pdf)
{
    char row[32];
    std::snprintf(row, sizeof row, "%010zu 00000 n \n", offset);
    const std::size_t table = pdf.find("xref\n0 ");
    const std::size_t rows = pdf.find('\n', table + 5) + 1;
    std::string changed = pdf;
    return changed.replace(rows + 20 * static_cast<std::size_t>(number), 20, row);
}

/// A file of the hybrid kind: the table is for old readers, and a stream that the trailer names
/// says where one more object is, inside an object stream.
std::string hybridFile()
{
    support::PagedDocument file(3);
    const int members = file.builder.addStream("12 0 (in a stream)", "/Type /ObjStm /N 1 /First 5");
    const int references = file.builder.reserve();
    EXPECT_EQ(references, 11);
    const int hidden = file.builder.reserve();
    file.catalogEntries = "/Odd " + PdfBuilder::reference(hidden);
    std::string row;
    for (const int byte : {2, 0, members, 0}) {
        row += static_cast<char>(byte);
    }
    file.builder.setStream(references, row, "/Type /XRef /Size 13 /W [1 2 1] /Index [12 1]");
    file.builder.setTrailerEntries("/XRefStm 0000000000");
    std::string pdf = file.build();
    char offset[32];
    std::snprintf(offset, sizeof offset, "%010zu", pdf.find("11 0 obj"));
    return replaced(pdf, "/XRefStm 0000000000", std::string("/XRefStm ") + offset);
}

class Oddities : public testing::TestWithParam<Oddity> {};

TEST_P(Oddities, AreCopiedOrRewrittenButNeverWrong)
{
    const std::string pdf = GetParam().make();
    const std::string why = refusal(pdf);
    EXPECT_EQ(why.empty(), GetParam().copied) << why;
    const std::string bytes = savedWithout(pdf, {{2, 1}}, Way::CopyUnchanged);
    EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed({1, 3}));
    EXPECT_EQ(support::problems(bytes), "");
    EXPECT_EQ(support::firstDifference(bytes, savedWithout(pdf, {{2, 1}}, Way::Rewrite)), "");
}

INSTANTIATE_TEST_SUITE_P(
    VerbatimWriter, Oddities,
    testing::Values(
        Oddity{"endobj_in_a_string", [] { return withObject("(endobj 9 0 obj)"); }, true},
        Oddity{"endobj_in_a_comment", [] { return withObject("<< /A 1 % endobj\n>>"); }, true},
        Oddity{"number_as_object", [] { return withObject("5"); }, true},
        Oddity{"entry_for_an_object_that_is_not_there",
               [] { return replaced(withObject("5"), "10 0 obj\n5\nendobj", "% nothing here   "); },
               false},
        Oddity{"reference_to_nothing", [] { return withObject("[99 0 R 3 7 R]"); }, true},
        Oddity{"generation_above_zero",
               [] {
                   support::PagedDocument file(3);
                   std::string pdf = file.build();
                   pdf = replaced(pdf, "4 0 obj", "4 7 obj");
                   const std::size_t row = pdf.find("xref\n0 ") + 11 + 20 * 4;
                   pdf.replace(pdf.find("00000 n", row), 5, "00007");
                   return replaced(pdf, "/Contents 4 0 R", "/Contents 4 7 R");
               },
               true},
        Oddity{"offset_off_by_one",
               [] {
                   const std::string pdf = support::documentOfPages(3);
                   const auto at = static_cast<long>(pdf.find("\n5 0 obj")) + 1;
                   char right[32];
                   char wrong[32];
                   std::snprintf(right, sizeof right, "%010ld", at);
                   std::snprintf(wrong, sizeof wrong, "%010ld", at - 1);
                   return replaced(pdf, right, wrong);
               },
               false},
        Oddity{"indirect_length",
               [] {
                   support::PagedDocument file(3);
                   const std::string content = support::showText("Page 1");
                   const int length = file.builder.add(std::to_string(content.size()));
                   file.builder.set(4, "<< /Length " + PdfBuilder::reference(length) +
                                           " >>\nstream\n" + content + "\nendstream");
                   return file.build();
               },
               true},
        Oddity{
            "wrong_length",
            [] { return replaced(support::documentOfPages(3), "<< /Length 37", "<< /Length 31"); },
            false},
        Oddity{"stream_data_that_says_endstream",
               [] {
                   support::PagedDocument file(3);
                   const int stream =
                       file.builder.addStream("endstream endobj 4 0 obj", "/Odd true");
                   file.catalogEntries = "/Odd " + PdfBuilder::reference(stream);
                   return file.build();
               },
               true},
        Oddity{"junk_before_the_header",
               [] { return "HTTP/1.1 200 OK\r\n\r\n" + support::documentOfPages(3); }, false},
        Oddity{"junk_after_the_end",
               [] { return support::documentOfPages(3) + std::string(300, '\n') + "<html>"; },
               true},
        Oddity{"incremental_update", updated, true},
        Oddity{"two_objects_at_one_offset",
               [] {
                   const std::string pdf = withObject("(text)");
                   return withEntryOf(10, pdf.find("\n3 0 obj") + 1, pdf);
               },
               false},
        Oddity{"object_inside_another_one",
               [] {
                   support::PagedDocument file(3);
                   const int outer = file.builder.addStream("xx 11 0 obj (inner) endobj xx");
                   const int inner = file.builder.add("(inner)");
                   file.catalogEntries = "/Odd [" + PdfBuilder::reference(outer) + " " +
                                         PdfBuilder::reference(inner) + "]";
                   const std::string pdf = file.build();
                   return withEntryOf(inner, pdf.find("11 0 obj (inner)"), pdf);
               },
               false},
        Oddity{"hybrid_references", hybridFile, false},
        Oddity{"missing_endobj",
               [] {
                   return replaced(support::documentOfPages(3), "endobj\n5 0 obj",
                                   "      \n5 0 obj");
               },
               false}),
    [](const auto& info) { return info.param.name; });

TEST(VerbatimWriter, DropsEarlierRevisions)
{
    const std::string bytes = savedWithout(updated(), {{2, 1}}, Way::CopyUnchanged);
    std::size_t contents = 0;
    for (std::size_t at = 0; (at = bytes.find("(Page 1)", at)) != std::string::npos; ++at) {
        ++contents;
    }
    EXPECT_EQ(contents, 1U);
    EXPECT_EQ(bytes.find("/Prev"), std::string::npos);
}

} // namespace
