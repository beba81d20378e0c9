#pragma once

#include "KarvelPDFLibrary/blankness/Cells.h"

#include <optional>

namespace karvel::blankness {

/// What the paper of a page is like.
struct Paper {
    double lightness = 0;  ///< 0 to 255, of its darkest channel but for its hue
    double unevenness = 0; ///< how much it changes over the page, away from the edges
    double grain = 0;      ///< the standard deviation of cells in quiet places
    double loudness = 0;   ///< the same where it is not so quiet, for comparison

    /// How far cells are from the paper, in the channel where it is most; darker ones are positive.
    Grid<std::int16_t> difference;

    /// The same in each channel, where there are several.
    std::vector<Grid<std::int16_t>> channels;
};

/// Takes the colour of the paper from the page, place by place, as what most of the surroundings
/// have; near the edges as it is further inside.
Paper paperOf(const Cells& cells);

} // namespace karvel::blankness
