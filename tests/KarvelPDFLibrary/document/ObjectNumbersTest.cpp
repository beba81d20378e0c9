#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

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

void PrintTo(const Numbers& value, std::ostream* out)
{
    *out << value.name;
}

class ObjectNumbers : public testing::TestWithParam<Numbers> {};

TEST_P(ObjectNumbers, NeverCostMoreThanTheDocument)
{
    support::PagedDocument file(2);
    file.catalogEntries = GetParam().inCatalog;
    const std::string first = support::PdfBuilder::reference(file.pages[0]);
    if (GetParam().needsNewObject) {
        file.builder.set(file.root, "<< /Type /Pages /Count 3 /Kids [" + first + " " +
                                        support::PdfBuilder::reference(file.pages[1]) + " " +
                                        first + "] >>");
    }
    std::string pdf = file.build();
    if (GetParam().insteadOfTable != nullptr) {
        const std::size_t table = pdf.find("xref\n");
        pdf.replace(table, pdf.find("trailer", table) - table, GetParam().insteadOfTable);
    }
    const auto document = Document::load(io::fromMemory(pdf), {});
    if (GetParam().error != nullptr) {
        ASSERT_FALSE(document.has_value());
        EXPECT_THAT(document.error().text, testing::HasSubstr(GetParam().error));
        EXPECT_EQ(document.error().code, ErrorCode::NotPdf);
        return;
    }
    ASSERT_TRUE(document.has_value()) << document.error().text;
    ASSERT_TRUE(pages::deletePages(**document, {1, 1}).has_value());
    const auto saved = saving::toString(**document, {});
    ASSERT_TRUE(saved.has_value()) << saved.error().text;
    EXPECT_EQ(support::pageTexts(*saved), support::pagesNamed({2}));
}

INSTANTIATE_TEST_SUITE_P(
    Document, ObjectNumbers,
    testing::Values(Numbers{"high_reference", "/X 99999999 0 R", false, nullptr, nullptr},
                                Numbers{"high_reference_where_an_object_is_added", "/X 99999999 0 R", true,
                            nullptr, "it refers to object 99999999"},
                    Numbers{"high_reference_without_a_table", "/X 99999999 0 R", false, "",
                            "it speaks of object 99999999"},
                    Numbers{"high_object_without_a_table", "", false,
                            "99999999 0 obj\n(x)\nendobj\n", "it speaks of object 99999999"},
                    Numbers{"gap_in_the_numbers", "", false, "8000000 0 obj\n(x)\nendobj\n",
                            nullptr}),
    [](const auto& info) { return info.param.name; });

} // namespace
