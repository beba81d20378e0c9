#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/exports/Lines.h"
#include "KarvelPDFLibrary/fonts/InstalledFonts.h"
#include "exports.h"

using namespace karvel;

wchar_t* KPLGetInstalledFontsByCharset(int instance, int charset, int options)
{
    return boundary::wideString(instance, [&](Instance&) -> Result<std::string> {
        if (charset < 1 || charset > fonts::characterSetCount) {
            return fail(ErrorCode::BadArgument, "the character set must be 1 to 16");
        }
        if (options < 0 || options > 15) {
            return fail(ErrorCode::BadArgument, "the options must be a sum of 1, 2, 4 and 8");
        }
        fonts::FontFilter filter;
        filter.familyNames = (options & 1) != 0;
        filter.scalable = (options & 2) != 0;
        filter.fixedWidth = (options & 4) != 0;
        filter.embeddable = (options & 8) != 0;
        return fonts::loadedFonts()
            .and_then([&](fonts::InstalledFonts* installed) {
                return installed->names(static_cast<fonts::CharacterSet>(charset), filter);
            })
            .map(boundary::lines);
    });
}
