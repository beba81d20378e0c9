#include "KarvelPDFLibrary/extraction/UnreadableText.h"

#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "KarvelPDFLibrary/content/PageContent.h"

#include <algorithm>
#include <cctype>

namespace karvel::extraction {

namespace {

QPDFObjectHandle entry(QPDFObjectHandle from, const char* key)
{
    return from.isDictionary() ? from.getKey(key) : QPDFObjectHandle::newNull();
}

/// ISO 32000-2, 9.10.2: a composite font without /ToUnicode says its characters by a CMap that is
/// known or by a character collection that is.
bool hasKnownCollection(QPDFObjectHandle font)
{
    QPDFObjectHandle encoding = entry(font, "/Encoding");
    const std::string cmap = encoding.isName() ? encoding.getName() : "";
    if (!cmap.empty() && cmap != "/Identity-H" && cmap != "/Identity-V") {
        return true;
    }
    QPDFObjectHandle descendants = entry(font, "/DescendantFonts");
    if (!descendants.isArray() || descendants.getArrayNItems() == 0) {
        return true; // nothing is shown in it
    }
    QPDFObjectHandle ordering =
        entry(entry(descendants.getArrayItem(0), "/CIDSystemInfo"), "/Ordering");
    const std::string name = ordering.isString() ? ordering.getStringValue() : "";
    return name == "Japan1" || name == "GB1" || name == "CNS1" || name == "Korea1" || name == "KR";
}

/// Names such as /g12 or /C0031, by which programs number glyphs.
bool isOnlyANumber(const std::string& glyph)
{
    const auto digits = std::find_if(glyph.begin() + 1, glyph.end(),
                                     [](unsigned char c) { return std::isdigit(c) != 0; });
    const bool isUnicode = glyph.compare(0, 4, "/uni") == 0 || glyph.compare(0, 2, "/u") == 0;
    return !isUnicode && digits - glyph.begin() <= 4 && digits != glyph.end() &&
           std::all_of(digits, glyph.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

bool namesItsGlyphs(QPDFObjectHandle font)
{
    QPDFObjectHandle differences = entry(entry(font, "/Encoding"), "/Differences");
    const int count = differences.isArray() ? differences.getArrayNItems() : 0;
    bool hasNames = false;
    for (int i = 0; i < count; ++i) {
        QPDFObjectHandle item = differences.getArrayItem(i);
        if (item.isName()) {
            hasNames = true;
            if (!isOnlyANumber(item.getName())) {
                return true;
            }
        }
    }
    return !hasNames;
}

bool saysItsCharacters(QPDFObjectHandle font)
{
    if (!font.isDictionary() || entry(font, "/ToUnicode").isStream()) {
        return true;
    }
    return entry(font, "/Subtype").isNameAndEquals("/Type0") ? hasKnownCollection(font)
                                                             : namesItsGlyphs(font);
}

/// Whether a name stands in content, and not only the beginning of a longer one.
bool isNamed(const std::string& content, const std::string& name)
{
    for (std::size_t at = content.find(name); at != std::string::npos;
         at = content.find(name, at + 1)) {
        const std::size_t end = at + name.size();
        if (end < content.size() && std::isspace(static_cast<unsigned char>(content[end])) != 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::vector<std::string> fontsWithoutCharacters(Document& document, int page)
{
    QPDFObjectHandle fonts = entry(document.pageAttribute(page, "/Resources"), "/Font");
    std::vector<std::string> names;
    if (!fonts.isDictionary()) {
        return names;
    }
    for (const std::string& name : fonts.getKeys()) {
        if (!saysItsCharacters(fonts.getKey(name))) {
            names.push_back(name);
        }
    }
    if (names.empty()) {
        return names;
    }
    const Result<std::string> content = content::pageContent(document, page);
    const auto isUnused = [&](const std::string& name) {
        return content && !isNamed(*content, name);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isUnused), names.end());
    return names;
}

void warnOfUnreadableText(Document& document, int page)
{
    const std::vector<std::string> fonts = fontsWithoutCharacters(document, page);
    if (fonts.empty()) {
        return;
    }
    std::string text = unreadableText + std::string("page ") + std::to_string(page) +
                       ": these fonts don't say which characters they show:";
    for (const std::string& font : fonts) {
        text += " " + font.substr(1);
    }
    Warnings& warnings = document.warnings();
    if (std::find(warnings.begin(), warnings.end(), text) == warnings.end()) {
        warnings.push_back(std::move(text));
    }
}

} // namespace karvel::extraction
