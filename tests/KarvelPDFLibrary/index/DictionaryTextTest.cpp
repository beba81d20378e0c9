#include "KarvelPDFLibrary/index/DictionaryText.h"

#include <gtest/gtest.h>

namespace {

using karvel::index::DictionaryText;

struct Case {
    const char* name;
    std::string text;
    std::vector<DictionaryText::Entry> changes;
    std::string expected;
};

TEST(ChangingADictionary, LeavesTheRestAsItIsWritten)
{
    const Case rows[] = {
        {"nothing", "<</A 1>>", {}, "<</A 1>>"},
        {"a new value", "<</A 1/B[2]/C 3>>", {{"B", "7"}}, "<</A 1/B 7/C 3>>"},
        {"space before it", "\r\n<</A 1>>", {{"A", "2"}}, "\r\n<</A 2>>"},
        {"a key that was not there", "<< /A 1 >>", {{"B", "2"}}, "<< /B 2 /A 1 >>"},
        {"a key goes", "<< /A 1 /B (b) /C 3 >>", {{"B", ""}}, "<< /A 1 /C 3 >>"},
        {"the first goes", "<</A/B/C/D>>", {{"A", ""}}, "<</C/D>>"},
        {"the last goes", "<</A/B/C 4 0 R>>", {{"C", ""}}, "<</A/B>>"},
        {"all go", "<< /A 1 /B 2 >>", {{"B", ""}, {"A", ""}}, "<< >>"},
        {"one goes after one that changes", "<</A 1/B 2>>", {{"A", "5"}, {"B", ""}}, "<</A 5>>"},
        {"one goes that was not there", "<</A 1>>", {{"B", ""}}, "<</A 1>>"},
        {"a key of an inner dictionary is another",
         "<</A<</B 1>>/B 2>>",
         {{"B", ""}},
         "<</A<</B 1>>>>"},
        {"an escaped key", "<</#41 1/B 2>>", {{"A", ""}}, "<</B 2>>"},
        {"comments", "<</A 1 % one\n/B 2 % two\n/C 3>>", {{"B", ""}}, "<</A 1 % two\n/C 3>>"}};
    for (const Case& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string text = row.text + " endobj";
        const auto dictionary = DictionaryText::read(text);
        ASSERT_TRUE(dictionary.has_value());
        EXPECT_EQ(dictionary->with(row.changes), row.expected);
    }
}

TEST(DictionaryText, IsNotReadWhereAKeyStandsTwice)
{
    EXPECT_FALSE(DictionaryText::read("<</A 1/B 2/#41 3>> endobj").has_value());
}

} // namespace
