#include "VantoraHost/core/choices/ChosenPages.h"
#include "VantoraHost/core/choices/Sections.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace vantora;

/// Ten pages: i, ii, iii, then 1 to 5, then; page 4 is landscape, page 9 has no text.
class TenPages : public PageFacts {
public:
    int count() override { return 10; }

    Result<QString> label(int page) override
    {
        static const char* const labels[] = {"i", "ii", "iii", "1",   "2",
                                             "3", "4",  "5",   "A-1", "A-2"};
        return QString(labels[page - 1]);
    }

    Result<ShownSize> size(int page) override
    {
        return page == 4 ? ShownSize{841.89, 595.28} : ShownSize{595.28, 841.89};
    }

    Result<QString> text(int page) override
    {
        ++asked[page];
        if (page == 7) {
            return fail(Reason::LibraryFailed, {}, "page 7 can't be read");
        }
        return QString(page >= 9 ? " \n" : page == 2 ? "Page  intentionally\nleft BLANK" : "words");
    }

    Result<std::vector<OutlineEntry>> outline() override
    {
        return std::vector<OutlineEntry>{
            {1, L"Cover", 1}, {1, L"Text", 4},      {2, L"First  part", 4}, {2, L"Second part", 6},
            {3, L"Notes", 7}, {1, L"Elsewhere", 0}, {1, L"Appendix", 9},    {2, L"Notes", 10}};
    }

    bool hasUnreadableText(int page) override { return page == 10; }

    // Page 3 is blank but for noise, page 6 wholly; page 5 is in colour; 8 looks like 2, 10 too.
    Result<bool> isBlank(int page, bool strictly) override
    {
        return page == 6 || (page == 3 && !strictly);
    }
    Result<double> noise(int page) override { return page == 3 ? 0.4 : 0.0; }
    Result<bool> hasColour(int page) override { return page == 5; }
    Result<int> duplicateOf(int page) override { return page == 8 || page == 10 ? 2 : 0; }

    std::map<int, int> asked; ///< how often the text of a page was asked for
};

std::vector<Choice> choices(const std::vector<const char*>& texts)
{
    std::vector<Choice> read;
    for (const char* text : texts) {
        read.push_back(Choice::of(text).value());
    }
    return read;
}

TEST(ChosenPages, AreThoseThatTheChoicesName)
{
    const struct {
        std::vector<const char*> choose, keep, except;
        const char* range;
    } rows[] = {
        {{"range:2,9-12"}, {}, {}, "2,9-10"},
        {{"first", "last:2"}, {}, {}, "1,9-10"},
        {{"first:99"}, {}, {}, "1-10"},
        {{"odd"}, {}, {"last:3"}, "1,3,5,7"},
        {{"every:4"}, {}, {}, "4,8"},
        {{"every:4+1"}, {}, {}, "1,5,9"},
        {{}, {"first", "last"}, {}, "2-9"},
        {{}, {"first"}, {"last"}, "2-9"},
        {{"label:ii-2"}, {}, {}, "2-5"},
        {{"label:A-2"}, {}, {}, "10"},
        {{"label:5-A-1"}, {}, {}, "8-9"},
        {{"label:2-ii"}, {}, {}, ""},
        {{"label:nowhere"}, {}, {}, ""},
        {{"bookmark:text"}, {}, {}, "4-8"},
        {{"bookmark:first part"}, {}, {}, "4-5"},
        {{"bookmark:Notes"}, {}, {}, "7-8,10"},
        {{"bookmark:appendix"}, {}, {}, "9-10"},
        {{"bookmark:elsewhere"}, {}, {}, ""},
        {{"bookmark:part"}, {}, {}, ""},
        {{"bookmark:/ PART$/"}, {}, {}, "4-8"},
        {{"bookmark:/ PART$/c"}, {}, {}, ""},
        {{"landscape"}, {}, {}, "4"},
        {{"portrait"}, {}, {"range:1-9"}, "10"},
        {{"size:a4"}, {}, {"range:2-3,5-9"}, "1,4,10"},
        {{"size:297x210mm"}, {}, {}, "4"},
        {{"blank"}, {}, {}, "3,6"},
        {{"blank:strict"}, {}, {}, "6"},
        {{"colour"}, {}, {}, "5"},
        {{"grey"}, {}, {"blank"}, "1-2,4,7-10"},
        {{"duplicate"}, {}, {"last"}, "8"},
        {{"text:intentionally left blank"}, {}, {"range:7"}, ""},
    };
    for (const auto& row : rows) {
        TenPages pages;
        const std::string name = row.choose.empty() ? row.keep.front() : row.choose.front();
        const ChoiceSet set = {choices(row.choose), choices(row.keep), choices(row.except)};
        const auto chosen = choosePages(set, pages);
        if (name.rfind("text", 0) == 0) {
            EXPECT_FALSE(chosen) << "a page that can't be read is not passed over";
            continue;
        }
        ASSERT_TRUE(chosen) << name;
        EXPECT_EQ(rangeTextOf(*chosen), row.range) << name;
        std::vector<ChosenPage> ofSpans;
        for (const PageSpan span : {PageSpan{1, 3}, {4, 8}, {9, 9}, {10}, {11}}) {
            const auto part = choosePages(set, pages, span);
            ASSERT_TRUE(part) << name;
            ofSpans.insert(ofSpans.end(), part->begin(), part->end());
        }
        EXPECT_EQ(rangeTextOf(ofSpans), row.range) << name << " span by span";
    }
}

