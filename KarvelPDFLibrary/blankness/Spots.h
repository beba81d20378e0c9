#pragma once

#include "KarvelPDFLibrary/blankness/Paper.h"

#include <vector>

namespace karvel::blankness {

/// Cells beside each other that differ from the paper.
struct Spot {
    int left = 0;
    int top = 0;
    int right = 0; // within
    int bottom = 0;
    int cells = 0;
    double ink = 0;    ///< square millimetres of black that would change the paper as much
    int strongest = 0; ///< difference from the paper, 0 to 255
    bool isRound = false;

    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
};

/// All spots that differ from the paper by more than a threshold.
std::vector<Spot> spotsOf(const Cells& cells, const Paper& paper, double threshold);

/// Removes the spots that are punch holes and what they make of the differences, with the ripples
/// that compression makes around them: round, as large as such are, along one edge at equal
/// distances from its middle.
void leavePunchHolesOut(const Cells& cells, std::vector<Spot>& spots,
                        Grid<std::int16_t>& difference);

} // namespace karvel::blankness
