#pragma once

#include "KarvelPDFLibrary/index/ReadingDoubts.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace karvel::index {

/// The text of a dictionary whose entries are changed without it being built.
class DictionaryText {
public:
    /// `from` begins with a dictionary and goes on after it, as a ValueScanner needs it; it must
    /// last as long as the result. Nothing when it does not read as expected or has a key twice.
    static std::optional<DictionaryText> read(std::string_view from);

    /// The same, and nothing either where libqpdf may read anything of it otherwise.
    static std::optional<DictionaryText> readPlainly(std::string_view from);

    /// The text of a key's value; empty when there is none. The key is without its slash.
    std::string_view value(std::string_view key) const;

    bool has(std::string_view key) const { return value(key).data() != nullptr; }

    /// An entry: its key without the slash and with "#" escapes resolved, and its value's text.
    struct Place {
        std::string key;
        std::string_view value;
    };
    const std::vector<Place>& entries() const { return places_; }

    /// The dictionary's text.
    std::string_view text() const { return text_; }

    /// The whole text with other values for some keys, which may be new ones. An empty value takes
    /// the key out.
    struct Entry {
        std::string_view key;
        std::string value;
    };
    std::string with(const std::vector<Entry>& changes) const;

private:
    static std::optional<DictionaryText> read(std::string_view from, ReadingDoubts* doubts);

    std::string_view text_;
    std::vector<Place> places_;
};

} // namespace karvel::index
