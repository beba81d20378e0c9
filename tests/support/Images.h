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

/// Black and white by the runs of group 4, as libtiff writes them: 8 pixels a byte, the highest bit
/// leftmost, 1 is black.
std::string groupFour(const std::vector<unsigned char>& bits, int width, int height);

/// The same as the data of a JBIG2 image in PDF (ITU-T T.88): a page with one generic region.
std::string jbig2(const std::vector<unsigned char>& bits, int width, int height);

/// Decodes an image file by Qt, or by libtiff.
Image decoded(const std::string& file);

} // namespace support
