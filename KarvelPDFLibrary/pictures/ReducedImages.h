#pragma once

#include "KarvelPDFLibrary/pictures/Raster.h"

#include <functional>
#include <optional>
#include <string>

namespace karvel::pictures {

/// Asked now and then while an image is decoded, with the rows that are there; true when that is
/// enough and the rest may stay as it is.
using Enough = std::function<bool(const Raster& picture, int rows)>;

/// Images of more pixels are not decoded: a small file may be made of nothing but claims.
constexpr double mostPixels = 400e6;

struct Reduction {
    int divisor = 1; // 1, 2, 4 or 8
    double dpi = 72; // of the picture that it makes
};

/// A JPEG file in grey or colour at a fraction of its size: each pixel is the
/// mean of those that it stands for. Nothing for what can't be decoded so: damaged files, and
/// those of four inks.
std::optional<Raster> reducedJpeg(const std::string& bytes, Reduction reduction,
                                  const Enough& enough);

/// How black and white is stored by runs (ISO 32000-2, 7.4.6).
struct FaxImage {
    int group = 0; // /K: below 0 is group 4
    int width = 0; // pixels
    int height = 0;
    bool isInverted = false; // black is stored as white
};

/// Such an image in grey at a fraction of its size; what is left over at the
/// right and below belongs to the last pixels. Nothing when a row can't be decoded.
std::optional<Raster> reducedFax(const std::string& bytes, const FaxImage& image,
                                 Reduction reduction, const Enough& enough);

} // namespace karvel::pictures
