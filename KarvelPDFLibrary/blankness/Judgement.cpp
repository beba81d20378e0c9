#include "KarvelPDFLibrary/blankness/Judgement.h"

#include "KarvelPDFLibrary/blankness/FaintMarks.h"
#include "KarvelPDFLibrary/blankness/Paper.h"
#include "KarvelPDFLibrary/blankness/Shadows.h"
#include "KarvelPDFLibrary/blankness/Spots.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace karvel::blankness {

namespace {

using pictures::Raster;

/// A page that is darker is something to see, whatever it is made of.
constexpr double darkestPaper = 96;

/// Lamps and bent paper make differences of this much.
constexpr double mostUneven = 48;

/// Marks fainter than this grain could not be told from it.
constexpr double coarsestGrain = 2.2;

/// Single specks have less; a dot of a third of a millimetre has more. In square
/// millimetres of black.
constexpr double leastInk = 0.07;

/// As large a place that is off by more than grain can be, however faintly, is a mark.
constexpr double leastPlace = 3.0;  // square millimetres
constexpr double leastChange = 1.6; // levels on average, so that ripples come to nothing

/// A pixel's channels, side by side.
using Colour = std::array<int, 3>;

Colour colourAt(const unsigned char* pixel, int channels)
{
    return channels == 3 ? Colour{pixel[0], pixel[1], pixel[2]} : Colour{pixel[0], 0, 0};
}

/// The level that most pixels have, in each channel.
Colour mostFrequent(const Raster& picture)
{
    const auto channels = static_cast<std::size_t>(picture.channels());
    std::array<std::array<std::uint32_t, 256>, 3> counts = {};
    for (std::size_t i = 0; i < picture.pixels.size(); i += channels) {
        for (std::size_t c = 0; c < channels; ++c) {
            ++counts[c][picture.pixels[i + c]];
        }
    }
    Colour colour = {};
    for (std::size_t c = 0; c < channels; ++c) {
        const auto most = std::max_element(counts[c].begin(), counts[c].end());
        colour[c] = static_cast<int>(most - counts[c].begin());
    }
    return colour;
}

struct Compared {
    Colour paper = {};
    std::size_t different = 0;
};

Compared compared(const Raster& picture)
{
    const int channels = picture.channels();
    Compared found;
    found.paper = mostFrequent(picture);
    const Colour& paper = found.paper;
    const bool isWhite =
        std::all_of(paper.begin(), paper.begin() + channels, [](int c) { return c == 255; });
    // What fills a page seldom ends where its last pixel does: there it is mixed with white.
    const auto isMixed = [&](const Colour& colour) {
        return !isWhite && colour[0] >= paper[0] && colour[1] >= paper[1] && colour[2] >= paper[2];
    };
    for (int y = 0; y < picture.height; ++y) {
        const unsigned char* pixel = picture.row(y);
        for (int x = 0; x < picture.width; ++x, pixel += channels) {
            const Colour colour = colourAt(pixel, channels);
            if (colour == paper) {
                continue;
            }
            const bool isLast =
                x == 0 || y == 0 || x + 1 == picture.width || y + 1 == picture.height;
            found.different += isLast && isMixed(colour) ? 0 : 1;
        }
    }
    return found;
}

/// How far from the paper a cell has to be for not being grain.
double thresholdFor(double grain)
{
    // Compression makes steps of two by itself.
    const double faintest = std::clamp(2.5 + 12 * grain, 2.5, 5.5);
    return std::max(faintest, 6 * grain);
}

Judgement& marked(Judgement& judgement, Finding finding, double percent)
{
    judgement.finding = finding;
    judgement.marked = std::clamp(percent, 1e-4, 100.0);
    return judgement;
}

/// Whether a spot goes on over the edge, or in a shadow that was taken out and is no weaker.
bool goesOnInShadow(const TakenOut& shadows, const Paper& paper, const Spot& spot, int threshold)
{
    const Grid<std::int16_t>& before = shadows.before;
    for (int y = spot.top - 1; y <= spot.bottom + 1; ++y) {
        for (int x = spot.left - 1; x <= spot.right + 1; ++x) {
            const bool isOnPage = x >= 0 && y >= 0 && x < before.width && y < before.height;
            if (!isOnPage || (2 * std::abs(before.at(x, y)) >= spot.strongest &&
                              std::abs(paper.difference.at(x, y)) <= threshold)) {
                return true;
            }
        }
    }
    return false;
}

/// What is left of a page's corner where two shadows meet, or where it is bent or round: within
/// 7 mm of both edges, 2.5 mm of one, and beside a bar.
bool isCorner(const Cells& cells, const Spot& spot, const std::array<bool, 4>& bars)
{
    const int corner = cells.across(7);
    const int edge = cells.across(2.5);
    const int fromRight = cells.width() - 1 - spot.right;
    const int fromBottom = cells.height() - 1 - spot.bottom;
    const bool isLeft = spot.right < corner;
    const bool isRight = cells.width() - 1 - spot.left < corner;
    const bool isTop = spot.bottom < corner;
    const bool isBottom = cells.height() - 1 - spot.top < corner;
    const int nearest = std::min({spot.left, spot.top, fromRight, fromBottom});
    return (isLeft || isRight) && (isTop || isBottom) && nearest < edge &&
           (bars[isLeft ? 0 : 1] || bars[isTop ? 2 : 3]);
}

Judgement judgedAllowingNoise(const Raster& picture, Judgement judgement)
{
    const Cells cells = cellsOf(picture);
    Paper paper = paperOf(cells);
    if (paper.lightness < darkestPaper) {
        return marked(judgement, Finding::DarkPaper, 100);
    }
    const double threshold = thresholdFor(std::min(paper.grain, coarsestGrain));
    const TakenOut shadows = takeShadowsOut(cells, paper.lightness, threshold, paper.difference);
    std::vector<Spot> spots = spotsOf(cells, paper, threshold);
    leavePunchHolesOut(cells, spots, paper.difference);
    const double whole = static_cast<double>(cells.width()) * cells.height();
    const double cellArea = cells.millimetres * cells.millimetres;
    double inMarks = 0;
    for (const Spot& spot : spots) {
        const double place = spot.cells * cellArea;
        const bool isOfShadows = isCorner(cells, spot, shadows.bars) &&
                                 goesOnInShadow(shadows, paper, spot, static_cast<int>(threshold));
        if (!isOfShadows &&
            (spot.ink >= leastInk ||
             (place >= leastPlace && spot.ink * paper.lightness >= leastChange * place))) {
            inMarks += spot.cells;
        }
    }
    if (inMarks > 0) {
        return marked(judgement, Finding::Marks, 100 * inMarks / whole);
    }
    if (paper.unevenness > mostUneven) {
        return marked(judgement, Finding::UnevenPaper, 100);
    }
    if (paper.grain > coarsestGrain || paper.loudness > 2.5 * paper.grain + 1) {
        return marked(judgement, Finding::CoarseNoise, 100);
    }
    if (const double faint =
            faintlyMarked(cells, paper.difference, paper.grain, static_cast<int>(threshold));
        faint > 0) {
        return marked(judgement, Finding::PaleMarks, faint);
    }
    return judgement;
}

} // namespace

