#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantora::verification {

/// Finds many byte strings in others in one pass (Rabin and Karp).
class Patterns {
public:
    static constexpr std::size_t shortest = 12; ///< of patterns, in bytes

    /// Adds a pattern that something is known by. False when it is too short, or when so many begin
    /// like it that looking for it could take without end.
    bool add(std::string_view bytes, std::size_t id);

    /// Calls `found` with what each pattern in some bytes is known by, often more than once.
    void findIn(std::string_view bytes, const std::function<void(std::size_t)>& found) const;

private:
    struct Pattern {
        std::string bytes;
        std::size_t id;
    };
    std::unordered_map<std::uint64_t, std::vector<Pattern>> byBeginning_;
    std::vector<bool> maybe_ = std::vector<bool>(std::size_t{1} << 20);
};

/// What a hexadecimal digit is worth; -1 when it is none.
int hexOf(char c);

/// A text without white space and zero bytes, so that neither lines nor UTF-16 tell texts apart.
std::string squeezed(std::string_view text);

/// How many characters a text in UTF-8 has.
std::size_t characters(std::string_view utf8);

/// What the strings in a content stream say one after the other, as far as they are not glyphs.
std::string stringsIn(std::string_view content);

} // namespace vantora::verification
