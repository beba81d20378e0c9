#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace karvel::index {

/// The text of a dictionary whose entries are changed without it being built.
class DictionaryText {
public:
    /// `from` begins with a dictionary and goes on after it, as a ValueScanner needs it. Nothing
    /// when it does not read as expected or has a key twice.
    static std::optional<DictionaryText> read(std::string_view from);

    /// The text of a key's value; empty when there is none. The key is without its slash.
    std::string_view value(std::string_view key) const;

    /// The whole text with other values for some keys, which may be new ones. An empty value takes
    /// the key out.
    struct Entry {
        std::string_view key;
        std::string value;
    };
    std::string with(const std::vector<Entry>& changes) const;

private:
    struct Place {
        std::string key;
        std::string_view value;
    };

    std::string_view text_;
    std::vector<Place> places_;
};

} // namespace karvel::index
