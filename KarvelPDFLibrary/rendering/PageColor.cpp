#include "KarvelPDFLibrary/rendering/PageColor.h"

#include "KarvelPDFLibrary/rendering/RenderPage.h"

#include <algorithm>

namespace karvel::rendering {

namespace {

/// Fine enough to show coloured text, and bounded for posters.
constexpr double dpi = 72;
constexpr int longestSide = 4000;

constexpr int greyTolerance = 10;

} // namespace

Result<double> colouredPercentage(Document& document, viewer::View& view, int page)
{
    return pagePixels(document, view, page, dpi, Colors::Full, longestSide)
        .map([](const pictures::Raster& raster) {
            std::size_t coloured = 0;
            for (std::size_t i = 0; i < raster.pixels.size(); i += 3) {
                const unsigned char* pixel = raster.pixels.data() + i;
                const auto [least, most] = std::minmax({pixel[0], pixel[1], pixel[2]});
                coloured += most - least > greyTolerance ? 1 : 0;
            }
            return raster.percentage(coloured);
        });
}

} // namespace karvel::rendering
