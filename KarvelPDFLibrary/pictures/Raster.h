#pragma once

#include <cstddef>
#include <vector>

namespace karvel::pictures {

/// Pixels in rows from the top.
struct Raster {
    enum class Kind {
        Mono,      // 8 pixels a byte, the highest bit leftmost; 1 is white
        Gray,      // 1 byte a pixel
        Rgb,       // 3 bytes
        GrayAlpha, // 2 bytes, the colour not multiplied with alpha
        RgbAlpha,  // 4 bytes, likewise
    };

    Kind kind = Kind::Rgb;
    int width = 0;
    int height = 0;
    double dpi = 72; // for programs that ask how large the image is
    std::vector<unsigned char> pixels;

    int channels() const
    {
        switch (kind) {
        case Kind::Rgb:
            return 3;
        case Kind::GrayAlpha:
            return 2;
        case Kind::RgbAlpha:
            return 4;
        default:
            return 1;
        }
    }

    std::size_t bytesPerRow() const
    {
        const auto columns = static_cast<std::size_t>(width);
        return kind == Kind::Mono ? (columns + 7) / 8
                                  : columns * static_cast<std::size_t>(channels());
    }

    /// How much of the picture that many pixels are, in percent.
    double percentage(std::size_t pixelCount) const
    {
        const double whole = static_cast<double>(width) * height;
        return whole > 0 ? 100 * static_cast<double>(pixelCount) / whole : 0;
    }

    const unsigned char* row(int y) const
    {
        return pixels.data() + bytesPerRow() * static_cast<std::size_t>(y);
    }
    unsigned char* row(int y)
    {
        return pixels.data() + bytesPerRow() * static_cast<std::size_t>(y);
    }
};

} // namespace karvel::pictures
