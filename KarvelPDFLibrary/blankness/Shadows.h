#pragma once

#include "KarvelPDFLibrary/blankness/Cells.h"

#include <array>

namespace karvel::blankness {

/// Takes out of a page's differences from its paper what shadows along its edges make of them: bars
/// that reach as far everywhere or like a wedge, as a page that lies at an angle has them, and what
/// fades inward and is the same all along the edge. What sticks out of them or stands in them
/// remains. `lightness` is that of the paper.
/// Returns which edges have a bar: left, right, top, bottom.
std::array<bool, 4> takeShadowsOut(const Cells& cells, double lightness, double threshold,
                                   Grid<std::int16_t>& difference);

} // namespace karvel::blankness
