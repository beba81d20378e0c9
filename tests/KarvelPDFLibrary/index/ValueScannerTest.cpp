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

constexpr ScanResult good = ScanResult::Complete;
constexpr ScanResult bad = ScanResult::Malformed;

const Case cases[] = {
    {"number", "42", good, {}, {}},
    {"reference", "12 3 R", good, {"12.3"}, {}},
    {"dictionary",
     "<</A 1/B [2 0 R]/C<</D 3 0 R>>>>",
     good,
     {"2.0", "3.0"},
     {"A= 1", "B= [2 0 R]", "C=<</D 3 0 R>>"}},
    {"numbers that are no reference", "[1 2 3 R5 0 R]", bad, {}, {}},
    {"numbers before a reference", "[1 2 3 0 R 4]", good, {"3.0"}, {}},
    {"negative and real numbers", "[-1 0 +2 .5 4. 6 0 R]", good, {"6.0"}, {}},
    {"reference over lines and comments", "[7\r\n0 % 8 0 R\n R]", good, {"7.0"}, {}},
    {"strings with anything in them", "[(5 0 R (nested) \\) >> endobj) <0A 0B>]", good, {}, {}},
    {"comment with a delimiter", "<< % >>\n/A 1 >>", good, {}, {"A= 1"}},
    {"escaped name", "<< /T#79pe /X >>", good, {}, {"Type= /X"}},
    {"keywords", "<< /A true /B false /C null >>", good, {}, {"A= true", "B= false", "C= null"}},
    {"key without value", "<< /A >>", bad, {}, {}},
    {"value without key", "<< 1 /A >>", bad, {}, {}},
    {"wrong closing", "[ >>", bad, {}, {}},
    {"lonely brace", "[ } ]", bad, {}, {}},
    {"unknown word", "<< /A yes >>", bad, {}, {}},
    {"letters in hexadecimal", "<0g>", bad, {}, {}},
    {"nested beyond reason", std::string(300, '[') + std::string(300, ']'), bad, {}, {}},
};

TEST(Scanning, FindsReferencesAndOutermostEntries)
{
    for (const Case& given : cases) {
        SCOPED_TRACE(given.name);
        const std::string text = given.text + " endobj ";
        Recorder found;
        ValueScanner scanner(text, found);
        ASSERT_EQ(scanner.scan(0), given.result);
        if (given.result == ScanResult::Complete) {
            EXPECT_EQ(scanner.position(), given.text.size());
            EXPECT_EQ(found.references, given.references);
            EXPECT_EQ(found.entries, given.entries);
        }
    }
}

TEST(Scanning, AsksForMoreWhereverTheTextIsCut)
{
    for (const Case& given : cases) {
        SCOPED_TRACE(given.name);
        for (std::size_t length = 0; length < given.text.size(); ++length) {
            Recorder ignored;
            const ScanResult result =
                ValueScanner(std::string_view(given.text).substr(0, length), ignored).scan(0);
            if (given.result == ScanResult::Complete) {
                EXPECT_EQ(result, ScanResult::NeedsMore) << "cut at " << length;
            } else {
                EXPECT_NE(result, ScanResult::Complete) << "cut at " << length;
            }
        }
    }
}

struct ReferenceCase {
    const char* name;
    std::string text;
    std::string expected; // "" for none
};

TEST(Reading, AReferenceTakesNothingElseForOne)
{
    const ReferenceCase rows[] = {{"alone", "12 3 R", "12.3"},
                                  {"after space and a comment", " % 5\n12 0\nR/A", "12.0"},
                                  {"first of many", "1 0 R 2 0 R", "1.0"},
                                  {"a number", "12", ""},
                                  {"numbers", "12 0 3", ""},
                                  {"a longer word", "12 0 Rx", ""},
                                  {"a real number", "12 0.5 R", ""},
                                  {"a name", "/A 12 0 R", ""},
                                  {"beyond numbers of objects", "5000000000 0 R", ""},
                                  {"nothing", "", ""}};
    for (const ReferenceCase& row : rows) {
        SCOPED_TRACE(row.name);
        const auto reference = readReference(row.text);
        EXPECT_EQ(reference ? std::to_string(reference->object) + "." +
                                  std::to_string(reference->generation)
                            : "",
                  row.expected);
    }
}

} // namespace
