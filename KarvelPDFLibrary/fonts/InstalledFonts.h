#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <string>
#include <vector>

/// The fonts of the system: fontconfig and FreeType, in a module of its own that is loaded when it
/// is first needed.
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

class InstalledFonts {
public:
    /// The names of the installed fonts that cover a character set, sorted by code points, without
    /// repeats, in UTF-8.
    virtual Result<std::vector<std::string>> names(CharacterSet set, const FontFilter& filter) = 0;

    /// fonts::mayBeEmbedded of the module.
    virtual bool mayBeEmbedded(const std::string& path, int face) = 0;

protected:
    ~InstalledFonts() = default;
};

/// The module's one object, which is loaded at the first call. May be called from any thread.
Result<InstalledFonts*> loadedFonts();

} // namespace karvel::fonts
