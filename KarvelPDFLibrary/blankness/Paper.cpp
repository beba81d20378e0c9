#include "KarvelPDFLibrary/blankness/Paper.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace karvel::blankness {

namespace {

constexpr double tileSide = 10; // millimetres

/// Tiles over the page, all of one size but for those at the right and below.
struct Tiling {
    int side = 1;
    int columns = 1;
    int rows = 1;
    int edge = 1; // tiles at each edge that shadows may reach

    explicit Tiling(const Cells& cells)
        : side(std::max(4, cells.across(tileSide))), columns(std::max(1, cells.width() / side)),
          rows(std::max(1, cells.height() / side)),
          edge(std::min((cells.margin() + side - 1) / side, (std::min(columns, rows) - 1) / 2))
    {
    }

    bool isInner(int column, int row) const
    {
        return column >= edge && column < columns - edge && row >= edge && row < rows - edge;
    }
};

std::uint8_t medianOf(const Grid<std::uint8_t>& channel, int left, int top, int right, int bottom)
{
    std::array<int, 256> counts = {};
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            ++counts[channel.at(x, y)];
        }
    }
    int above = (right - left) * (bottom - top) / 2;
    std::size_t value = 0;
    while ((above -= counts[value]) >= 0 && value < 255) {
        ++value;
    }
    return static_cast<std::uint8_t>(value);
}

std::uint8_t levelOf(double value)
{
    return static_cast<std::uint8_t>(std::clamp(value + 0.5, 0.0, 255.0));
}

/// How much lighter the paper gets from tile to tile.
struct Slope {
    double across = 0;
    double down = 0;
};

Slope slopeOf(const Grid<std::uint8_t>& medians, const Tiling& tiling)
{
    // The places of tiles across and down don't depend on each other: each has a sum of its own.
    const double middleX = (tiling.columns - 1) / 2.0;
    const double middleY = (tiling.rows - 1) / 2.0;
    Slope slope;
    double squareX = 0;
    double squareY = 0;
    for (int row = tiling.edge; row < tiling.rows - tiling.edge; ++row) {
        for (int column = tiling.edge; column < tiling.columns - tiling.edge; ++column) {
            slope.across += (column - middleX) * medians.at(column, row);
            slope.down += (row - middleY) * medians.at(column, row);
            squareX += (column - middleX) * (column - middleX);
            squareY += (row - middleY) * (row - middleY);
        }
    }
    slope.across = squareX > 0 ? slope.across / squareX : 0;
    slope.down = squareY > 0 ? slope.down / squareY : 0;
    return slope;
}

/// The medians of tiles, each then replaced by the median of those around it, and those near the
/// edges by what the ones further inside let expect.
Grid<std::uint8_t> paperTiles(const Grid<std::uint8_t>& channel, const Tiling& tiling)
{
    Grid<std::uint8_t> medians(tiling.columns, tiling.rows);
    for (int row = 0; row < tiling.rows; ++row) {
        for (int column = 0; column < tiling.columns; ++column) {
            const int left = column * tiling.side;
            const int top = row * tiling.side;
            medians.at(column, row) =
                medianOf(channel, left, top, std::min(left + tiling.side, channel.width),
                         std::min(top + tiling.side, channel.height));
        }
    }
    // The middle one of a few tiles is taken of what they are off a slope, which would pull it.
    const Slope slope = slopeOf(medians, tiling);
    constexpr int zero = 128;
    Grid<std::uint8_t> offSlope(tiling.columns, tiling.rows);
    const double middle = medians.at(tiling.columns / 2, tiling.rows / 2);
    const auto planeAt = [&](int column, int row) {
        return middle + slope.across * (column - tiling.columns / 2) +
               slope.down * (row - tiling.rows / 2);
    };
    for (int row = 0; row < tiling.rows; ++row) {
        for (int column = 0; column < tiling.columns; ++column) {
            offSlope.at(column, row) =
                levelOf(medians.at(column, row) - planeAt(column, row) + zero);
        }
    }
    Grid<std::uint8_t> paper(tiling.columns, tiling.rows);
    for (int row = 0; row < tiling.rows; ++row) {
        for (int column = 0; column < tiling.columns; ++column) {
            const int x = std::clamp(column, tiling.edge, tiling.columns - 1 - tiling.edge);
            const int y = std::clamp(row, tiling.edge, tiling.rows - 1 - tiling.edge);
            const int off =
                medianOf(offSlope, std::max(x - 1, tiling.edge), std::max(y - 1, tiling.edge),
                         std::min(x + 2, tiling.columns - tiling.edge),
                         std::min(y + 2, tiling.rows - tiling.edge));
            paper.at(column, row) = levelOf(planeAt(column, row) + off - zero);
        }
    }
    return paper;
}

