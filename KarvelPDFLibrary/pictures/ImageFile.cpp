#include "KarvelPDFLibrary/pictures/ImageFile.h"

namespace karvel::pictures {

Result<std::string> imageFile(const Raster& raster, ImageFormat format, int quality)
{
    switch (format) {
    case ImageFormat::Png:
        return png(raster);
    case ImageFormat::Jpeg:
        return jpeg(raster, quality);
    case ImageFormat::Tiff:
        return tiff(raster);
    case ImageFormat::Bmp:
        return bmp(raster);
    case ImageFormat::Ppm:
        return ppm(raster);
    }
    return fail(ErrorCode::BadArgument, "no such image format");
}

} // namespace karvel::pictures
