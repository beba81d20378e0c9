#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/pictures/Raster.h"

#include <string>

namespace karvel::pictures {

/// Image format codes of the interface.
enum class ImageFormat : int { Png = 1, Jpeg = 2, Tiff = 3, Bmp = 4, Ppm = 5 };

/// The largest side that every format can hold.
constexpr int largestSide = 65000;

/// An image file's bytes. Only PNG takes transparency. `quality`, 1 to 100, is that of JPEG.
Result<std::string> imageFile(const Raster& raster, ImageFormat format, int quality);

// Each format by itself.
Result<std::string> png(const Raster& raster);
Result<std::string> jpeg(const Raster& raster, int quality);
Result<std::string> tiff(const Raster& raster);
std::string bmp(const Raster& raster);
std::string ppm(const Raster& raster);

} // namespace karvel::pictures
