#pragma once

#include "KarvelPDFLibrary/blankness/Cells.h"

#include <array>

namespace karvel::blankness {

struct TakenOut {
    std::array<bool, 4> bars = {}; ///< which edges have a bar: left, right, top, bottom
    Grid<std::int16_t> before;     ///< the differences as they were
};

/// Takes out of a page's differences from its paper what shadows along its edges make of them: bars
/// that reach as far everywhere or like a wedge, as a page that lies at an angle has them, and what
/// fades inward and is the same all along the edge. They have no hue of their own and get weaker
/// inward all the way. What sticks out of them, stands in them or beside them remains. `lightness`
/// is that of the paper.
TakenOut takeShadowsOut(const Cells& cells, double lightness, double threshold,
                        Grid<std::int16_t>& difference);

} // namespace karvel::blankness
