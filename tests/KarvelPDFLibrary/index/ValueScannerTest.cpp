#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace karvel::index;

struct Recorder final : ScanSink {
    void reference(std::uint32_t object, std::uint32_t generation) override
    {
        references.push_back(std::to_string(object) + "." + std::to_string(generation));
    }
    void beforeEntry(std::string_view) override {}
    void afterEntry(std::string_view key, std::string_view value) override
    {
        entries.push_back(std::string(key) + "=" + std::string(value));
    }
    std::vector<std::string> references;
    std::vector<std::string> entries;
};

struct Case {
    const char* name;
    std::string text; // the value, which "endobj" follows
    ScanResult result;
    std::vector<std::string> references;
    std::vector<std::string> entries;
};

class Scanning : public testing::TestWithParam<Case> {};

TEST_P(Scanning, FindsReferencesAndOutermostEntries)
{
    const std::string text = GetParam().text + " endobj ";
    Recorder found;
    ValueScanner scanner(text, found);
    ASSERT_EQ(scanner.scan(0), GetParam().result);
    if (GetParam().result == ScanResult::Complete) {
        EXPECT_EQ(scanner.position(), GetParam().text.size());
        EXPECT_EQ(found.references, GetParam().references);
        EXPECT_EQ(found.entries, GetParam().entries);
    }
}

TEST_P(Scanning, AsksForMoreWhereverTheTextIsCut)
{
    for (std::size_t length = 0; length < GetParam().text.size(); ++length) {
        Recorder ignored;
        const ScanResult result =
            ValueScanner(std::string_view(GetParam().text).substr(0, length), ignored).scan(0);
        if (GetParam().result == ScanResult::Complete) {
            EXPECT_EQ(result, ScanResult::NeedsMore) << "cut at " << length;
        } else {
            EXPECT_NE(result, ScanResult::Complete) << "cut at " << length;
        }
    }
}

constexpr ScanResult good = ScanResult::Complete;
constexpr ScanResult bad = ScanResult::Malformed;

INSTANTIATE_TEST_SUITE_P(
    ValueScanner, Scanning,
    testing::Values(
        Case{"number", "42", good, {}, {}}, Case{"reference", "12 3 R", good, {"12.3"}, {}},
        Case{"dictionary",
             "<</A 1/B [2 0 R]/C<</D 3 0 R>>>>",
             good,
             {"2.0", "3.0"},
             {"A= 1", "B= [2 0 R]", "C=<</D 3 0 R>>"}},
        Case{"numbers_that_are_no_reference", "[1 2 3 R5 0 R]", bad, {}, {}},
        Case{"numbers_before_a_reference", "[1 2 3 0 R 4]", good, {"3.0"}, {}},
        Case{"negative_and_real_numbers", "[-1 0 +2 .5 4. 6 0 R]", good, {"6.0"}, {}},
        Case{"reference_over_lines_and_comments", "[7\r\n0 % 8 0 R\n R]", good, {"7.0"}, {}},
        Case{"strings_with_anything_in_them",
             "[(5 0 R (nested) \\) >> endobj) <0A 0B>]",
             good,
             {},
             {}},
        Case{"comment_with_a_delimiter", "<< % >>\n/A 1 >>", good, {}, {"A= 1"}},
        Case{"escaped_name", "<< /T#79pe /X >>", good, {}, {"Type= /X"}},
        Case{"keywords",
             "<< /A true /B false /C null >>",
             good,
             {},
             {"A= true", "B= false", "C= null"}},
        Case{"key_without_value", "<< /A >>", bad, {}, {}},
        Case{"value_without_key", "<< 1 /A >>", bad, {}, {}},
        Case{"wrong_closing", "[ >>", bad, {}, {}}, Case{"lonely_brace", "[ } ]", bad, {}, {}},
        Case{"unknown_word", "<< /A yes >>", bad, {}, {}},
        Case{"letters_in_hexadecimal", "<0g>", bad, {}, {}},
        Case{"nested_beyond_reason", std::string(300, '[') + std::string(300, ']'), bad, {}, {}}),
    [](const auto& info) { return info.param.name; });

struct ReferenceCase {
    const char* name;
    std::string text;
    std::string expected; // "" for none
};

class Reading : public testing::TestWithParam<ReferenceCase> {};

TEST_P(Reading, AReferenceTakesNothingElseForOne)
{
    const auto reference = readReference(GetParam().text);
    EXPECT_EQ(reference
                  ? std::to_string(reference->object) + "." + std::to_string(reference->generation)
                  : "",
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    ValueScanner, Reading,
    testing::Values(ReferenceCase{"alone", "12 3 R", "12.3"},
                    ReferenceCase{"after_space_and_a_comment", " % 5\n12 0\nR/A", "12.0"},
                    ReferenceCase{"first_of_many", "1 0 R 2 0 R", "1.0"},
                    ReferenceCase{"a_number", "12", ""}, ReferenceCase{"numbers", "12 0 3", ""},
                    ReferenceCase{"a_longer_word", "12 0 Rx", ""},
                    ReferenceCase{"a_real_number", "12 0.5 R", ""},
                    ReferenceCase{"a_name", "/A 12 0 R", ""},
                    ReferenceCase{"beyond_numbers_of_objects", "5000000000 0 R", ""},
                    ReferenceCase{"nothing", "", ""}),
    [](const auto& info) { return info.param.name; });

} // namespace
