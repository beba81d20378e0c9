#include "KarvelPDFLibrary/fonts/InstalledFonts.h"

#include "KarvelPDFLibrary/fonts/Embedding.h"

#include <fontconfig/fontconfig.h>
#include <memory>
#include <set>

namespace karvel::fonts {

namespace {

struct Destroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
    void operator()(FcCharSet* characters) const { FcCharSetDestroy(characters); }
};
template <class T>
using Owned = std::unique_ptr<T, Destroy>;

/// Characters that a font for a character set must have: the letters of its languages, or for the
/// large scripts some that every such font has.
const char32_t* lettersOf(CharacterSet set)
{
    switch (set) {
    case CharacterSet::Western:
        return U"AZazÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ";
    case CharacterSet::CentralEuropean:
        return U"ĄĆĘŁŃÓŚŹŻąćęłńóśźżČĎĚŇŘŠŤŮŽčďěňřšťůžĹĽŔĺľŕŐŰőűĂŞŢăşţĐđ";
    case CharacterSet::Cyrillic:
        return U"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюяЁёЄєІіЇї";
    case CharacterSet::Greek:
        return U"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩαβγδεζηθικλμνξοπρςστυφχψωΆΈΉΊΌΎΏάέήίόύώ";
    case CharacterSet::Turkish:
        return U"ÇĞİÖŞÜçğıöşü";
    case CharacterSet::Baltic:
        return U"ĀČĒĢĪĶĻŅŠŪŽāčēģīķļņšūžĄĘĖĮŲąęėįų";
    case CharacterSet::Hebrew:
        return U"אבגדהוזחטיךכלםמןנסעףפץצקרשת";
    case CharacterSet::Arabic:
        return U"ءآأؤإئابةتثجحخدذرزسشصضطظعغفقكلمنهوىي";
    case CharacterSet::Thai:
        return U"กขคงจฉชซญดตถทธนบปผพฟมยรลวสหอฮะาำ฿";
    case CharacterSet::Vietnamese:
        return U"ĂÂĐÊÔƠƯăâđêôơưẠẢẤẦẨẪẬẮẰẸẺẼẾỀỈỊỌỎỐỒỚỜỢỤỦỨỪỰỲỴỶỸ";
    case CharacterSet::Japanese:
        return U"あいうえおアイウエオ日本語働畑";
    case CharacterSet::SimplifiedChinese:
        return U"国语这个说们来时书东";
    case CharacterSet::TraditionalChinese:
        return U"國語這個說們來時書東";
    case CharacterSet::Korean:
        return U"가나다라마바사아자차카타파하한글";
    default:
        return U"";
    }
}

std::string textOf(const FcPattern* font, const char* object)
{
    FcChar8* text = nullptr;
    return FcPatternGetString(font, object, 0, &text) == FcResultMatch
               ? reinterpret_cast<const char*>(text)
               : std::string();
}

bool isTrue(const FcPattern* font, const char* object)
{
    FcBool value = FcFalse;
    return FcPatternGetBool(font, object, 0, &value) == FcResultMatch && value != FcFalse;
}

bool isFixedWidth(const FcPattern* font)
{
    int spacing = FC_PROPORTIONAL;
    return FcPatternGetInteger(font, FC_SPACING, 0, &spacing) == FcResultMatch &&
           spacing >= FC_MONO;
}

bool isEmbeddable(const FcPattern* font)
{
    int face = 0;
    FcPatternGetInteger(font, FC_INDEX, 0, &face);
    return mayBeEmbedded(textOf(font, FC_FILE), face);
}

bool covers(const FcPattern* font, CharacterSet set, const FcCharSet* letters)
{
    if (set == CharacterSet::Any) {
        return true;
    }
    if (set == CharacterSet::Symbol) {
        return isTrue(font, FC_SYMBOL);
    }
    FcCharSet* characters = nullptr;
    return FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) == FcResultMatch &&
           FcCharSetIsSubset(letters, characters) != FcFalse;
}

std::string nameOf(const FcPattern* font, bool familyOnly)
{
    const std::string family = textOf(font, FC_FAMILY);
    if (familyOnly) {
        return family;
    }
    const std::string full = textOf(font, FC_FULLNAME);
    if (!full.empty()) {
        return full;
    }
    const std::string style = textOf(font, FC_STYLE);
    return style.empty() ? family : family + " " + style;
}

Result<std::vector<std::string>> namesOf(CharacterSet set, const FontFilter& filter)
{
    const Owned<FcPattern> anything(FcPatternCreate());
    const Owned<FcObjectSet> wanted(FcObjectSetBuild(FC_FAMILY, FC_FULLNAME, FC_STYLE, FC_CHARSET,
                                                     FC_SPACING, FC_SCALABLE, FC_SYMBOL, FC_FILE,
                                                     FC_INDEX, static_cast<char*>(nullptr)));
    const Owned<FcCharSet> letters(FcCharSetCreate());
    if (!anything || !wanted || !letters) {
        return fail(ErrorCode::OutOfMemory, "out of memory while listing fonts");
    }
    for (const char32_t* letter = lettersOf(set); *letter != 0; ++letter) {
        FcCharSetAddChar(letters.get(), *letter);
    }
    const Owned<FcFontSet> fonts(FcFontList(nullptr, anything.get(), wanted.get()));
    if (!fonts) {
        return fail(ErrorCode::LibraryFailed, "the installed fonts cannot be listed");
    }
    std::set<std::string> names;
    for (int i = 0; i < fonts->nfont; ++i) {
        const FcPattern* font = fonts->fonts[i];
        if ((filter.scalable && !isTrue(font, FC_SCALABLE)) ||
            (filter.fixedWidth && !isFixedWidth(font)) || !covers(font, set, letters.get()) ||
            (filter.embeddable && !isEmbeddable(font))) {
            continue;
        }
        names.insert(nameOf(font, filter.familyNames));
    }
    names.erase("");
    return std::vector<std::string>(names.begin(), names.end());
}

class FontconfigFonts final : public InstalledFonts {
public:
    Result<std::vector<std::string>> names(CharacterSet set, const FontFilter& filter) override
    {
        return namesOf(set, filter);
    }

    bool mayBeEmbedded(const std::string& path, int face) override
    {
        return fonts::mayBeEmbedded(path, face);
    }
};

} // namespace

} // namespace karvel::fonts

extern "C" __attribute__((visibility("default"))) karvel::fonts::InstalledFonts* karvelModule()
{
    static karvel::fonts::FontconfigFonts fonts;
    return &fonts;
}
