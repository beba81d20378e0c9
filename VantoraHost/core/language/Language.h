#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vantora {

/// What stands in a text at %1, %2 and so on.
using TextValues = std::vector<std::string>;

/// The language that people are spoken to in. The sources say everything in English, by which
/// other languages look it up; one made without a catalogue is English, and costs nothing.
class Language {
public:
    /// Texts in another language than English.
    class Catalogue;

    Language() = default;

    /// The one of a catalogue that this program has, such as "de"; English where there is none.
    static Language named(const std::string& name);

    bool isEnglish() const { return !catalogue_; }

    /// A whole text of the terminal's, with values in their places. No value is taken for a place.
    std::string text(const char* english, const TextValues& values = {}) const;

    /// "1 page" or "12,345 pages"; other languages have what stands for both under `several`.
    std::string counted(std::uint64_t number, const char* one, const char* several) const;

    /// "12,345", "9.2 kB" or "0.4" with the marks that the language has in numbers.
    std::string figures(std::string english) const;

    /// 12345 as "12,345".
    std::string number(std::uint64_t number) const;

    /// A size such as "1 byte" or "10.1 kB".
    std::string size(std::uint64_t bytes) const;

    /// A sentence that another layer made in English, by the template that it fits
    /// (Sentences.h). What came from outside in it has to be shown() already.
    std::string sentence(const std::string& english) const;

    /// Whether the catalogue has this text; English has every one.
    bool has(const char* english) const;

private:
    std::shared_ptr<const Catalogue> catalogue_;
};

/// How many characters a text has, which is more than a column has bytes for.
std::size_t charactersIn(const std::string& text);

/// A text with spaces behind it, up to a number of characters.
std::string padded(std::string text, std::size_t characters);

/// The language that a user's environment asks for, as gettext reads it: LANGUAGE lists some, of
/// which the first that is known counts, unless the locale (LC_ALL, LC_MESSAGES or LANG) is that of
/// C. "de", or empty for English. Nothing in it is taken for the name of a file.
std::string languageAskedFor(const std::function<const char*(const char*)>& variable);

} // namespace vantora
