#include "KarvelPDFLibrary/rendering/PageMarks.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/rendering/RenderPage.h"

#include <algorithm>

namespace karvel::rendering {

namespace {

/// Fine enough to show a hairline, and bounded for posters.
constexpr double dpi = 72;
constexpr int longestSide = 4000;

constexpr int greyTolerance = 4;

double percentage(std::size_t part, std::size_t whole)
{
    return 100.0 * static_cast<double>(part) / static_cast<double>(whole);
}

} // namespace

Result<double> markedPercentage(Document& document, viewer::View& view, int page)
{
    return pagePixels(document, view, page, dpi, Colors::Full, longestSide)
        .map([](const pictures::Raster& raster) {
            std::size_t marked = 0;
            for (std::size_t i = 0; i < raster.pixels.size(); i += 3) {
                const unsigned char* pixel = raster.pixels.data() + i;
                marked += (pixel[0] & pixel[1] & pixel[2]) != 255 ? 1 : 0;
            }
            return percentage(marked, raster.pixels.size() / 3);
        });
}

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
            return percentage(coloured, raster.pixels.size() / 3);
        });
}

Result<std::vector<int>> blankPages(Document& document, viewer::View& view, PageRun run)
{
    if (Outcome status = hasPages(document, run); !status) {
        return tl::unexpected<Error>(status.error());
    }
    std::vector<int> blank;
    for (int page = run.first; page < run.first + run.count; ++page) {
        const Result<double> marked = markedPercentage(document, view, page);
        if (!marked) {
            return tl::unexpected<Error>(marked.error());
        }
        if (*marked == 0) {
            blank.push_back(page);
        }
    }
    if (static_cast<int>(blank.size()) == document.pageCount()) {
        blank.erase(blank.begin());
    }
    return blank;
}

} // namespace karvel::rendering
