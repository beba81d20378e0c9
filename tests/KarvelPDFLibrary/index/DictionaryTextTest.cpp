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

class ChangingADictionary : public testing::TestWithParam<Case> {};

TEST_P(ChangingADictionary, LeavesTheRestAsItIsWritten)
{
    const std::string text = GetParam().text + " endobj";
    const auto dictionary = DictionaryText::read(text);
    ASSERT_TRUE(dictionary.has_value());
    EXPECT_EQ(dictionary->with(GetParam().changes), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    DictionaryText, ChangingADictionary,
    testing::Values(
        Case{"nothing", "<</A 1>>", {}, "<</A 1>>"},
        Case{"a_new_value", "<</A 1/B[2]/C 3>>", {{"B", "7"}}, "<</A 1/B 7/C 3>>"},
        Case{"a_key_that_was_not_there", "<< /A 1 >>", {{"B", "2"}}, "<< /B 2 /A 1 >>"},
        Case{"a_key_goes", "<< /A 1 /B (b) /C 3 >>", {{"B", ""}}, "<< /A 1 /C 3 >>"},
        Case{"the_first_goes", "<</A/B/C/D>>", {{"A", ""}}, "<</C/D>>"},
        Case{"the_last_goes", "<</A/B/C 4 0 R>>", {{"C", ""}}, "<</A/B>>"},
        Case{"all_go", "<< /A 1 /B 2 >>", {{"B", ""}, {"A", ""}}, "<< >>"},
        Case{
            "one_goes_after_one_that_changes", "<</A 1/B 2>>", {{"A", "5"}, {"B", ""}}, "<</A 5>>"},
        Case{"one_goes_that_was_not_there", "<</A 1>>", {{"B", ""}}, "<</A 1>>"},
        Case{"a_key_of_an_inner_dictionary_is_another",
             "<</A<</B 1>>/B 2>>",
             {{"B", ""}},
             "<</A<</B 1>>>>"},
        Case{"an_escaped_key", "<</#41 1/B 2>>", {{"A", ""}}, "<</B 2>>"},
        Case{"comments", "<</A 1 % one\n/B 2 % two\n/C 3>>", {{"B", ""}}, "<</A 1 % two\n/C 3>>"}),
    [](const auto& info) { return info.param.name; });

TEST(DictionaryText, IsNotReadWhereAKeyStandsTwice)
{
    EXPECT_FALSE(DictionaryText::read("<</A 1/B 2/#41 3>> endobj").has_value());
}

} // namespace
