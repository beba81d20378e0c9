#include "VantoraHost/core/documents/PageSurvey.h"

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
    const std::string line = toJson(survey, WithPictures::Yes);
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
    EXPECT_TRUE(pageSurveyOf(toJson(survey, WithPictures::No))->pictures.empty());
}

TEST(PageSurvey, IsNotBelievedWhereItMakesNoSense)
{
    const std::string start = R"({"schema":1,"input":"a","status":"done","pages":3,"chosen":[)";
    for (const std::string& line :
         {std::string(), std::string("{}"), std::string("[]"), start + R"({"page":0}]})",
          start + R"({"page":4}]})", start + R"({"page":2},{"page":2}]})",
          start + R"({"page":2},{"page":1}]})", start + R"(7]})", start + R"({"page":"1"}]})"}) {
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

} // namespace
