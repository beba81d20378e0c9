#pragma once

#include "KarvelPDFLibrary/pictures/Raster.h"

#include <array>
#include <cstdint>

namespace labelled {

/// Numbers that look random and depend on nothing but the seed. As compilers evaluate arguments of
/// a call and operands in any order, each is drawn in a statement or between braces.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 2 + 1) { next(); }

    std::uint32_t next();
    double between(double least, double most);
    int whole(int least, int most); // both included
    bool chance(double share) { return between(0, 1) < share; }

    /// With a mean of 0 and a deviation of 1.
    double normal();

private:
    std::uint64_t state_;
};

using Colour = std::array<double, 3>; // 0 to 255

/// A sheet of paper as a scanner sees it. Lengths are in millimetres from the upper left.
class Sheet {
public:
    Sheet(double width, double height, double dpi, const Colour& paper);

    double width() const { return width_; }
    double height() const { return height_; }
    const karvel::pictures::Raster& picture() const { return picture_; }

    // --- what people put on it ---

    /// A stroke with round ends; thinner than a pixel it is paler.
    void stroke(double fromX, double fromY, double toX, double toY, double thickness,
                const Colour& ink);
    void dot(double x, double y, double diameter, const Colour& ink);
    void box(double left, double top, double width, double height, const Colour& ink);
    void ring(double x, double y, double diameter, double thickness, const Colour& ink);

    /// Characters, made of strokes, of a height.
    void text(double x, double y, int characters, double height, const Colour& ink, Random& random);

    // --- what scanners do ---

    void grain(double deviation, bool coloured, Random& random);
    void specks(int count, double largest, Random& random);

    /// Along an edge (left, right, top, bottom): dark to the depths at its two ends, then fading.
    void shadow(int edge, double startDepth, double endDepth, double fading, double darkness);

    /// The lamp's light, which is less at one side.
    void uneven(double darker);

    /// Lines of text on the other side, mirrored and blurred.
    void bleedThrough(double contrast, Random& random);

    /// What is darker than a level, one bit a pixel.
    std::vector<unsigned char> bits(int level) const;

private:
    template <class Cover>
    void blend(double left, double top, double right, double bottom, const Colour& ink,
               Cover&& cover);

    double width_;
    double height_;
    double scale_; // pixels a millimetre
    karvel::pictures::Raster picture_;
};

} // namespace labelled
