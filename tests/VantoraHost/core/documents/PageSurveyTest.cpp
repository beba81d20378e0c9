#include "VantoraHost/core/documents/SurveyShares.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;

TEST(PageSurvey, IsReadAsItWasWritten)
{
    PageSurvey survey;
    survey.input = "caf\xe9.pdf";
    survey.pages = 9;
    survey.chosen = {{2, "text:a\nb"}, {9, "blank", 0.125}};
    survey.pictures = {{1, std::string("\xff\xd8\xff\0x", 5)}, {2, "\xff\xd8\xff"}};
    survey.warnings = {"text of pages 3 can't be read"};
    survey.repairs = {"its table was damaged"};
    survey.span = {2, 9};
    survey.unreadable = {3, 5};
    survey.version = "1 2 3 4";
    const std::string line = toJson(survey, Extent::Whole);
    EXPECT_EQ(line.find('\n'), std::string::npos);
    const auto read = pageSurveyOf(line);
    ASSERT_TRUE(read) << read.error().sentence;
    EXPECT_EQ(read->input, survey.input);
    EXPECT_EQ(read->pages, 9);
    EXPECT_EQ(rangeTextOf(read->chosen), "2,9");
    EXPECT_EQ(read->chosen[0].reason, "text:a\nb");
    EXPECT_EQ(read->chosen[0].figure, std::nullopt);
    EXPECT_EQ(read->chosen[1].figure, 0.125);
    EXPECT_EQ(read->pictures, survey.pictures);
    EXPECT_EQ(read->warnings, survey.warnings);
    EXPECT_EQ(read->repairs, survey.repairs);
    EXPECT_EQ(std::pair(read->span.first, read->span.last), std::pair(2, 9));
    EXPECT_EQ(read->unreadable, survey.unreadable);
    EXPECT_EQ(read->version, survey.version);
    EXPECT_TRUE(pageSurveyOf(toJson(survey, Extent::Printed))->pictures.empty());
}

TEST(PageSurvey, IsNotBelievedWhereItMakesNoSense)
{
    const std::string start = R"({"schema":1,"input":"a","status":"done","pages":3,"chosen":[)";
    for (const std::string& line :
         {std::string(), std::string("{}"), std::string("[]"), start + R"({"page":0}]})",
          start + R"({"page":4}]})", start + R"({"page":2},{"page":2}]})",
          start + R"({"page":2},{"page":1}]})", start + R"({"page":2}],"last":1})",
          start + R"({"page":2}],"first":3})", start + R"(7]})", start + R"({"page":"1"}]})"}) {
        EXPECT_FALSE(pageSurveyOf(line)) << line;
    }
    // What is no picture is none: it would stand in a page for a browser.
    const auto survey = pageSurveyOf(
        start + R"(],"pictures":[{"page":1,"jpeg":"\">"},{"page":2,"jpeg":"PHN2Zz4="}]})");
    ASSERT_TRUE(survey);
    EXPECT_TRUE(survey->pictures.empty());
    const auto failed = pageSurveyOf(
        R"({"status":"failed","input":"a","errors":[{"reason":"damaged","text":"is"}]})");
    EXPECT_EQ(failed.error().reason, Reason::Damaged);
}

TEST(SurveyShares, CoverEveryPageOnce)
{
    for (const int pages : {0, 1, 31, 32, 33, 64, 65, 100, 1000, 100'003}) {
        for (const std::size_t processes : {1, 2, 7}) {
            const std::size_t further = furtherParts(pages, processes);
            EXPECT_LE(further, 2 * processes);
            int last = 0;
            for (std::size_t part = 0; part <= further; ++part) {
                const PageSpan span = spanOfPart(part, pages, further);
                EXPECT_EQ(span.first, last + 1) << pages << " in " << further;
                EXPECT_GE(span.last, span.first);
                last = std::min(span.last, pages);
            }
            EXPECT_EQ(last, pages) << further;
        }
    }
}

PageSurvey partOf(int pages, PageSpan span, std::vector<ChosenPage> chosen)
{
    PageSurvey part;
    part.pages = pages;
    part.span = span;
    part.chosen = std::move(chosen);
    part.version = "1";
    return part;
}

TEST(SurveyShares, AreJoined)
{
    PageSurvey one = partOf(9, {1, 4}, {{2, "blank", 0.1}});
    one.unreadable = {4};
    one.pictures = {{1, "one"}, {2, "two"}};
    one.warnings = {"of its own"};
    PageSurvey other = partOf(9, {5, 9}, {{5, "odd"}, {9, "blank"}});
    other.unreadable = {6};
    other.pictures = {{4, "four"}, {2, "again"}};
    const auto whole = joined({one, other});
    ASSERT_TRUE(whole) << whole.error().sentence;
    EXPECT_EQ(rangeTextOf(whole->chosen), "2,5,9");
    EXPECT_EQ(whole->chosen[0].figure, 0.1);
    EXPECT_EQ(whole->pictures, (std::map<int, std::string>{{1, "one"}, {2, "two"}, {4, "four"}}));
    EXPECT_THAT(whole->warnings, testing::ElementsAre(testing::HasSubstr("text of pages 4,6 ")));
    EXPECT_EQ(joined({partOf(3, {1, 3}, {})})->span.last, 3);
}

TEST(SurveyShares, AreNotJoinedWhereTheyDoNotFit)
{
    PageSurvey changed = partOf(9, {5, 9}, {});
    changed.version = "2";
    const std::pair<const char*, std::vector<PageSurvey>> rows[] = {
        {"of none", {}},
        {"without the first pages", {partOf(9, {2, 9}, {})}},
        {"without the last ones", {partOf(9, {1, 4}, {}), partOf(9, {5, 8}, {})}},
        {"with a gap", {partOf(9, {1, 4}, {}), partOf(9, {6, 9}, {})}},
        {"with a page twice", {partOf(9, {1, 4}, {}), partOf(9, {4, 9}, {})}},
        {"of other pages", {partOf(10, {1, 4}, {}), partOf(9, {5, 9}, {})}},
        {"of another version", {partOf(9, {1, 4}, {}), changed}},
    };
    for (const auto& [name, parts] : rows) {
        const auto whole = joined(parts);
        ASSERT_FALSE(whole) << name;
        EXPECT_EQ(whole.error().reason, Reason::ChangedMeanwhile) << name;
    }
}

} // namespace
