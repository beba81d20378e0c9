#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> loaded()
{
    const std::string path = PDF_LIBRARY;
    return std::make_unique<KarvelPDFLibraryCPDylibCPP1311>(std::wstring(path.begin(), path.end()));
}

TEST(PdfLibrary, HasEveryFunctionThatTheBindingNeeds)
{
    const auto library = loaded();
    EXPECT_TRUE(library->LibraryLoaded());
    EXPECT_FALSE(library->LibraryVersion().empty());
}

TEST(PdfLibrary, KeepsTheErrorsOfTwoBindingsApart)
{
    const auto first = loaded();
    const auto second = loaded();
    EXPECT_EQ(first->PageCount(), 0);
    EXPECT_NE(first->LastErrorCode(), 0);
    EXPECT_FALSE(first->LastErrorText().empty());
    EXPECT_EQ(second->LastErrorCode(), 0);
    EXPECT_EQ(second->LastErrorText(), std::wstring());
}

} // namespace
