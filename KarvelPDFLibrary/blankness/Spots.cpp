#include "KarvelPDFLibrary/blankness/Spots.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace karvel::blankness {

namespace {

class Tracer {
public:
    Tracer(const Cells& cells, const Grid<std::int16_t>& difference, double threshold)
        : difference_(difference), threshold_(static_cast<int>(threshold)),
          seen_(difference.width, difference.height),
          inkOfLevel_(cells.millimetres * cells.millimetres / 255)
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
        take(x, y);
        for (std::size_t next = 0; next < members_.size(); ++next) {
            const auto [atX, atY] = members_[next];
            const int strength = std::abs(difference_.at(atX, atY));
            spot.ink += difference_.at(atX, atY) * inkOfLevel_; // ripples come to nothing
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
        spot.ink = std::abs(spot.ink);
        spot.isRound = isRound(spot);
        return spot;
    }

private:
    void take(int x, int y)
    {
        seen_.at(x, y) = 1;
        members_.emplace_back(x, y);
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
            if (isStrong(cell) &&
                std::hypot(cell.first - middleX, cell.second - middleY) > radius) {
                return false;
            }
        }
        spot.left = core.left;
        spot.right = core.right;
        spot.top = core.top;
        spot.bottom = core.bottom;
        return true;
    }

    const Grid<std::int16_t>& difference_;
    int threshold_;
    Grid<std::uint8_t> seen_;
    double inkOfLevel_;
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

constexpr double ripplesReach = 3; // millimetres
constexpr int strongestRipple = 25;

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

std::vector<Spot> spotsOf(const Cells& cells, const Grid<std::int16_t>& difference,
                          double threshold)
{
    Tracer tracer(cells, difference, threshold);
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
