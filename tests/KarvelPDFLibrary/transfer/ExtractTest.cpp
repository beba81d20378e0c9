#include "KarvelPDFLibrary/transfer/Extract.h"

#include "KarvelPDFLibrary/pages/Arrange.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/security/Encryption.h"
#include "KarvelPDFLibrary/transfer/Frozen.h"
#include "tests/KarvelPDFLibrary/transfer/Told.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::transfer;

TEST(Extract, HoldsTheListedPagesInTheirOrder)
{
    auto document = support::opened(support::documentOfPages(5));
    for (const std::vector<int>& list : std::vector<std::vector<int>>{
             {3}, {5, 1}, {1, 2, 3, 4, 5}, {2, 2, 4, 2}, {5, 4, 3, 2, 1, 1}}) {
        auto part = extract(*document, list);
        ASSERT_TRUE(part.has_value()) << part.error().text;
        EXPECT_EQ(support::pageTexts(support::saved(**part)), support::pagesNamed(list));
    }
    EXPECT_FALSE(document->isModified());
    EXPECT_EQ(extract(*document, {6}).error().code, ErrorCode::BadPageList);
    EXPECT_EQ(extract(*document, std::vector<int>(2000, 1)).error().code, ErrorCode::OutOfMemory);
}

TEST(Extract, TakesTheDocumentAsItIsNow)
{
    auto document = support::opened(support::documentOfPages(5));
    ASSERT_TRUE(pages::deletePages(*document, std::vector{1}).has_value());
    auto part = extract(*document, {1, 2});
    EXPECT_EQ(support::pageTexts(support::saved(**part)), support::pagesNamed({2, 3}));
    EXPECT_EQ(support::pageTexts(support::saved(*document)), support::pagesNamed({2, 3, 4, 5}));
}

TEST(Duplicate, SavesAsTheDocumentWould)
{
    const std::string pdf =
        support::rewritten(support::documentOfPages(2), "--encrypt user owner 256 --");
    for (const bool changed : {false, true}) {
        auto document = support::opened(pdf, "user");
        if (changed) {
            ASSERT_TRUE(pages::deletePages(*document, std::vector{1}).has_value());
        }
        auto copy = duplicate(*document);
        ASSERT_TRUE(copy.has_value()) << copy.error().text;
        EXPECT_EQ(security::accessLevel(**copy), security::AccessLevel::User);
        const std::string saved = saving::toString(**copy, {}).value_or("");
        EXPECT_EQ(support::pageTexts(saved, "owner").size(), changed ? 1U : 2U);
        EXPECT_NE(support::problems(saved, ""), "") << "must be encrypted";
        ASSERT_TRUE(pages::reversePages(**copy, {1, (*copy)->pageCount()}).has_value());
        EXPECT_EQ(document->isModified(), changed) << "the copy is a document of its own";
    }
}

TEST(Duplicate, OfANewDocumentWorks)
{
    auto document = Document::create().value();
    auto copy = duplicate(*document);
    ASSERT_TRUE(copy.has_value());
    ASSERT_TRUE(security::encrypt(*document, {"o", "u"}).has_value());
    auto encrypted = duplicate(*document);
    ASSERT_TRUE(encrypted.has_value());
    EXPECT_TRUE(security::isEncrypted(**encrypted));
    EXPECT_FALSE(security::isEncrypted(**copy));
}

} // namespace
