#include "tests/KarvelPDFLibrary/blankness/Sheet.h"

#include <algorithm>
#include <cmath>

namespace labelled {

namespace {

constexpr double millimetresPerInch = 25.4;

unsigned char level(double value)
{
    return static_cast<unsigned char>(std::clamp(static_cast<int>(value + 0.5), 0, 255));
}

} // namespace

std::uint32_t Random::next()
{
    // Steele, Lea, Flood: SplitMix.
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return static_cast<std::uint32_t>(mixed >> 32U);
}

double Random::between(double least, double most)
{
    return least + (most - least) * next() / 4294967296.0;
}

int Random::whole(int least, int most)
{
    return least + static_cast<int>(next() % static_cast<unsigned>(most - least + 1));
}

namespace {

/// The sum of many numbers is close to normal.
const std::array<double, 4096> drawn = [] {
    std::array<double, 4096> values = {};
    Random source(7);
    for (double& value : values) {
        for (int i = 0; i < 12; ++i) {
            value += source.between(-0.5, 0.5);
        }
    }
    return values;
}();

} // namespace

double Random::normal()
{
    return drawn[next() % drawn.size()];
}

Sheet::Sheet(double width, double height, double dpi, const Colour& paper)
    : width_(width), height_(height), scale_(dpi / millimetresPerInch)
{
    picture_.width = static_cast<int>(std::lround(width * scale_));
    picture_.height = static_cast<int>(std::lround(height * scale_));
    picture_.dpi = dpi;
    picture_.pixels.resize(picture_.bytesPerRow() * static_cast<std::size_t>(picture_.height));
    const std::size_t row = picture_.bytesPerRow();
    for (std::size_t i = 0; i < row; ++i) {
        picture_.pixels[i] = level(paper[i % 3]);
    }
    for (std::size_t i = row; i < picture_.pixels.size(); i += row) {
        std::copy_n(picture_.pixels.begin(), row,
                    picture_.pixels.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

/// Mixes ink into pixels by how much of each is covered; `cover` is called with the middles of
/// pixels, in pixels.
template <class Cover>
void Sheet::blend(double left, double top, double right, double bottom, const Colour& ink,
                  Cover&& cover)
{
    const int firstX = std::max(0, static_cast<int>(std::floor(left * scale_)) - 1);
    const int firstY = std::max(0, static_cast<int>(std::floor(top * scale_)) - 1);
    const int lastX = std::min(picture_.width - 1, static_cast<int>(right * scale_) + 1);
    const int lastY = std::min(picture_.height - 1, static_cast<int>(bottom * scale_) + 1);
    for (int y = firstY; y <= lastY; ++y) {
        unsigned char* pixel = picture_.row(y) + firstX * 3;
        for (int x = firstX; x <= lastX; ++x, pixel += 3) {
            const double share = std::clamp(cover(x + 0.5, y + 0.5), 0.0, 1.0);
            for (std::size_t c = 0; share > 0 && c < 3; ++c) {
                pixel[c] = level(pixel[c] + share * (ink[c] - pixel[c]));
            }
        }
    }
}

void Sheet::stroke(double fromX, double fromY, double toX, double toY, double thickness,
                   const Colour& ink)
{
    const double half = thickness * scale_ / 2;
    const double x1 = fromX * scale_;
    const double y1 = fromY * scale_;
    const double alongX = toX * scale_ - x1;
    const double alongY = toY * scale_ - y1;
    const double square = std::max(1e-9, alongX * alongX + alongY * alongY);
    const double thin = std::min(1.0, 2 * half);
    blend(std::min(fromX, toX) - thickness, std::min(fromY, toY) - thickness,
          std::max(fromX, toX) + thickness, std::max(fromY, toY) + thickness, ink,
          [&](double x, double y) {
              const double at =
                  std::clamp(((x - x1) * alongX + (y - y1) * alongY) / square, 0.0, 1.0);
              const double away = std::hypot(x - x1 - at * alongX, y - y1 - at * alongY);
              return std::min(thin, std::max(half, 0.5) + 0.5 - away);
          });
}

void Sheet::dot(double x, double y, double diameter, const Colour& ink)
{
    const double radius = diameter * scale_ / 2;
    // A cone with a base of one pixel around it has a third of the volume of a column: where dots
    // are smaller than pixels, it is as high as darkens the page by the dot's area.
    const double most = std::min(1.0, 3 * radius * radius);
    blend(x - diameter, y - diameter, x + diameter, y + diameter, ink, [&](double px, double py) {
        const double away = std::hypot(px - x * scale_, py - y * scale_);
        return most < 1 ? most * (1 - away) : std::min(1.0, std::max(radius, 0.5) + 0.5 - away);
    });
}

void Sheet::box(double left, double top, double width, double height, const Colour& ink)
{
    const auto overlap = [this](double from, double length, double at) {
        return std::min((from + length) * scale_, at + 0.5) - std::max(from * scale_, at - 0.5);
    };
    blend(left, top, left + width, top + height, ink, [&](double x, double y) {
        return std::max(0.0, overlap(left, width, x)) * std::max(0.0, overlap(top, height, y));
    });
}

void Sheet::ring(double x, double y, double diameter, double thickness, const Colour& ink)
{
    const double radius = diameter * scale_ / 2;
    const double half = thickness * scale_ / 2;
    blend(x - diameter, y - diameter, x + diameter, y + diameter, ink, [&](double px, double py) {
        const double away = std::hypot(px - x * scale_, py - y * scale_) - radius;
        return std::min(1.0, 2 * half) * (std::max(half, 0.5) + 0.5 - std::abs(away));
    });
}

void Sheet::text(double x, double y, int characters, double height, const Colour& ink,
                 Random& random)
{
    const double wide = height * 0.55;
    const double thickness = height * 0.12;
    for (int character = 0; character < characters; ++character) {
        const double left = x + character * height * 0.75;
        if (characters > 4 && random.chance(0.15)) {
            continue; // between words
        }
        stroke(left, y, left + random.between(0, 0.3) * wide, y + height, thickness, ink);
        for (int more = random.whole(1, 2); more > 0; --more) {
            const double fromX = left + random.between(0, 0.4) * wide;
            const double fromY = y + random.between(0, 1) * height;
            const double toX = left + random.between(0.6, 1) * wide;
            const double toY = y + random.between(0, 1) * height;
            stroke(fromX, fromY, toX, toY, thickness, ink);
        }
    }
}

void Sheet::grain(double deviation, bool coloured, Random& random)
{
    for (std::size_t i = 0; i + 2 < picture_.pixels.size(); i += 3) {
        const std::uint32_t one = random.next(); // enough for three
        const double common = drawn[one % drawn.size()] * deviation;
        const double red = coloured ? drawn[(one >> 10U) % drawn.size()] * deviation / 2 : 0;
        const double blue = coloured ? drawn[(one >> 20U) % drawn.size()] * deviation / 2 : 0;
        unsigned char* pixel = &picture_.pixels[i];
        pixel[0] = level(pixel[0] + common + red);
        pixel[1] = level(pixel[1] + common);
        pixel[2] = level(pixel[2] + common + blue);
    }
}

void Sheet::specks(int count, double largest, Random& random)
{
    for (int i = 0; i < count; ++i) {
        const double dark = random.between(0, 120);
        const double x = random.between(0, width_);
        const double y = random.between(0, height_);
        dot(x, y, random.between(0.03, largest), {dark, dark, dark});
    }
}

void Sheet::shadow(int edge, double startDepth, double endDepth, double fading, double darkness)
{
    const bool upright = edge < 2;
    const double length = upright ? height_ : width_;
    const double across = upright ? width_ : height_;
    const double reach = std::max(startDepth, endDepth) + fading;
    const double first = edge % 2 == 0 ? 0 : across - reach;
    const double left = upright ? first : 0;
    const double top = upright ? 0 : first;
    blend(left, top, upright ? left + reach : length, upright ? length : top + reach, {0, 0, 0},
          [&](double x, double y) {
              const double along = (upright ? y : x) / scale_ / length;
              const double at = (upright ? x : y) / scale_;
              const double depth = edge % 2 == 0 ? at : across - at;
              const double bar = startDepth + (endDepth - startDepth) * along;
              const double soft = std::max(fading, 0.5 / scale_);
              return darkness * std::clamp((bar + soft - depth) / soft, 0.0, 1.0);
          });
}

void Sheet::uneven(double darker)
{
    for (int y = 0; y < picture_.height; ++y) {
        unsigned char* row = picture_.row(y);
        for (int x = 0; x < picture_.width * 3; ++x) {
            row[x] = level(row[x] - darker * x / (picture_.width * 3.0) -
                           darker / 3 * y / picture_.height);
        }
    }
}

void Sheet::bleedThrough(double contrast, Random& random)
{
    Sheet back(width_, height_, picture_.dpi, {255, 255, 255});
    const double shade = 255 - contrast;
    for (double y = 15; y < height_ - 15; y += 5) {
        back.text(12, y, static_cast<int>((width_ - 24) / 1.8), 2.4, {shade, shade, shade}, random);
    }
    const int blur = std::max(1, static_cast<int>(0.25 * scale_));
    for (int y = blur; y < picture_.height - blur; ++y) {
        for (int x = blur; x < picture_.width - blur; ++x) {
            int sum = 0;
            for (int beside = -blur; beside <= blur; ++beside) {
                sum += back.picture_.row(y)[(picture_.width - 1 - x + beside) * 3] +
                       back.picture_.row(y + beside)[(picture_.width - 1 - x) * 3];
            }
            const double less = 255 - static_cast<double>(sum) / (4 * blur + 2);
            for (int c = 0; less > 0 && c < 3; ++c) {
                unsigned char& value = picture_.row(y)[x * 3 + c];
                value = level(value - less);
            }
        }
    }
}

std::vector<unsigned char> Sheet::bits(int threshold) const
{
    const auto perRow = static_cast<std::size_t>(picture_.width + 7) / 8;
    std::vector<unsigned char> packed(perRow * static_cast<std::size_t>(picture_.height));
    for (int y = 0; y < picture_.height; ++y) {
        const unsigned char* row = picture_.row(y);
        for (int x = 0; x < picture_.width; ++x) {
            if (row[x * 3 + 1] < threshold) {
                packed[perRow * static_cast<std::size_t>(y) + static_cast<std::size_t>(x) / 8] |=
                    static_cast<unsigned char>(0x80U >> (static_cast<unsigned>(x) % 8));
            }
        }
    }
    return packed;
}

} // namespace labelled
