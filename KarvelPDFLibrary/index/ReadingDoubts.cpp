#include "KarvelPDFLibrary/index/ReadingDoubts.h"

#include <algorithm>

namespace karvel::index {

namespace {

/// Longer ones may not be numbers that libqpdf can hold.
constexpr std::size_t mostDigits = 9;

std::size_t digitsAt(std::string_view text, std::size_t at)
{
    const std::size_t end = text.find_first_not_of("0123456789", at);
    return std::min(end, text.size()) - at;
}

bool isPlainNumber(std::string_view text)
{
    const std::size_t sign = text.find_first_of("+-") == 0 ? 1 : 0;
    const std::size_t whole = digitsAt(text, sign);
    const std::size_t point = sign + whole;
    if (point == text.size()) {
        return whole > 0 && whole <= mostDigits;
    }
    const std::size_t fraction = digitsAt(text, point + 1);
    return text[point] == '.' && point + 1 + fraction == text.size() && whole + fraction > 0;
}

} // namespace

void ReadingDoubts::begin()
{
    levels_.clear();
    any_ = false;
}

void ReadingDoubts::value()
{
    if (!levels_.empty() && levels_.back().isDictionary) {
        any_ = any_ || levels_.back().expectsKey;
        levels_.back().expectsKey = true;
    }
}

void ReadingDoubts::opened(bool isDictionary)
{
    value();
    levels_.push_back({isDictionary, isDictionary, {}});
}

void ReadingDoubts::closed()
{
    Level& level = levels_.back();
    std::sort(level.keys.begin(), level.keys.end());
    any_ = any_ || (level.isDictionary && !level.expectsKey) ||
           std::adjacent_find(level.keys.begin(), level.keys.end()) != level.keys.end();
    levels_.pop_back();
}

void ReadingDoubts::name(std::string_view written)
{
    any_ = any_ || written.find_first_of("#\v") != std::string_view::npos;
    if (levels_.empty() || !levels_.back().isDictionary || !levels_.back().expectsKey) {
        value();
        return;
    }
    levels_.back().keys.push_back(written);
    levels_.back().expectsKey = false;
}

void ReadingDoubts::number(std::string_view written)
{
    any_ = any_ || !isPlainNumber(written);
    value();
}

/// One that is all of an object is no reference for libqpdf.
void ReadingDoubts::reference(std::string_view number)
{
    any_ = any_ || levels_.empty() || number.size() > mostDigits;
    value();
}

} // namespace karvel::index
