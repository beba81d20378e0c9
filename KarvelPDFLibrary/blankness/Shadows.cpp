#include "KarvelPDFLibrary/blankness/Shadows.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <vector>

namespace karvel::blankness {

namespace {

/// A page seen from one of its edges: a place along the edge, and how deep below it.
class FromEdge {
public:
    FromEdge(const Grid<std::int16_t>& grid, int edge) : grid_(grid), edge_(edge) {}

    bool isUpright() const { return edge_ < 2; } // left, right
    int length() const { return isUpright() ? grid_.height : grid_.width; }

    int value(int along, int depth) const { return valueIn(grid_, along, depth); }

    /// In a grid of the same size.
    template <class Value>
    int valueIn(const Grid<Value>& grid, int along, int depth) const
    {
        const int other = (isUpright() ? grid.width : grid.height) - 1 - depth;
        const int across = edge_ % 2 == 0 ? depth : other;
        return isUpright() ? grid.at(across, along) : grid.at(along, across);
    }

    int along(int x, int y) const { return isUpright() ? y : x; }
    int depth(int x, int y) const
    {
        const int across = isUpright() ? x : y;
        return edge_ % 2 == 0 ? across : (isUpright() ? grid_.width : grid_.height) - 1 - across;
    }

private:
    const Grid<std::int16_t>& grid_;
    int edge_;
};

int medianOf(std::vector<int>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Whether no value is below one before it by more than a tolerance.
template <class Iterator>
bool isRising(Iterator first, Iterator last, int tolerance)
{
    int most = std::numeric_limits<int>::min() / 2;
    return std::all_of(first, last, [&](int value) {
        most = std::max(most, value);
        return value >= most - tolerance;
    });
}

/// The shadow along one edge.
class Shadow {
public:
    Shadow(const Cells& cells, const FromEdge& page, int margin, int blur, double threshold)
        : page_(page), margin_(margin), blur_(blur)
    {
        // Corners have the shadows of two edges.
        first_ = margin;
        last_ = page.length() - margin;
        if (margin < 1 || last_ - first_ < 4 * blur + 8) {
            return;
        }
        fitBar(std::max(threshold, strong));
        if (!fallsSmoothly(threshold) || !isColourless(cells)) {
            takeBarBack();
            return;
        }
        isStraight_ = std::abs(slope_) * page.length() <= 0.5;
        if (!isStraight_) {
            findTone();
            findEnd();
        }
        findFading();
    }

    /// What a shadow makes of the paper at a place: from one difference to another.
    struct Expected {
        int least = 0;
        int most = 0;
        int tolerance = 0; // on top of the threshold

        bool isPaper() const { return least == 0 && most == 0 && tolerance == 0; }
    };

    Expected expected(int along, int depth) const
    {
        if (fading_.empty() || depth >= margin_ + blur_) {
            return {};
        }
        const double inward = hasBar_ ? depth + 0.5 - (start_ + slope_ * along) : depth + 1e3;
        if (isStraight_) {
            return expectedOfStraight(depth, std::abs(inward));
        }
        const double blur = blur_ + 0.5;
        const int tone = tone_.empty()
                             ? end_
                             : tone_[std::min(static_cast<std::size_t>(depth), tone_.size() - 1)];
        const int ripples = ripplesAt(std::abs(inward));
        if (inward < 0) {
            // Where it ends it is blurred, and outermost mixed with what is beyond the page.
            const bool isMixed = depth == 0 || inward >= -blur;
            return {isMixed ? std::min({0, tone, end_}) : tone,
                    isMixed ? std::max({0, tone, end_}) : tone, ripples};
        }
        if (inward <= blur) {
            return {std::min(0, end_), std::max(0, end_), ripples};
        }
        return fadedTo(fadingAt(depth - fadesFrom(along)), depth, ripples);
    }

    bool hasBar() const { return hasBar_; }

private:
    static constexpr double strong = 40;
    static constexpr int lineTolerance = 25;
    static constexpr int coloursTell = 15; // where shadows are weaker, their hue says nothing
    static constexpr double mostColour = 10;
    static constexpr int noticeable = 5;
    static constexpr int rippleTolerance = 10;
    static constexpr int typicalRipple = 6; // along the whole edge

    int barAt(int along) const
    {
        return std::max(0, static_cast<int>(std::lround(start_ + slope_ * along)));
    }

    int fadingAt(int inward) const
    {
        const auto index = static_cast<std::size_t>(std::max(0, inward));
        return index < fading_.size() ? fading_[index] : 0;
    }

    static Expected fadedTo(int value, int depth, int tolerance)
    {
        return depth == 0 ? Expected{std::min(0, value), std::max(0, value), tolerance}
                          : Expected{value, value, tolerance};
    }

    /// It is the same all along, so that a place may be off by half a cell at most.
    Expected expectedOfStraight(int depth, double fromEnd) const
    {
        const int steep = std::abs(fadingAt(depth - 1) - fadingAt(depth + 1)) / 4;
        return fadedTo(fadingAt(depth), depth, ripplesAt(fromEnd) + steep);
    }

    /// Compression makes ripples beside what is sharp.
    int ripplesAt(double fromEnd) const
    {
        return fromEnd <= blur_ + 4 ? rippleTolerance : fromEnd <= blur_ + 8 ? 2 : 0;
    }

    int fadesFrom(int along) const
    {
        const int bar = isStraight_ ? 0 : barAt(along);
        return bar > 0 ? bar + blur_ + 1 : 0;
    }

    /// How far the edge's bar of one sign reaches at a place.
    int barDepth(int along, double threshold) const
    {
        // The outermost cells may be mixed with what is beyond the page.
        const bool isDark = page_.value(along, 0) + page_.value(along, 1) > 0;
        int depth = 0;
        int before = 255;
        while (depth <= margin_) {
            const int value = isDark ? page_.value(along, depth) : -page_.value(along, depth);
            if ((value <= threshold && depth > 0) || value > before + lineTolerance) {
                break; // the paper, or a line on it
            }
            before = depth == 0 ? 255 : std::min(before, value);
            ++depth;
        }
        const int outermost = isDark ? page_.value(along, 0) : -page_.value(along, 0);
        return depth == 1 && outermost <= threshold ? 0 : depth;
    }

    /// The straight line that the inner side of the bar follows; none where there is no bar.
    void fitBar(double threshold)
    {
        std::vector<std::pair<int, int>> places;
        for (int along = first_; along < last_; ++along) {
            if (const int depth = barDepth(along, threshold); depth > 0) {
                places.emplace_back(along, depth);
            }
        }
        hasBar_ = true;
        const auto needed = static_cast<std::size_t>(last_ - first_) / 4;
        for (int round = 0; round < 3; ++round) {
            if (places.size() < needed) {
                takeBarBack();
                return;
            }
            fitLine(places);
            const auto isOff = [&](const auto& place) {
                return std::abs(start_ + slope_ * place.first - place.second) > blur_;
            };
            places.erase(std::remove_if(places.begin(), places.end(), isOff), places.end());
        }
        // A shadow is as long as its edge, unless it is a wedge.
        if (places.size() < needed || 4 * places.size() < 3 * placesWithBar() ||
            std::max(barAt(0), barAt(page_.length() - 1)) > margin_ + blur_) {
            takeBarBack();
        }
    }

    std::size_t placesWithBar() const
    {
        std::size_t places = 0;
        for (int along = first_; along < last_; ++along) {
            places += barAt(along) > 0 ? 1 : 0;
        }
        return places;
    }

    /// What is typical along the edge, from the outside to the inside; seen from the end of the bar
    /// where there is one.
    std::vector<int> profile() const
    {
        const int deepest = std::max(barAt(0), barAt(page_.length() - 1));
        std::vector<int> typical;
        for (int inward = -deepest; inward < margin_; ++inward) {
            std::vector<int> values;
            for (int along = first_; along < last_; ++along) {
                const int depth = barAt(along) + inward;
                // The outermost cells may be mixed with what is beyond the page.
                if (depth > 0 && depth < margin_ + blur_) {
                    values.push_back(page_.value(along, depth));
                }
            }
            if (static_cast<int>(values.size()) * 4 >= last_ - first_) {
                typical.push_back(medianOf(values));
            }
        }
        return typical;
    }

    /// Whether what is along the edge gets weaker inward all the way, slowly, then quickly, then
    /// slowly again. With a line along the edge in it or beside it, it doesn't.
    bool fallsSmoothly(double threshold) const
    {
        const std::vector<int> typical = profile();
        if (typical.size() < 2) {
            return true;
        }
        const bool isDark = typical[0] + typical[1] > 0;
        const int tolerance = (hasBar_ ? typicalRipple : 0) + static_cast<int>(threshold);
        std::vector<int> strengths;
        std::vector<int> steps;
        for (std::size_t i = 0; i < typical.size(); ++i) {
            strengths.push_back(isDark ? typical[i] : -typical[i]);
            if (i > 0) {
                steps.push_back(strengths[i - 1] - strengths[i]);
            }
        }
        const auto steepest = std::max_element(steps.begin(), steps.end());
        return isRising(strengths.rbegin(), strengths.rend(), tolerance) &&
               isRising(steps.begin(), steepest, tolerance) &&
               isRising(steps.rbegin(), std::make_reverse_iterator(steepest), tolerance);
    }

    using Colour = std::array<double, 3>;

    /// The mean colour at a depth of the places that differ from the paper, or don't; nothing where
    /// these are few.
    std::optional<Colour> meanColour(const Cells& cells, int depth, bool ofShadow) const
    {
        Colour sum = {};
        int count = 0;
        for (int along = first_; along < last_; ++along) {
            if ((std::abs(page_.value(along, depth)) >= coloursTell) == ofShadow) {
                for (std::size_t c = 0; c < sum.size(); ++c) {
                    sum[c] += page_.valueIn(cells.channels[c], along, depth);
                }
                ++count;
            }
        }
        if (count * 4 < last_ - first_) {
            return std::nullopt;
        }
        for (double& channel : sum) {
            channel /= count;
        }
        return sum;
    }

    /// Shadows and the lids of scanners have no other hue than the paper.
    bool isColourless(const Cells& cells) const
    {
        if (cells.channels.size() < 3) {
            return true;
        }
        const auto hue = [](Colour colour) {
            const double mean = (colour[0] + colour[1] + colour[2]) / 3;
            return Colour{colour[0] - mean, colour[1] - mean, colour[2] - mean};
        };
        const std::optional<Colour> inside = meanColour(cells, margin_ + blur_, false);
        const Colour paper = inside ? hue(*inside) : Colour{};
        const double square = paper[0] * paper[0] + paper[1] * paper[1] + paper[2] * paper[2];
        for (int depth = 0; depth < margin_; ++depth) {
            const std::optional<Colour> here = meanColour(cells, depth, true);
            if (!here) {
                continue;
            }
            const Colour shade = hue(*here);
            const double product = shade[0] * paper[0] + shade[1] * paper[1] + shade[2] * paper[2];
            const double share = square > 0 ? std::clamp(product / square, 0.0, 1.0) : 0;
            for (std::size_t c = 0; c < shade.size(); ++c) {
                if (std::abs(shade[c] - share * paper[c]) > mostColour) {
                    return false;
                }
            }
        }
        return true;
    }

    void takeBarBack()
    {
        start_ = slope_ = 0;
        hasBar_ = false;
    }

    void fitLine(const std::vector<std::pair<int, int>>& places)
    {
        double meanAlong = 0;
        double meanDepth = 0;
        for (const auto& [along, depth] : places) {
            meanAlong += along;
            meanDepth += depth;
        }
        const auto count = static_cast<double>(places.size());
        meanAlong /= count;
        meanDepth /= count;
        double product = 0;
        double square = 0;
        for (const auto& [along, depth] : places) {
            product += (along - meanAlong) * (depth - meanDepth);
            square += (along - meanAlong) * (along - meanAlong);
        }
        slope_ = square > 0 ? product / square : 0;
        start_ = meanDepth - slope_ * meanAlong;
    }

    /// How dark the bar is at each depth.
    void findTone()
    {
        const int deepest = hasBar_ ? std::max(barAt(0), barAt(page_.length() - 1)) : 0;
        for (int depth = 0; depth < deepest; ++depth) {
            std::vector<int> values;
            for (int along = first_; along < last_; ++along) {
                if (depth < barAt(along)) {
                    values.push_back(page_.value(along, depth));
                }
            }
            if (values.empty()) {
                break;
            }
            // It gets weaker inward, too.
            const int tone = medianOf(values);
            const int before = tone_.size() < 2 ? tone : tone_.back();
            tone_.push_back(tone > 0 ? std::min(tone, std::max(before, 0) + noticeable)
                                     : std::max(tone, std::min(before, 0) - noticeable));
        }
    }

    /// How dark a wedge is where it ends, which may be anywhere in a cell.
    void findEnd()
    {
        std::vector<int> values = tone_;
        for (int along = first_; along < last_; ++along) {
            if (const int bar = barAt(along); bar > 0) {
                values.push_back(page_.value(along, bar - 1));
            }
        }
        if (!values.empty()) {
            std::sort(values.begin(), values.end());
            const std::size_t few = values.size() / 20;
            const bool isDark = values[values.size() / 2] > 0;
            end_ = isDark ? values[values.size() - 1 - few] : values[few];
            constexpr std::size_t deep = 4;
            if (tone_.size() >= deep) { // less has no place that is all dark
                const auto [least, most] = std::minmax_element(tone_.begin(), tone_.end());
                end_ = std::clamp(end_, std::min(*least, 0), std::max(*most, 0));
            }
        }
    }

    /// What is the same all along the edge and grows weaker inward. A line beside the edge doesn't:
    /// there is less between it and the edge.
    void findFading()
    {
        int least = 0;
        for (int depth = 0; depth < margin_; ++depth) {
            std::vector<int> values;
            for (int along = first_; along < last_; ++along) {
                if (const int at = fadesFrom(along) + depth; at < margin_ + blur_) {
                    values.push_back(page_.value(along, at));
                }
            }
            if (values.empty()) {
                break;
            }
            const int typical = medianOf(values);
            if (depth < 2 && std::abs(typical) > std::abs(least)) {
                least = typical;
            }
            least = least > 0 ? std::clamp(typical, 0, least) : std::clamp(typical, least, 0);
            fading_.push_back(least);
        }
    }

    const FromEdge page_;
    int margin_;
    int blur_; // of the bar's inner side
    int first_ = 0;
    int last_ = 0;
    bool hasBar_ = false;
    bool isStraight_ = false;
    double start_ = 0;
    double slope_ = 0;
    int end_ = 0;
    std::vector<int> tone_;
    std::vector<int> fading_;
};

/// What remains of a difference when it was expected, more or less.
int remaining(int value, const Shadow::Expected& expected, int threshold)
{
    if (expected.isPaper()) {
        return value;
    }
    const int off = value < expected.least  ? value - expected.least
                    : value > expected.most ? value - expected.most
                                            : 0;
    return std::abs(off) <= threshold + expected.tolerance ? 0 : off;
}

/// Two shadows on each other: each takes its share of the light.
Shadow::Expected both(const Shadow::Expected& one, const Shadow::Expected& other, double lightness)
{
    const auto together = [&](int first, int second) {
        return static_cast<int>(std::lround(first + second - first * double(second) / lightness));
    };
    return {together(one.least, other.least), together(one.most, other.most),
            std::max(one.tolerance, other.tolerance)};
}

int weaker(int one, int other)
{
    return std::abs(other) < std::abs(one) ? other : one;
}

} // namespace

TakenOut takeShadowsOut(const Cells& cells, double lightness, double threshold,
                        Grid<std::int16_t>& difference)
{
    TakenOut takenOut;
    takenOut.before = difference;
    const Grid<std::int16_t>& seen = takenOut.before;
    const int limit = static_cast<int>(threshold);
    const int margin = cells.margin();
    const int blur = cells.across(0.8);
    std::vector<FromEdge> edges;
    std::vector<Shadow> shadows;
    for (int edge = 0; edge < 4; ++edge) {
        edges.emplace_back(seen, edge);
        shadows.emplace_back(cells, edges.back(), margin, blur, threshold);
    }
    for (int y = 0; y < seen.height; ++y) {
        const bool isAtEnd = y < margin + blur || y >= seen.height - margin - blur;
        for (int x = 0; x < seen.width; ++x) {
            if (!isAtEnd && x >= margin + blur && x < seen.width - margin - blur) {
                x = seen.width - margin - blur - 1; // the inside of the page
                continue;
            }
            const int value = seen.at(x, y);
            Shadow::Expected all;
            int least = value;
            for (std::size_t i = 0; i < shadows.size(); ++i) {
                const Shadow::Expected one =
                    shadows[i].expected(edges[i].along(x, y), edges[i].depth(x, y));
                least = weaker(least, remaining(value, one, limit));
                all = both(all, one, lightness);
            }
            difference.at(x, y) =
                static_cast<std::int16_t>(weaker(least, remaining(value, all, limit)));
        }
    }
    for (std::size_t edge = 0; edge < shadows.size(); ++edge) {
        takenOut.bars[edge] = shadows[edge].hasBar();
    }
    return takenOut;
}

} // namespace karvel::blankness
