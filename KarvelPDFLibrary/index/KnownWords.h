#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace karvel::index {

/// A few words, each once and with what it means, among which every word of a file is looked up: a
/// hash of its length and two of its letters tells most of those that aren't there.
template <class Meaning, std::size_t count>
class KnownWords {
public:
    struct Word {
        std::string_view text;
        Meaning meaning;
    };

    constexpr explicit KnownWords(const std::array<Word, count>& words) : words_(words)
    {
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t slot = slotOf(words[i].text);
            while (slots_[slot] != 0) {
                slot = (slot + 1) % slotCount;
            }
            slots_[slot] = static_cast<std::uint8_t>(i + 1);
        }
    }

    /// What a word means; null for one that is not among them.
    constexpr const Meaning* find(std::string_view text) const
    {
        for (std::size_t slot = slotOf(text); slots_[slot] != 0; slot = (slot + 1) % slotCount) {
            const Word& word = words_[slots_[slot] - 1U];
            if (word.text == text) {
                return &word.meaning;
            }
        }
        return nullptr;
    }

private:
    static constexpr std::size_t slotCount = 256;
    static_assert(count < slotCount / 2);

    static constexpr std::size_t slotOf(std::string_view text)
    {
        if (text.empty()) {
            return 0;
        }
        const auto first = static_cast<unsigned char>(text.front());
        const auto last = static_cast<unsigned char>(text.back());
        return (text.size() * 37U + first * 5U + last * 3U) % slotCount;
    }

    std::array<Word, count> words_;
    std::array<std::uint8_t, slotCount> slots_{}; // positions of words and one more; 0 for none
};

} // namespace karvel::index
