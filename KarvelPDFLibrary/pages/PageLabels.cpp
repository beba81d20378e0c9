#include "KarvelPDFLibrary/pages/PageLabels.h"

#include "KarvelPDFLibrary/document/PageArguments.h"

#include <algorithm>
#include <cctype>

namespace karvel::pages {

namespace {

/// Numbers above it are shown in digits: they would fill a page otherwise.
constexpr long long largestSpelled = 20000;

std::string roman(long long number)
{
    constexpr struct {
        int value;
        const char* digits;
    } steps[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                 {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                 {5, "v"},    {4, "iv"},   {1, "i"}};
    std::string text;
    for (const auto& [value, digits] : steps) {
        for (; number >= value; number -= value) {
            text += digits;
        }
    }
    return text;
}

/// a to z, then aa to zz, and so on.
std::string letters(long long number)
{
    return std::string(static_cast<std::size_t>((number - 1) / 26 + 1),
                       static_cast<char>('a' + (number - 1) % 26));
}

std::string inCapitals(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string numberText(const std::string& style, long long number)
{
    if (style.empty()) {
        return {};
    }
    if (style == "/D" || number < 1 || number > largestSpelled) {
        return std::to_string(number);
    }
    if (style == "/R" || style == "/r") {
        return style == "/R" ? inCapitals(roman(number)) : roman(number);
    }
    if (style == "/A" || style == "/a") {
        return style == "/A" ? inCapitals(letters(number)) : letters(number);
    }
    return std::to_string(number);
}

} // namespace

Result<std::string> pageLabel(Document& document, int page)
{
    if (Outcome status = hasPage(document, page); !status) {
        return tl::unexpected<Error>(std::move(status.error()));
    }
    const auto label = document.pageLabels().labelOf(page);
    return label ? QPDFObjectHandle::newString(label->prefix).getUTF8Value() +
                       numberText(label->style, label->number)
                 : std::to_string(page);
}

} // namespace karvel::pages
