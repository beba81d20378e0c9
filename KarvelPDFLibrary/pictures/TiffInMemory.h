#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <tiffio.h>

namespace karvel::pictures {

/// A TIFF file in memory.
struct TiffBytes {
    std::string bytes;
    std::size_t position = 0;
    bool isDamaged = false; ///< whether libtiff found anything wrong
};

struct CloseTiff {
    void operator()(TIFF* file) const { TIFFClose(file); }
};
using OpenTiff = std::unique_ptr<TIFF, CloseTiff>;

/// Opens it as TIFFOpen would with a mode; null when it is none. The bytes have to live longer.
/// Nothing is written to standard error.
OpenTiff openTiff(TiffBytes& bytes, const char* mode);

} // namespace karvel::pictures
