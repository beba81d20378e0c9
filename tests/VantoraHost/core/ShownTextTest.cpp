#include "VantoraHost/core/ShownText.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* name;
    const char* text;
    const char* shown;
};

class ShownText : public testing::TestWithParam<Case> {};

TEST_P(ShownText, FitsOnOneLine)
{
    EXPECT_EQ(vantora::shown(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Texts, ShownText,
                         testing::Values(Case{"plain", "a b.pdf", "a b.pdf"},
                                         Case{"other_scripts", "\xe6\x96\x87.pdf",
                                              "\xe6\x96\x87.pdf"},
                                         Case{"line_ends", "a\nb\tc\r", "a\\nb\\tc\\x0d"},
                                         Case{"an_escape_sequence", "\x1b[31mred", "\\x1b[31mred"},
                                         Case{"a_control_character_in_utf8", "\xc2\x9b", "\\x9b"},
                                         Case{"bytes_that_are_not_utf8", "caf\xe9", "caf\\xe9"},
                                         Case{"an_override_of_the_direction",
                                              "a\xe2\x80\xae"
                                              "fdp.exe",
                                              "a\\u202efdp.exe"}),
                         [](const auto& info) { return info.param.name; });

} // namespace
