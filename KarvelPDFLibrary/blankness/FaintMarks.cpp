#include "KarvelPDFLibrary/blankness/FaintMarks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace karvel::blankness {

namespace {

/// Sums over rectangles of how far cells differ from the paper, but for those that tell by
/// themselves.
class Sums {
public:
    Sums(const Grid<std::int16_t>& difference, int threshold)
        : sums_(difference.width + 1, difference.height + 1)
    {
        for (int y = 0; y < difference.height; ++y) {
            std::uint32_t row = 0;
            for (int x = 0; x < difference.width; ++x) {
                const int strength = std::abs(difference.at(x, y));
                row += strength <= threshold ? static_cast<std::uint32_t>(strength) : 0;
                sums_.at(x + 1, y + 1) = sums_.at(x + 1, y) + row;
            }
        }
    }

    /// The means over windows of a size, laid out by a step.
    std::vector<double> means(int width, int height, int stepX, int stepY) const
    {
        std::vector<double> all;
        for (int y = 0; y + height < sums_.height; y += stepY) {
            for (int x = 0; x + width < sums_.width; x += stepX) {
                const std::uint32_t sum = sums_.at(x + width, y + height) -
                                          sums_.at(x, y + height) - sums_.at(x + width, y) +
                                          sums_.at(x, y);
                all.push_back(static_cast<double>(sum) / (width * height));
            }
        }
        return all;
    }

private:
    Grid<std::uint32_t> sums_;
};

double quantile(std::vector<double>& sorted, double share)
{
    return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

struct Window {
    double width; // millimetres; 0 is one cell
    double height;
    double least; // how much more than elsewhere is a mark, where the paper has grain
};

/// What shines through from the other side makes lines of text darker by 2.
constexpr Window windows[] = {{12, 2.5, 3}, {2.5, 12, 3}, {6, 6, 3}, {30, 0, 2.5}, {0, 30, 2.5}};

constexpr double grainOfScans = 0.4;

/// Grain is different in every cell; what spans several makes more of a difference to the paper
/// than to the cell beside it.
bool isCoarserThanGrain(const Cells& cells, const Grid<std::int16_t>& difference, double grain,
                        int threshold)
{
    constexpr double shinesThrough = 2.5;
    const int margin = cells.margin();
    double sum = 0;
    for (int y = margin; y < difference.height - margin; ++y) {
        for (int x = margin; x < difference.width - margin; ++x) {
            const int strength = std::abs(difference.at(x, y));
            sum += strength <= threshold ? strength * strength : 0;
        }
    }
    const double count = double(difference.width - 2 * margin) * (difference.height - 2 * margin);
    return std::sqrt(sum / std::max(1.0, count)) > 1.5 * grain + shinesThrough;
}

} // namespace

double faintlyMarked(const Cells& cells, const Grid<std::int16_t>& difference, double grain,
                     int threshold)
{
    if (isCoarserThanGrain(cells, difference, grain, threshold)) {
        return 100;
    }
    const Sums sums(difference, threshold);
    double most = 0;
    for (const Window& window : windows) {
        const int width = window.width > 0 ? cells.across(window.width) : 1;
        const int height = window.height > 0 ? cells.across(window.height) : 1;
        std::vector<double> means =
            sums.means(width, height, std::max(1, width / 2), std::max(1, height / 2));
        if (means.empty()) {
            continue;
        }
        std::sort(means.begin(), means.end());
        const double typical = quantile(means, 0.5);
        // What is the same everywhere is the grain, and comes to four fifths of its deviation.
        const double expected = std::min(typical, 0.8 * grain + 2);
        const double spread = (quantile(means, 0.75) - quantile(means, 0.25)) / 1.35;
        const double least = window.least * std::clamp(grain / grainOfScans, 0.5, 1.0);
        const double bound = expected + std::max(least, 8 * std::min(spread, 1.0));
        const auto marked = means.end() - std::upper_bound(means.begin(), means.end(), bound);
        most =
            std::max(most, 100.0 * static_cast<double>(marked) / static_cast<double>(means.size()));
    }
    return most;
}

} // namespace karvel::blankness
