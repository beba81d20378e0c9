#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>

namespace {

using namespace karvel;

/// Numbers cost memory where tables go by them: a document of a few objects that speaks of very
/// high ones is refused before that.
struct Numbers {
    const char* name;
    const char* inCatalog;

    /// Whether the first page is used twice, so that it needs a copy with a number of its own.
    bool needsNewObject;

    /// Put in place of the cross-reference table; null leaves it.
    const char* insteadOfTable;

    /// A part of the error; null when the document can be worked with.
    const char* error;
};

TEST(ObjectNumbers, NeverCostMoreThanTheDocument)
{
    const Numbers rows[] = {
        {"high reference", "/X 99999999 0 R", false, nullptr, nullptr},
        {"high reference where an object is added", "/X 99999999 0 R", true, nullptr,
         "it refers to object 99999999"},
        {"high reference without a table", "/X 99999999 0 R", false, "",
         "it speaks of object 99999999"},
        {"high object without a table", "", false, "99999999 0 obj\n(x)\nendobj\n",
         "it speaks of object 99999999"},
        {"number beyond 64 bits", "", false, "3 18446744073709551616 obj\n(x)\nendobj\n",
         "damaged beyond repair"},
        {"gap in the numbers", "", false, "8000000 0 obj\n(x)\nendobj\n", nullptr}};
    for (const Numbers& row : rows) {
        SCOPED_TRACE(row.name);
        std::string pdf =
            support::Sketch{{"", ""},
                            row.inCatalog,
                            {},
                            row.needsNewObject ? "/Type /Pages /Count 3 /Kids [@p1 @p2 @p1]" : ""}
                .built();
        if (row.insteadOfTable != nullptr) {
            const std::size_t table = pdf.find("xref\n");
            pdf.replace(table, pdf.find("trailer", table) - table, row.insteadOfTable);
        }
        const auto document = Document::load(io::fromMemory(pdf), {});
        if (row.error != nullptr) {
            ASSERT_FALSE(document.has_value());
            EXPECT_THAT(document.error().text, testing::HasSubstr(row.error));
            EXPECT_EQ(document.error().code, ErrorCode::NotPdf);
            continue;
        }
        ASSERT_TRUE(document.has_value()) << document.error().text;
        ASSERT_TRUE(pages::deletePages(**document, {1, 1}).has_value());
        const auto saved = saving::toString(**document, {});
        ASSERT_TRUE(saved.has_value()) << saved.error().text;
        EXPECT_EQ(support::pageTexts(*saved), support::pagesNamed({2}));
    }
}

} // namespace
