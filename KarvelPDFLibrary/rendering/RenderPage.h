#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/pictures/ImageFile.h"
#include "KarvelPDFLibrary/viewer/View.h"

#include <string>

namespace karvel::rendering {

enum class Colors { Full, Grey, BlackAndWhite };

struct RenderOptions {
    pictures::ImageFormat format = pictures::ImageFormat::Png;
    Colors colors = Colors::Full;
    bool transparentPaper = false; // PNG only, and not in black and white
    int jpegQuality = 85;
};

/// The options that a sum of render option codes of the interface names.
Result<RenderOptions> renderOptions(int codes);

/// A page as shown, at a resolution in dots per inch, as an image file's bytes.
Result<std::string> pageImage(Document& document, viewer::View& view, int page, double dpi,
                              const RenderOptions& options);

/// A page as an image whose longer side has `side` pixels.
Result<std::string> thumbnail(Document& document, viewer::View& view, int page, int side,
                              const RenderOptions& options);

/// A page's pixels; `longestSide`, when not 0, is the most that the resolution may make of it.
Result<pictures::Raster> pagePixels(Document& document, viewer::View& view, int page, double dpi,
                                    Colors colors, int longestSide = 0);

} // namespace karvel::rendering