Judgement judged(const Raster& picture, Allowing allowing)
{
    Judgement judgement;
    if (picture.width < 1 || picture.height < 1) {
        return judgement;
    }
    const Compared found = compared(picture);
    judgement.different = picture.percentage(found.different);
    if (found.different == 0 || allowing == Allowing::Nothing) {
        const auto& paper = found.paper;
        if (found.different > 0) {
            return marked(judgement, Finding::Marks, judgement.different);
        }
        if (*std::max_element(paper.begin(), paper.begin() + picture.channels()) < darkestPaper) {
            return marked(judgement, Finding::DarkPaper, 100);
        }
        return judgement;
    }
    return judgedAllowingNoise(picture, judgement);
}

bool isClearlyMarked(const Raster& picture, int rows)
{
    constexpr double beyondShadowsAndHoles = 25; // millimetres
    constexpr double clear = 150;                // square millimetres
    constexpr int dark = 60;
    const double pixel = 25.4 / picture.dpi;
    const int margin = static_cast<int>(beyondShadowsAndHoles / pixel);
    const int channels = picture.channels();
    std::array<std::size_t, 256> counts = {};
    for (int y = margin; y < std::min(rows, picture.height - margin); ++y) {
        const unsigned char* row = picture.row(y);
        for (int x = margin; x < picture.width - margin; ++x) {
            ++counts[row[x * channels + channels / 2]];
        }
    }
    const auto paper = std::max_element(counts.begin(), counts.end()) - counts.begin();
    std::size_t darker = 0;
    for (std::ptrdiff_t value = 0; value < paper - dark; ++value) {
        darker += counts[static_cast<std::size_t>(value)];
    }
    return static_cast<double>(darker) * pixel * pixel > clear;
}

} // namespace karvel::blankness
