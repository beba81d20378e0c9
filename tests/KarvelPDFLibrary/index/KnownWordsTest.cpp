#include "KarvelPDFLibrary/index/KnownWords.h"

#include <gtest/gtest.h>

namespace karvel::index {
namespace {

TEST(KnownWords, FindThoseAndNoOthers)
{
    // The middle letters of three of them are all that tells them apart.
    static constexpr KnownWords<int, 6> words(
        {{{"Font", 1}, {"Fact", 2}, {"Fist", 3}, {"A", 4}, {"AA", 5}, {"Annots", 6}}});
    for (const auto& [text, meaning] :
         {std::pair("Font", 1), std::pair("Fact", 2), std::pair("Fist", 3), std::pair("A", 4),
          std::pair("AA", 5), std::pair("Annots", 6)}) {
        ASSERT_NE(words.find(text), nullptr) << text;
        EXPECT_EQ(*words.find(text), meaning) << text;
    }
    for (const char* text : {"", "F", "Fast", "font", "Fonts", "AAA", "Annotss", "\xff\xfe"}) {
        EXPECT_EQ(words.find(text), nullptr) << text;
    }
}

} // namespace
} // namespace karvel::index
