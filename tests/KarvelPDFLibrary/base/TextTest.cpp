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

TEST(BothWays, KeepEveryCharacter)
{
    const Case rows[] = {{"empty", L"", ""},
                         {"ascii", L"a/b.pdf", "a/b.pdf"},
                         {"two bytes", L"\u00e9\u07ff", "\xc3\xa9\xdf\xbf"},
                         {"three bytes", L"\u4e2d\uffff", "\xe4\xb8\xad\xef\xbf\xbf"},
                         {"beyond the basic plane", L"\U0001F4C4", "\xf0\x9f\x93\x84"},
                         {"nul inside", std::wstring(L"a\0b", 3), std::string("a\0b", 3)},
                         {"latin1 byte in a file name", L"caf\xdce9.pdf", "caf\xe9.pdf"},
                         {"truncated sequence", L"x\xdce4\xdcb8", "x\xe4\xb8"},
                         {"overlong slash", L"\xdcc0\xdcaf", "\xc0\xaf"},
                         {"encoded surrogate", L"\xdced\xdca0\xdc80", "\xed\xa0\x80"}};
    for (const Case& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(fromWide(row.wide), row.utf8);
        EXPECT_EQ(toWide(row.utf8), row.wide);
    }
}

TEST(Text, ReplacesUnitsThatAreNoCharacters)
{
    EXPECT_EQ(fromWide(L"\xd800"), "\xef\xbf\xbd");
    EXPECT_EQ(fromWide(L"\xdc7f"), "\xef\xbf\xbd");
    EXPECT_EQ(fromWide(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xef\xbf\xbd");
}

} // namespace
