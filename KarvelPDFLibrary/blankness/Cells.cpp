#include "KarvelPDFLibrary/blankness/Cells.h"

#include <algorithm>
#include <cmath>

namespace karvel::blankness {

namespace {

constexpr double finestDpi = 45;
constexpr double millimetresPerInch = 25.4;

} // namespace

int Cells::across(double length) const
{
    return std::max(1, static_cast<int>(std::lround(length / millimetres)));
}

int Cells::margin() const
{
    constexpr double widestShadow = 15; // millimetres
    return std::min(across(widestShadow), std::min(width(), height()) / 7);
}

Cells cellsOf(const pictures::Raster& picture)
{
    const int side = std::max(1, static_cast<int>(std::lround(picture.dpi / finestDpi)));
    const int channels = picture.channels();
    // What is left at the right and below belongs to the last cells.
    const int columns = std::max(1, picture.width / side);
    const int rows = std::max(1, picture.height / side);
    Cells cells;
    cells.millimetres = millimetresPerInch * side / picture.dpi;
    cells.channels.assign(static_cast<std::size_t>(channels), Grid<std::uint8_t>(columns, rows));
    std::vector<unsigned> sums(static_cast<std::size_t>(columns * channels));
    for (int row = 0; row < rows; ++row) {
        const int first = row * side;
        const int last = row + 1 == rows ? picture.height : first + side;
        std::fill(sums.begin(), sums.end(), 0);
        for (int y = first; y < last; ++y) {
            const unsigned char* in = picture.row(y);
            for (int x = 0; x < picture.width; ++x) {
                const int column = std::min(x / side, columns - 1);
                for (int c = 0; c < channels; ++c) {
                    sums[static_cast<std::size_t>(column * channels + c)] += *in++;
                }
            }
        }
        for (int column = 0; column < columns; ++column) {
            const int wide = column + 1 == columns ? picture.width - column * side : side;
            const auto pixels = static_cast<unsigned>(wide * (last - first));
            for (int c = 0; c < channels; ++c) {
                const unsigned sum = sums[static_cast<std::size_t>(column * channels + c)];
                cells.channels[static_cast<std::size_t>(c)].at(column, row) =
                    static_cast<std::uint8_t>((sum + pixels / 2) / pixels);
            }
        }
    }
    return cells;
}

} // namespace karvel::blankness
