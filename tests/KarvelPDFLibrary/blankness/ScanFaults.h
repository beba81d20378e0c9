#pragma once

#include "tests/KarvelPDFLibrary/blankness/Sheet.h"

namespace labelled {

/// What a scanner does to a page, besides grain.
enum Fault : unsigned {
    Bars = 1U,
    Wedges = 2U,
    Holes = 4U,
    Bleed = 8U,
    Lamp = 16U,
    Dust = 32U,
};

/// Faults that may come together; of pages that are black or white, fewer.
unsigned anyFaults(bool isBilevel, Random& random);

/// Puts faults, a sum of Fault, on a sheet; Bleed is under what is printed, and so not among them.
void scan(Sheet& sheet, unsigned faults, Random& random);

} // namespace labelled