TEST(ChosenPages, OfASpanTakeNoLookAtOthers)
{
    TenPages pages;
    const ChoiceSet set = {choices({"text:words"}), {}, {}};
    ASSERT_TRUE(choosePages(set, pages, {2, 4}));
    EXPECT_EQ(pages.asked, (std::map<int, int>{{2, 1}, {3, 1}, {4, 1}}));
}

TEST(ChosenPages, AreWorthSharingWherePagesAreLookedAtEachByItself)
{
    const struct {
        std::vector<const char*> choose, except;
        bool worth;
    } rows[] = {
        {{"last", "label:i", "size:A4"}, {}, false},
        {{"last", "blank"}, {}, true},
        {{"odd"}, {"text:words"}, true},
        {{"blank"}, {"duplicate"}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(isWorthSharing({choices(row.choose), {}, choices(row.except)}), row.worth)
            << row.choose.back();
    }
}

TEST(Sections, EndWhereTheNextOneBeginsInWhateverOrderTheyStand)
{
    const struct {
        const char* name;
        std::vector<OutlineEntry> outline;
        std::vector<int> pages; ///< of the sections that are called "x"
    } rows[] = {
        {"no outline", {}, {}},
        {"a section up to the end", {{1, L"x", 3}}, {3, 4, 5, 6}},
        {"one that ends where it begins", {{1, L"x", 3}, {1, L"a", 3}}, {}},
        {"one that begins where another does", {{1, L"a", 3}, {1, L"x", 3}, {1, L"b", 5}}, {3, 4}},
        {"one with parts", {{1, L"x", 2}, {2, L"a", 3}, {3, L"b", 4}, {1, L"c", 5}}, {2, 3, 4}},
        {"the last part of a section", {{1, L"a", 1}, {2, L"x", 2}, {1, L"b", 4}}, {2, 3}},
        {"one followed by what leads nowhere", {{1, L"x", 2}, {1, L"a", 0}, {1, L"b", 3}}, {2}},
        {"one followed by what stands before", {{1, L"x", 5}, {1, L"a", 1}}, {5, 6}},
        {"one that ends where one listed before begins", {{1, L"a", 5}, {1, L"x", 3}}, {3, 4}},
        {"one whose parts begin before it", {{1, L"x", 3}, {2, L"a", 2}, {1, L"b", 5}}, {3, 4}},
        {"pages that are not there", {{1, L"x", 7}, {1, L"x", -1}, {1, L"x", 6}}, {6}},
        {"two of a name", {{1, L"x", 1}, {1, L"a", 2}, {1, L"x", 6}}, {1, 6}},
        {"one in another", {{1, L"x", 1}, {2, L"x", 2}, {2, L"a", 3}, {1, L"b", 4}}, {1, 2, 3}},
    };
    for (const auto& row : rows) {
        const auto isWanted = [](const OutlineEntry& entry) { return entry.title == L"x"; };
        EXPECT_EQ(pagesOfSections(row.outline, 6, isWanted), row.pages) << row.name;
    }
}

TEST(ChosenPages, AskOnlyAboutPagesThatAreNotDecidedYet)
{
    TenPages pages;
    const auto chosen = choosePages(
        {choices({"text:/left blank/", "no-text", "range:3-8"}), {}, choices({"first"})}, pages);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(rangeTextOf(*chosen), "2-9");
    EXPECT_EQ(chosen->front().reason, "text:/left blank/");
    EXPECT_EQ(chosen->back().reason, "no-text");
    EXPECT_EQ(pages.asked, (std::map<int, int>{{1, 2}, {2, 1}, {9, 2}, {10, 2}}));
}

TEST(ChosenPages, AreFoundByPatternsWithAndWithoutCase)
{
    for (const auto& [text, range] :
         std::vector<std::pair<const char*, const char*>>{{"text:/LEFT blank$/", "2"},
                                                          {"text:/LEFT blank$/c", ""},
                                                          {"text:/left BLANK$/c", "2"},
                                                          {"text:blank left", ""}}) {
        TenPages pages;
        const auto found = choosePages({choices({text}), {}, {}}, pages);
        EXPECT_FALSE(found) << "page 7";
        class FirstThree : public TenPages {
            int count() override { return 3; }
        } three;
        const auto chosen = choosePages({choices({text}), {}, {}}, three);
        ASSERT_TRUE(chosen) << text;
        EXPECT_EQ(rangeTextOf(*chosen), range) << text;
    }
}

TEST(ChosenPages, TellByHowMuchTheyWereFound)
{
    TenPages pages;
    const auto chosen = choosePages({choices({"blank", "duplicate", "first"}), {}, {}}, pages);
    ASSERT_TRUE(chosen);
    std::map<int, std::optional<double>> figures;
    for (const ChosenPage& page : *chosen) {
        figures[page.page] = page.figure;
    }
    const std::map<int, std::optional<double>> expected = {
        {1, std::nullopt}, {3, 0.4}, {6, 0.0}, {8, 2.0}, {10, 2.0}};
    EXPECT_EQ(figures, expected);
}

} // namespace
