#pragma once

#include <string_view>
#include <vector>

namespace karvel::index {

/// Follows the parts of a value while it is scanned, and notes where libqpdf may read it otherwise
/// or have something to say about it: keys that stand twice, dictionaries whose entries are not
/// pairs, and names and numbers in a form that is not plain.
class ReadingDoubts {
public:
    void begin();
    void opened(bool isDictionary);
    void closed();
    void name(std::string_view written);
    void number(std::string_view written);
    void reference(std::string_view number);
    void other() { value(); }

    bool any() const { return any_; }

private:
    struct Level {
        bool isDictionary;
        bool expectsKey;
        std::vector<std::string_view> keys;
    };

    void value();

    std::vector<Level> levels_;
    bool any_ = false;
};

} // namespace karvel::index
