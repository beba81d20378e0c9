#pragma once

#include <array>
#include <string>
#include <vector>

namespace support {

/// A decoded image file.
struct Image {
    std::string format; // "PNG", "JPEG", "TIFF", "BMP", "PPM", "PGM"; empty for anything else
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rgba;

    std::array<int, 4> at(int x, int y) const;
};

/// Decodes an image file by Qt, or by libtiff.
Image decoded(const std::string& file);

} // namespace support
