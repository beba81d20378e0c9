#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <string>
#include <vector>

namespace karvel::fonts {

/// Character set codes of the interface.
enum class CharacterSet : int {
    Symbol = 1,
    Any = 2,
    Western = 3,
    CentralEuropean = 4,
    Cyrillic = 5,
    Greek = 6,
    Turkish = 7,
    Baltic = 8,
    Hebrew = 9,
    Arabic = 10,
    Thai = 11,
    Vietnamese = 12,
    Japanese = 13,
    SimplifiedChinese = 14,
    TraditionalChinese = 15,
    Korean = 16,
};
constexpr int characterSetCount = 16;

struct FontFilter {
    bool familyNames = false; // instead of the names of single fonts
    bool scalable = false;
    bool fixedWidth = false;
    bool embeddable = false; // by the font's licence bits
};

/// The names of the installed fonts that cover a character set, sorted by code points, without
/// repeats, in UTF-8.
Result<std::vector<std::string>> installedFonts(CharacterSet set, const FontFilter& filter);

} // namespace karvel::fonts
