#include "KarvelPDFLibrary/base/Text.h"

#include <gtest/gtest.h>

namespace {

using karvel::text::fromWide;
using karvel::text::toWide;

struct Case {
    const char* name;
    std::wstring wide;
    std::string utf8;
};

class BothWays : public testing::TestWithParam<Case> {};

TEST_P(BothWays, KeepEveryCharacter)
{
    EXPECT_EQ(fromWide(GetParam().wide), GetParam().utf8);
    EXPECT_EQ(toWide(GetParam().utf8), GetParam().wide);
}

INSTANTIATE_TEST_SUITE_P(
    Text, BothWays,
    testing::Values(Case{"empty", L"", ""}, Case{"ascii", L"a/b.pdf", "a/b.pdf"},
                    Case{"two_bytes", L"\u00e9\u07ff", "\xc3\xa9\xdf\xbf"},
                    Case{"three_bytes", L"\u4e2d\uffff", "\xe4\xb8\xad\xef\xbf\xbf"},
                    Case{"beyond_the_basic_plane", L"\U0001F4C4", "\xf0\x9f\x93\x84"},
                    Case{"nul_inside", std::wstring(L"a\0b", 3), std::string("a\0b", 3)},
                    Case{"latin1_byte_in_a_file_name", L"caf\xdce9.pdf", "caf\xe9.pdf"},
                    Case{"truncated_sequence", L"x\xdce4\xdcb8", "x\xe4\xb8"},
                    Case{"overlong_slash", L"\xdcc0\xdcaf", "\xc0\xaf"},
                    Case{"encoded_surrogate", L"\xdced\xdca0\xdc80", "\xed\xa0\x80"}),
    [](const auto& info) { return info.param.name; });

TEST(Text, ReplacesUnitsThatAreNoCharacters)
{
    EXPECT_EQ(fromWide(L"\xd800"), "\xef\xbf\xbd");
    EXPECT_EQ(fromWide(L"\xdc7f"), "\xef\xbf\xbd");
    EXPECT_EQ(fromWide(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xef\xbf\xbd");
}

} // namespace
