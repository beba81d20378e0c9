#include "KarvelPDFLibrary/base/Module.h"
#include "KarvelPDFLibrary/fonts/InstalledFonts.h"

namespace karvel::fonts {

Result<InstalledFonts*> loadedFonts()
{
    static Module<InstalledFonts> module("KarvelPDFLibraryFonts.so");
    return module.loaded();
}

} // namespace karvel::fonts
