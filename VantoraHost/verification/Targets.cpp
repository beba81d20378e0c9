#include "VantoraHost/verification/Targets.h"

#include <algorithm>

namespace vantora::verification {

namespace {

/// Names that lead to names: no document needs more.
constexpr int mostNames = 8;

// "3." and "3" are the same number.
std::string numberOf(QPDFObjectHandle value)
{
    if (!value.isNumber()) {
        return value.isIndirect() ? "?" : value.unparse();
    }
    return std::to_string(value.getNumericValue());
}

std::string roman(long long number)
{
    static constexpr std::pair<int, const char*> digits[] = {
        {1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"},
        {40, "xl"},  {10, "x"},   {9, "ix"},  {5, "v"},    {4, "iv"},  {1, "i"}};
    std::string text;
    for (const auto& [value, letters] : digits) {
        for (; number >= value && text.size() < 64; number -= value) {
            text += letters;
        }
    }
    return text;
}

std::string letters(long long number)
{
    const auto times = std::min<long long>((number - 1) / 26 + 1, 64);
    return std::string(static_cast<std::size_t>(times), static_cast<char>('a' + (number - 1) % 26));
}

std::string numeral(const std::string& style, long long number)
{
    std::string text = style == "/D"                                    ? std::to_string(number)
                       : style == "/r" || style == "/R"                 ? roman(number)
                       : number > 0 && (style == "/a" || style == "/A") ? letters(number)
                                                                        : "";
    if (style == "/R" || style == "/A") {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return static_cast<char>(c - 'a' + 'A'); });
    }
    return text;
}

} // namespace

Targets::Targets(PdfFile& file) : file_(file)
{
    QPDFObjectHandle old = valueOf(file.catalog(), "/Dests");
    if (old.isDictionary()) {
        for (const auto& [name, value] : old.getDictAsMap()) {
            names_.emplace(name, value);
        }
    }
    for (auto& [name, value] :
         treeEntries(valueOf(valueOf(file.catalog(), "/Names"), "/Dests"), "/Names")) {
        if (name.isString()) {
            names_.emplace(name.getStringValue(), value);
        }
    }
}

Target Targets::ofArray(QPDFObjectHandle array) const
{
    Target target{Target::Where::Gone, 0, {}};
    if (array.getArrayNItems() == 0) {
        return {};
    }
    QPDFObjectHandle page = array.getArrayItem(0);
    const std::vector<int>& places = file_.placesOf(page);
    if (!places.empty()) {
        target = {Target::Where::Page, places.front(), {}};
    } else if (page.isInteger() && page.getIntValue() >= 0 &&
               page.getIntValue() < static_cast<long long>(file_.pages().size())) {
        target = {Target::Where::Page, static_cast<int>(page.getIntValue()), {}};
    }
    for (int i = 1; i < std::min(array.getArrayNItems(), 8); ++i) {
        target.more += numberOf(array.getArrayItem(i)) + " ";
    }
    return target;
}

Target Targets::ofDestination(QPDFObjectHandle destination) const
{
    for (int depth = 0; depth < mostNames; ++depth) {
        if (destination.isArray()) {
            return ofArray(destination);
        }
        if (destination.isDictionary()) {
            destination = destination.getKey("/D");
            continue;
        }
        if (!destination.isName() && !destination.isString()) {
            return {};
        }
        const auto named = names_.find(destination.isName() ? destination.getName()
                                                            : destination.getStringValue());
        if (named == names_.end()) {
            return {Target::Where::Gone, 0, {}};
        }
        destination = named->second;
    }
    return {Target::Where::Gone, 0, {}};
}

Target Targets::of(const QPDFObjectHandle& holder) const
{
    if (QPDFObjectHandle destination = valueOf(holder, "/Dest"); !destination.isNull()) {
        return ofDestination(destination);
    }
    QPDFObjectHandle action = valueOf(holder, "/A");
    if (!action.isDictionary()) {
        return {};
    }
    if (isNamed(action, "/S", "/GoTo")) {
        return ofDestination(action.getKey("/D"));
    }
    std::string more = numberOf(action.getKey("/S"));
    for (const char* key : {"/URI", "/F", "/N", "/JS", "/D"}) {
        QPDFObjectHandle value = action.getKey(key);
        if (value.isDictionary()) {
            value = valueOf(value, "/F");
        }
        more += value.isString() ? " " + value.getUTF8Value()
                : value.isName() ? " " + value.getName()
                                 : "";
    }
    return {Target::Where::Else, 0, more};
}

std::vector<PageLabel> labelsOf(PdfFile& file)
{
    struct Range {
        std::string style;
        std::string prefix;
        long long first = 1;
    };
    std::map<long long, Range> ranges;
    for (auto& [key, value] : treeEntries(valueOf(file.catalog(), "/PageLabels"), "/Nums")) {
        if (key.isInteger() && value.isDictionary()) {
            Range range;
            QPDFObjectHandle style = value.getKey("/S");
            QPDFObjectHandle prefix = value.getKey("/P");
            QPDFObjectHandle first = value.getKey("/St");
            range.style = style.isName() ? style.getName() : "";
            range.prefix = prefix.isString() ? prefix.getUTF8Value() : "";
            range.first = first.isInteger() ? first.getIntValue() : 1;
            ranges[key.getIntValue()] = range;
        }
    }
    std::vector<PageLabel> labels;
    if (ranges.empty()) {
        return labels;
    }
    for (long long place = 0; place < static_cast<long long>(file.pages().size()); ++place) {
        auto after = ranges.upper_bound(place);
        if (after == ranges.begin()) { // before the first range viewers show numbers
            labels.push_back({std::to_string(place + 1), {}});
            continue;
        }
        const auto& [start, range] = *std::prev(after);
        labels.push_back(
            {range.prefix + numeral(range.style, range.first + place - start), range.prefix});
    }
    return labels;
}

} // namespace vantora::verification
