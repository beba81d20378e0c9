#pragma once

#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the recording library was called with, and how it is to answer. The library stands in for
/// the PDF library: it has the same exports and does nothing but write down each call.
struct Recording {
    /// The calls in their order, as `Name(instance, arguments…)`. Buffers are called b1, b2, … by
    /// their creation; a string argument is `null`, `text "…"` for a plain pointer, or the buffer
    /// with its bytes, `b1 wide "…"` or `b1 bytes "…"`.
    std::vector<std::string> calls;

    int instance = 7;                  ///< what CreateLibrary answers
    std::optional<int> reportedLength; ///< what the length queries answer instead of the truth
    std::map<std::string, std::list<int>> answers; ///< integers that functions answer, in turn
    std::map<std::string, std::list<std::wstring>> texts; ///< likewise for wide texts
    bool nullResults = false; ///< whether string results are null pointers
    bool throws = false;      ///< whether functions with arguments end in an exception

    struct Buffer {
        std::string name;
        std::string bytes;
    };
    std::map<const void*, Buffer> buffers;
    std::list<std::string> storage; ///< the memory of all buffers, kept to the end

    /// The results that live in the library; overwritten by every call but the length queries.
    std::wstring wideResult;
    std::string byteResult;
};

/// The results of a function, which tell it from others.
inline int integerResultOf(std::string_view name)
{
    return static_cast<int>(std::hash<std::string_view>()(name) & 0xFFFFF);
}

inline double realResultOf(std::string_view name)
{
    return integerResultOf(name) + 0.5;
}

inline std::wstring wideResultOf(std::string_view name)
{
    return std::wstring(name.begin(), name.end()) + L'\0' + L"\U0001F600";
}

inline std::string byteResultOf(std::string_view name)
{
    return std::string(name) + '\0' + "\xFF after the NUL";
}

/// Bytes with everything that is not a plain character written as its number.
template <class Character>
std::string written(std::basic_string_view<Character> text)
{
    std::string result = "\"";
    for (const Character unit : text) {
        if (unit >= ' ' && unit < 127) {
            result += static_cast<char>(unit);
        } else {
            const auto number = sizeof(unit) == 1 ? static_cast<unsigned char>(unit) : unit;
            result += "<" + std::to_string(static_cast<unsigned long>(number)) + ">";
        }
    }
    return result + "\"";
}
