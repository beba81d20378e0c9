#include "KarvelPDFLibrary/fonts/Embedding.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include <memory>
#include <type_traits>

namespace karvel::fonts {

namespace {

struct Done {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};

} // namespace

bool mayBeEmbedded(const std::string& path, int face)
{
    FT_Library rawLibrary = nullptr;
    if (FT_Init_FreeType(&rawLibrary) != 0) {
        return false;
    }
    const std::unique_ptr<std::remove_pointer_t<FT_Library>, Done> library(rawLibrary);
    FT_Face rawFace = nullptr;
    if (FT_New_Face(rawLibrary, path.c_str(), face, &rawFace) != 0) {
        return false;
    }
    const std::unique_ptr<std::remove_pointer_t<FT_Face>, Done> opened(rawFace);
    const FT_UShort flags = FT_Get_FSType_Flags(rawFace);
    // The bits are those of the table OS/2: the least restrictive of the lowest four holds.
    const bool restricted =
        (flags & FT_FSTYPE_RESTRICTED_LICENSE_EMBEDDING) != 0 &&
        (flags & (FT_FSTYPE_PREVIEW_AND_PRINT_EMBEDDING | FT_FSTYPE_EDITABLE_EMBEDDING)) == 0;
    return !restricted && (flags & FT_FSTYPE_BITMAP_EMBEDDING_ONLY) == 0;
}

} // namespace karvel::fonts
