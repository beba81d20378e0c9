#include "KarvelPDFLibrary/base/Text.h"

#include <cstddef>
#include <cstdint>

namespace karvel::text {

namespace {

constexpr std::uint32_t byteEscape = 0xDC00; // the escape of byte b is U+DC00 + b

void appendUtf8(std::string& out, std::uint32_t code)
{
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

struct Decoded {
    std::uint32_t code;
    std::size_t length; // 0 when the bytes are not valid UTF-8
};

Decoded decodeUtf8(std::string_view bytes)
{
    const auto first = static_cast<unsigned char>(bytes[0]);
    if (first < 0x80) {
        return {first, 1};
    }
    std::size_t length = 0;
    std::uint32_t code = 0;
    std::uint32_t smallest = 0;
    if (first >= 0xC2 && first < 0xE0) {
        length = 2, code = first & 0x1F, smallest = 0x80;
    } else if (first >= 0xE0 && first < 0xF0) {
        length = 3, code = first & 0x0F, smallest = 0x800;
    } else if (first >= 0xF0 && first < 0xF5) {
        length = 4, code = first & 0x07, smallest = 0x10000;
    }
    if (length == 0 || bytes.size() < length) {
        return {0, 0};
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0) != 0x80) {
            return {0, 0};
        }
        code = (code << 6) | (next & 0x3F);
    }
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (code < smallest || code > 0x10FFFF || surrogate) {
        return {0, 0};
    }
    return {code, length};
}

} // namespace

std::string fromWide(std::wstring_view wide)
{
    std::string out;
    out.reserve(wide.size());
    for (const wchar_t unit : wide) {
        const auto code = static_cast<std::uint32_t>(unit);
        if (code >= byteEscape + 0x80 && code <= byteEscape + 0xFF) {
            out += static_cast<char>(code - byteEscape);
        } else if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
            appendUtf8(out, 0xFFFD);
        } else {
            appendUtf8(out, code);
        }
    }
    return out;
}

std::wstring toWide(std::string_view utf8)
{
    std::wstring out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const Decoded decoded = decodeUtf8(utf8);
        if (decoded.length == 0) {
            out += static_cast<wchar_t>(byteEscape + static_cast<unsigned char>(utf8[0]));
            utf8.remove_prefix(1);
        } else {
            out += static_cast<wchar_t>(decoded.code);
            utf8.remove_prefix(decoded.length);
        }
    }
    return out;
}

std::string counted(std::uint64_t count, const char* one, const char* several)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

} // namespace karvel::text
