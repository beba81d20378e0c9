#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace karvel::text {

/// UTF-32 code units (wchar_t is 32 bits wide here) as UTF-8. A code unit U+DC80 to U+DCFF becomes
/// the byte 0x80 to 0xFF, so that file names that are not valid UTF-8 can be passed; every other
/// code unit that is no character becomes U+FFFD.
std::string fromWide(std::wstring_view wide);

/// The reverse of fromWide: a byte that is not part of valid UTF-8 becomes U+DC80 to U+DCFF.
std::wstring toWide(std::string_view utf8);

/// A number with what is counted, such as "1 page" or "3 pages".
std::string counted(std::uint64_t count, const char* one, const char* several);

} // namespace karvel::text
