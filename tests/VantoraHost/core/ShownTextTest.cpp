#include "VantoraHost/core/ShownText.h"

#include <gtest/gtest.h>

namespace {

TEST(ShownText, FitsOnOneLine)
{
    const struct {
        const char* name;
        const char* text;
        const char* shown;
    } rows[] = {
        {"plain", "a b.pdf", "a b.pdf"},
        {"other scripts", "\xe6\x96\x87.pdf", "\xe6\x96\x87.pdf"},
        {"line ends", "a\nb\tc\r", "a\\nb\\tc\\x0d"},
        {"an escape sequence", "\x1b[31mred", "\\x1b[31mred"},
        {"a control character in UTF-8", "\xc2\x9b", "\\x9b"},
        {"bytes that are not UTF-8", "caf\xe9", "caf\\xe9"},
        {"a mark of the Arabic direction", "a\u061cb", "a\\u061cb"},
        {"separators of lines and paragraphs", "a\u2028b\u2029c", "a\\u2028b\\u2029c"},
        {"tags, which nobody sees", "a\U000e0041\U000e007fb", "a\\U000e0041\\U000e007fb"},
        {"an override of the direction", "a\u202efdp.exe", "a\\u202efdp.exe"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(vantora::shown(row.text), row.shown) << row.name;
    }
}

} // namespace