/// Where a cell lies between the middles of tiles: the tile before and the share of the one after.
struct Between {
    int before = 0;
    int after = 0;
    int share = 0; // of 256
};

std::vector<Between> betweenTiles(int cells, int side, int tiles)
{
    std::vector<Between> places(static_cast<std::size_t>(cells));
    for (int i = 0; i < cells; ++i) {
        const double place = std::clamp((i + 0.5) / side - 0.5, 0.0, tiles - 1.0);
        const int before = static_cast<int>(place);
        places[static_cast<std::size_t>(i)] = {before, std::min(before + 1, tiles - 1),
                                               static_cast<int>((place - before) * 256)};
    }
    return places;
}

/// How far a channel is from its paper.
Grid<std::int16_t> differenceOf(const Grid<std::uint8_t>& channel, const Grid<std::uint8_t>& tiles,
                                const Tiling& tiling)
{
    const auto columns = betweenTiles(channel.width, tiling.side, tiling.columns);
    const auto rows = betweenTiles(channel.height, tiling.side, tiling.rows);
    std::vector<int> line(static_cast<std::size_t>(tiling.columns));
    Grid<std::int16_t> difference(channel.width, channel.height);
    for (int y = 0; y < channel.height; ++y) {
        const Between& row = rows[static_cast<std::size_t>(y)];
        for (int column = 0; column < tiling.columns; ++column) {
            line[static_cast<std::size_t>(column)] =
                tiles.at(column, row.before) * (256 - row.share) +
                tiles.at(column, row.after) * row.share;
        }
        for (int x = 0; x < channel.width; ++x) {
            const Between& column = columns[static_cast<std::size_t>(x)];
            const int paper =
                (line[static_cast<std::size_t>(column.before)] * (256 - column.share) +
                 line[static_cast<std::size_t>(column.after)] * column.share) /
                256;
            const int away =
                (paper - channel.at(x, y) * 256 + (paper > channel.at(x, y) * 256 ? 128 : -128)) /
                256;
            difference.at(x, y) = static_cast<std::int16_t>(away);
        }
    }
    return difference;
}

/// The standard deviation of cells within each inner tile, told from neighbours, so that shades do
/// not count.
void addGrain(const Grid<std::uint8_t>& channel, const Tiling& tiling, Paper& paper)
{
    std::vector<double> deviations;
    for (int row = 0; row < tiling.rows; ++row) {
        for (int column = 0; column < tiling.columns; ++column) {
            if (!tiling.isInner(column, row)) {
                continue;
            }
            const int left = column * tiling.side;
            const int top = row * tiling.side;
            const int right = std::min(left + tiling.side, channel.width - 1);
            const int bottom = std::min(top + tiling.side, channel.height);
            long sum = 0;
            for (int y = top; y < bottom; ++y) {
                for (int x = left; x < right; ++x) {
                    const int step = channel.at(x + 1, y) - channel.at(x, y);
                    sum += static_cast<long>(step) * step;
                }
            }
            const int count = std::max(1, (right - left) * (bottom - top));
            deviations.push_back(std::sqrt(static_cast<double>(sum) / count / 2));
        }
    }
    std::sort(deviations.begin(), deviations.end());
    if (!deviations.empty()) {
        paper.grain = std::max(paper.grain, deviations[deviations.size() / 4]);
        paper.loudness = std::max(paper.loudness, deviations[deviations.size() * 3 / 4]);
    }
}

Grid<std::int16_t> strongestOf(const std::vector<Grid<std::int16_t>>& channels)
{
    Grid<std::int16_t> strongest = channels.front();
    for (std::size_t c = 1; c < channels.size(); ++c) {
        for (std::size_t i = 0; i < strongest.values.size(); ++i) {
            const std::int16_t value = channels[c].values[i];
            if (std::abs(value) > std::abs(strongest.values[i])) {
                strongest.values[i] = value;
            }
        }
    }
    return strongest;
}

} // namespace

Paper paperOf(const Cells& cells)
{
    const Tiling tiling(cells);
    Paper paper;
    for (const Grid<std::uint8_t>& channel : cells.channels) {
        const Grid<std::uint8_t> tiles = paperTiles(channel, tiling);
        const auto [darkest, lightest] =
            std::minmax_element(tiles.values.begin(), tiles.values.end());
        paper.unevenness = std::max(paper.unevenness, double(*lightest) - *darkest);
        paper.lightness = std::max(paper.lightness, double(*darkest));
        paper.channels.push_back(differenceOf(channel, tiles, tiling));
        addGrain(channel, tiling, paper);
    }
    if (paper.channels.size() == 1) {
        paper.difference = std::move(paper.channels.front());
        paper.channels.clear();
    } else {
        paper.difference = strongestOf(paper.channels);
    }
    return paper;
}

} // namespace karvel::blankness
