#include "VantoraHost/core/outputs/OutputName.h"

#include <gtest/gtest.h>

namespace {

using vantora::OutputName;

TEST(OutputName, IsMadeOfTheInputs)
{
    const struct {
        const char* text;
        const char* input;
        const char* expected;
    } cases[] = {
        {"{name}-cut{ext}", "a.b.pdf", "a.b-cut.pdf"},
        {"{name}{ext}", "none", "none"},
        {"{name}|{ext}", ".pdf", ".pdf|"},
        {"{name}|{ext}", "caf\xe9.PDF", "caf\xe9|.PDF"},
        {"{number}{ext}", "a.pdf", "0042.pdf"},
        {"{{name}}", "a.pdf", "{name}"},
        {"same", "a.pdf", "same"},
    };
    for (const auto& [text, input, expected] : cases) {
        const auto name = OutputName::of(text);
        ASSERT_TRUE(name) << text;
        EXPECT_EQ(name->of(input, 42, 1000), expected) << text;
    }
}

TEST(OutputName, SaysWhatItDoesNotTake)
{
    for (const char* text : {"", "{", "}", "{name", "{}", "{stem}", "{name }", "a/b"}) {
        EXPECT_FALSE(OutputName::of(text)) << text;
    }
}

} // namespace
