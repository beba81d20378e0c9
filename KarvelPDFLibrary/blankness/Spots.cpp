#include "KarvelPDFLibrary/blankness/Spots.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace karvel::blankness {

namespace {

/// What compression makes around sharp borders.
constexpr double ripplesReach = 3; // millimetres
constexpr int strongestRipple = 15;

class Tracer {
public:
    Tracer(const Cells& cells, const Paper& paper, double threshold)
        : difference_(paper.difference), channels_(paper.channels),
          threshold_(static_cast<int>(threshold)), seen_(difference_.width, difference_.height),
          inkOfLevel_(cells.millimetres * cells.millimetres / paper.lightness)
    {
    }

    bool isOpen(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < difference_.width && y < difference_.height &&
               std::abs(difference_.at(x, y)) > threshold_ && seen_.at(x, y) == 0;
    }

    Spot trace(int x, int y)
    {
        Spot spot{x, y, x, y};
        members_.clear();
        sums_ = {};
        take(x, y);
        for (std::size_t next = 0; next < members_.size(); ++next) {
            const auto [atX, atY] = members_[next];
            const int strength = std::abs(difference_.at(atX, atY));
            spot.strongest = std::max(spot.strongest, strength);
            spot.left = std::min(spot.left, atX);
            spot.right = std::max(spot.right, atX);
            spot.top = std::min(spot.top, atY);
            spot.bottom = std::max(spot.bottom, atY);
            for (int beside = 0; beside < 9; ++beside) {
                const int besideX = atX + beside % 3 - 1;
                const int besideY = atY + beside / 3 - 1;
                if (isOpen(besideX, besideY)) {
                    take(besideX, besideY);
                }
            }
        }
        spot.cells = static_cast<int>(members_.size());
        spot.ink = ink();
        spot.isRound = isRound(spot);
        return spot;
    }

private:
    void take(int x, int y)
    {
        seen_.at(x, y) = 1;
        members_.emplace_back(x, y);
        addInk(x, y);
    }

    /// Sums in each channel by itself, as a colour may be darker in one and lighter in another.
    /// What shadows explain, they do in all channels alike.
    void addInk(int x, int y)
    {
        const int difference = difference_.at(x, y);
        if (channels_.empty()) {
            sums_[0] += difference;
            return;
        }
        int most = 0;
        for (const Grid<std::int16_t>& channel : channels_) {
            most = std::abs(channel.at(x, y)) > std::abs(most) ? channel.at(x, y) : most;
        }
        for (std::size_t c = 0; c < channels_.size(); ++c) {
            sums_[c] += channels_[c].at(x, y) - most + difference;
        }
    }

    /// Ripples come to nothing in it.
    double ink() const
    {
        const auto [least, most] = std::minmax_element(sums_.begin(), sums_.end());
        return static_cast<double>(std::max(std::abs(*least), std::abs(*most))) * inkOfLevel_;
    }

    /// Whether nothing is in a circle but one shade.
    bool isEvenInside(double middleX, double middleY, double radius) const
    {
        int least = 255;
        int most = -255;
        const int right = std::min(int(middleX + radius), difference_.width - 1);
        const int bottom = std::min(int(middleY + radius), difference_.height - 1);
        for (int y = std::max(0, int(middleY - radius)); y <= bottom; ++y) {
            for (int x = std::max(0, int(middleX - radius)); x <= right; ++x) {
                if (std::hypot(x - middleX, y - middleY) <= radius) {
                    least = std::min<int>(least, difference_.at(x, y));
                    most = std::max<int>(most, difference_.at(x, y));
                }
            }
        }
        return most - least <= 2 * strongestRipple;
    }

    /// Whether the cells fill a circle, or its line, but for faint ones around it.
    bool isRound(Spot& spot) const
    {
        Spot core{spot.right, spot.bottom, spot.left, spot.top};
        const auto isStrong = [&](const auto& cell) {
            return 3 * std::abs(difference_.at(cell.first, cell.second)) >= spot.strongest;
        };
        for (const auto& cell : members_) {
            if (isStrong(cell)) {
                core.left = std::min(core.left, cell.first);
                core.right = std::max(core.right, cell.first);
                core.top = std::min(core.top, cell.second);
                core.bottom = std::max(core.bottom, cell.second);
                ++core.cells;
            }
        }
        constexpr int ripples = 4;
        const int side = std::max(core.width(), core.height());
        if (std::abs(core.width() - core.height()) > 1 + side / 6 || core.cells * 3 < side * side ||
            spot.width() > core.width() + 2 * ripples ||
            spot.height() > core.height() + 2 * ripples) {
            return false;
        }
        const double radius = side / 2.0 + 0.6;
        const double middleX = (core.left + core.right) / 2.0;
        const double middleY = (core.top + core.bottom) / 2.0;
        for (const auto& cell : members_) {
            const double away = std::hypot(cell.first - middleX, cell.second - middleY);
            const int strength = std::abs(difference_.at(cell.first, cell.second));
            if ((away > radius && isStrong(cell)) ||
                (away > radius + 1 && strength > strongestRipple)) {
                return false;
            }
        }
        if (!isEvenInside(middleX, middleY, radius - 2)) {
            return false;
        }
        spot.left = core.left;
        spot.right = core.right;
        spot.top = core.top;
        spot.bottom = core.bottom;
        return true;
    }

