#include "VantoraHost/core/choices/Choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using vantora::Choice;
using vantora::ChoiceKind;

TEST(Choice, IsReadFromItsText)
{
    const struct {
        const char* text;
        ChoiceKind kind;
        int count, offset;
    } rows[] = {
        {"first", ChoiceKind::First, 1, 0},         {"last:12", ChoiceKind::Last, 12, 0},
        {"every:3", ChoiceKind::Every, 3, 0},       {"every:3+1", ChoiceKind::Every, 3, 1},
        {"every:3+3", ChoiceKind::Every, 3, 0},     {"odd", ChoiceKind::Odd, 1, 0},
        {"label:A-3", ChoiceKind::Label, 1, 0},     {"no-text", ChoiceKind::NoText, 1, 0},
        {"text:a:b/c", ChoiceKind::Text, 1, 0},     {"size:letter", ChoiceKind::Size, 1, 0},
        {"size:99.5x20pt", ChoiceKind::Size, 1, 0}, {"blank:strict", ChoiceKind::Blank, 1, 0},
        {"duplicate", ChoiceKind::Duplicate, 1, 0},
    };
    for (const auto& [text, kind, count, offset] : rows) {
        const auto choice = Choice::of(text);
        ASSERT_TRUE(choice) << text << ": " << choice.error();
        EXPECT_EQ(choice->kind, kind) << text;
        EXPECT_EQ(choice->count, count) << text;
        EXPECT_EQ(choice->offset, offset) << text;
    }
}

TEST(Choice, SaysWhatIsWrongWithATextInOneSentence)
{
    const struct {
        const char* text;
        const char* sentence;
    } rows[] = {
        {"", "there are range:1,4-6, first[:N]"},
        {"Odd", "does not say how to choose pages"},
        {"blanks", "\"blanks\" does not say how"},
        {"odd:", "has a colon too many; write odd"},
        {"every", "says too little; write for example every:3"},
        {"first:0", "needs a number of pages"},
        {"first:-1", "needs a number of pages"},
        {"first: 1", "needs a number of pages"},
        {"last:99999999999", "needs a number of pages"},
        {"every:3+4", "needs a step"},
        {"every:3+", "needs a step"},
        {"every:+1", "needs a step"},
        {"range:6-4", "needs a page range"},
        {"range:", "needs a page range"},
        {"range:1 2", "has a space inside a number"},
        {"label:  ", "needs a name"},
        {"bookmark: ", "needs words"},
        {"bookmark://c", "needs words"},
        {"text:", "needs words"},
        {"text://", "needs words"},
        {"text:/(/", "is no regular expression: missing closing parenthesis"},
        {"blank:nearly", "can only be blank or blank:strict"},
        {"colour:red", "has a colon too many"},
        {"size:A99", "needs a paper format"},
        {"size:0x0mm", "needs a paper format"},
        {"size:210x297", "needs a paper format"},
    };
    for (const auto& [text, sentence] : rows) {
        const auto choice = Choice::of(text);
        ASSERT_FALSE(choice) << text;
        EXPECT_THAT(choice.error(), HasSubstr(sentence)) << text;
        EXPECT_EQ(choice.error().find('\n'), std::string::npos) << text;
    }
}

} // namespace
