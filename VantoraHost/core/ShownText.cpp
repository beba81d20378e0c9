#include "VantoraHost/core/ShownText.h"

#include "KarvelPDFLibrary/base/Text.h"

#include <cstdio>

namespace vantora {

namespace {

bool isControl(wchar_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

// Bidirectional controls could make a name look like another one, separators make another line of
// its rest, and tag characters hide what isn't to be seen.
bool misleads(wchar_t unit)
{
    return unit == 0x061C || unit == 0x200E || unit == 0x200F ||
           (unit >= 0x2028 && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069) ||
           (unit >= 0xE0000 && unit <= 0xE007F);
}

std::string hexadecimal(const char* format, unsigned value)
{
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

std::string shown(std::string_view text)
{
    std::wstring line;
    for (const wchar_t unit : karvel::text::toWide(text)) {
        const auto code = static_cast<unsigned>(unit);
        if (unit == L'\n') {
            line += L"\\n";
        } else if (unit == L'\t') {
            line += L"\\t";
        } else if (isControl(unit)) {
            line += karvel::text::toWide(hexadecimal("\\x%02x", code));
        } else if (code >= 0xDC80 && code <= 0xDCFF) {
            line += karvel::text::toWide(hexadecimal("\\x%02x", code & 0xFF));
        } else if (misleads(unit)) {
            line += karvel::text::toWide(hexadecimal(code > 0xFFFF ? "\\U%08x" : "\\u%04x", code));
        } else {
            line += unit;
        }
    }
    return karvel::text::fromWide(line);
}

} // namespace vantora