    const Grid<std::int16_t>& difference_;
    const std::vector<Grid<std::int16_t>>& channels_;
    int threshold_;
    Grid<std::uint8_t> seen_;
    double inkOfLevel_;
    std::array<long, 3> sums_ = {};
    std::vector<std::pair<int, int>> members_;
};

/// Where a spot lies, seen from an edge; in millimetres.
struct Place {
    double along = 0; // from the edge's middle
    double depth = 0;
};

Place placeFrom(int edge, const Cells& cells, const Spot& spot)
{
    const double x = (spot.left + spot.right + 1) / 2.0 * cells.millimetres;
    const double y = (spot.top + spot.bottom + 1) / 2.0 * cells.millimetres;
    const double width = cells.width() * cells.millimetres;
    const double height = cells.height() * cells.millimetres;
    const Place places[] = {{y - height / 2, x},
                            {y - height / 2, width - x},
                            {x - width / 2, y},
                            {x - width / 2, height - y}};
    return places[edge];
}

/// ISO 838: holes of 6 mm whose middles are 12 mm from the edge; ring binders have 5 to 8.
bool hasAHolesSize(const Cells& cells, const Spot& spot)
{
    const double side = std::max(spot.width(), spot.height()) * cells.millimetres;
    return spot.isRound && side >= 4 && side <= 9 && spot.strongest >= 30;
}

bool mirrorEachOther(const Place& one, const Place& other)
{
    constexpr double offCentre = 14;
    const double least = std::min(one.depth, other.depth);
    const double most = std::max(one.depth, other.depth);
    return least >= 5 && most <= 20 && most - least <= 4 &&
           std::abs(one.along + other.along) <= offCentre &&
           std::abs(one.along - other.along) >= 2 * offCentre;
}

bool areHoles(const Cells& cells, const Spot& one, const Spot& other)
{
    for (int edge = 0; edge < 4; ++edge) {
        if (mirrorEachOther(placeFrom(edge, cells, one), placeFrom(edge, cells, other))) {
            return true;
        }
    }
    return false;
}

void clearAround(const Cells& cells, const Spot& hole, Grid<std::int16_t>& difference)
{
    const int near = cells.across(ripplesReach);
    for (int y = std::max(0, hole.top - near);
         y <= std::min(difference.height - 1, hole.bottom + near); ++y) {
        for (int x = std::max(0, hole.left - near);
             x <= std::min(difference.width - 1, hole.right + near); ++x) {
            const bool isWithin =
                x >= hole.left && x <= hole.right && y >= hole.top && y <= hole.bottom;
            if (isWithin || std::abs(difference.at(x, y)) <= strongestRipple) {
                difference.at(x, y) = 0;
            }
        }
    }
}

bool isRippleOf(const Cells& cells, const Spot& hole, const Spot& spot)
{
    const int near = cells.across(ripplesReach);
    return spot.strongest <= strongestRipple && spot.left >= hole.left - near &&
           spot.right <= hole.right + near && spot.top >= hole.top - near &&
           spot.bottom <= hole.bottom + near;
}

} // namespace

std::vector<Spot> spotsOf(const Cells& cells, const Paper& paper, double threshold)
{
    Tracer tracer(cells, paper, threshold);
    const Grid<std::int16_t>& difference = paper.difference;
    std::vector<Spot> spots;
    for (int y = 0; y < difference.height; ++y) {
        for (int x = 0; x < difference.width; ++x) {
            if (tracer.isOpen(x, y)) {
                spots.push_back(tracer.trace(x, y));
            }
        }
    }
    return spots;
}

void leavePunchHolesOut(const Cells& cells, std::vector<Spot>& spots,
                        Grid<std::int16_t>& difference)
{
    std::vector<Spot> round;
    std::copy_if(spots.begin(), spots.end(), std::back_inserter(round),
                 [&](const Spot& spot) { return hasAHolesSize(cells, spot); });
    constexpr std::size_t mostHoles = 40; // of a spiral; more are something else
    if (round.size() > mostHoles) {
        return;
    }
    std::vector<Spot> holes;
    for (const Spot& spot : round) {
        if (std::any_of(round.begin(), round.end(),
                        [&](const Spot& other) { return areHoles(cells, spot, other); })) {
            holes.push_back(spot);
        }
    }
    const auto isExplained = [&](const Spot& spot) {
        return std::any_of(holes.begin(), holes.end(), [&](const Spot& hole) {
            return (hole.left == spot.left && hole.top == spot.top) ||
                   isRippleOf(cells, hole, spot);
        });
    };
    spots.erase(std::remove_if(spots.begin(), spots.end(), isExplained), spots.end());
    for (const Spot& hole : holes) {
        clearAround(cells, hole, difference);
    }
}

} // namespace karvel::blankness
