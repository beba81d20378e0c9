#pragma once

#include "KarvelPDFLibrary/content/PaintedContent.h"
#include "KarvelPDFLibrary/pictures/ReducedImages.h"

#include <optional>

namespace karvel::rendering {

struct ScannedPicture {
    std::optional<pictures::Raster> picture;
    bool isDamaged = false; ///< the image could be decoded if its data were whole
};

/// The picture of a page that is nothing but one image over all of it, decoded at a fraction of its
/// size, as fine as a judgement needs it. Nothing for other pages, and for images that are stored
/// otherwise than most scanners do or that are damaged: rendering shows those.
ScannedPicture scannedPicture(Document& document, int page, const content::PaintedContent& painted,
                              const pictures::Enough& enough);

} // namespace karvel::rendering
