#pragma once

#include "KarvelPDFLibrary/blankness/Cells.h"

namespace karvel::blankness {

/// How much of a page, in percent, lies in places that are darker or lighter than elsewhere, though
/// no cell is off by more than the threshold: faint lines of text, lines along or across the page,
/// shades.
double faintlyMarked(const Cells& cells, const Grid<std::int16_t>& difference, double grain,
                     int threshold);

} // namespace karvel::blankness
