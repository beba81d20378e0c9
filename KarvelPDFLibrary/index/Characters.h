#pragma once

#include <array>
#include <cstdint>

namespace karvel::index {

/// The three classes of characters (ISO 32000-2, 7.2.3).
enum class CharacterClass : std::uint8_t { Regular, Space, Delimiter };

constexpr std::array<CharacterClass, 256> characterClasses = [] {
    std::array<CharacterClass, 256> classes{};
    for (const unsigned char ch : {'\0', '\t', '\n', '\f', '\r', ' '}) {
        classes[ch] = CharacterClass::Space;
    }
    for (const unsigned char ch : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'}) {
        classes[ch] = CharacterClass::Delimiter;
    }
    return classes;
}();

constexpr CharacterClass classOf(char ch)
{
    return characterClasses[static_cast<unsigned char>(ch)];
}

constexpr bool isRegular(char ch)
{
    return classOf(ch) == CharacterClass::Regular;
}

constexpr bool isWhiteSpace(char ch)
{
    return classOf(ch) == CharacterClass::Space;
}

constexpr bool isDelimiter(char ch)
{
    return classOf(ch) == CharacterClass::Delimiter;
}

constexpr bool isDigit(char ch)
{
    return ch >= '0' && ch <= '9';
}

} // namespace karvel::index
