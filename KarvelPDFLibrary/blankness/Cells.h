#pragma once

#include "KarvelPDFLibrary/pictures/Raster.h"

#include <cstdint>
#include <vector>

namespace karvel::blankness {

/// A value for each cell of a page: a square of about half a millimetre.
template <class Value>
struct Grid {
    int width = 0;
    int height = 0;
    std::vector<Value> values;

    Grid() = default;
    Grid(int columns, int rows, Value value = {})
        : width(columns), height(rows),
          values(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), value)
    {
    }

    Value& at(int x, int y) { return values[index(x, y)]; }
    const Value& at(int x, int y) const { return values[index(x, y)]; }

    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
};

/// A page in cells: their colours by channel, and how large they are.
struct Cells {
    std::vector<Grid<std::uint8_t>> channels; // one or three
    double millimetres = 0.5;                 // a cell's side

    int width() const { return channels.front().width; }
    int height() const { return channels.front().height; }

    /// The cells that a length spans, one at least.
    int across(double length) const;

    /// How far from the edges shadows may reach, in cells.
    int margin() const;
};

/// The means of a picture over cells; a picture whose pixels are as large already is taken as it
/// is.
Cells cellsOf(const pictures::Raster& picture);

} // namespace karvel::blankness
