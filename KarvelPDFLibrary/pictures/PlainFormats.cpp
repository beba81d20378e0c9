#include "KarvelPDFLibrary/pictures/ImageFile.h"

#include <cmath>
#include <cstdint>

namespace karvel::pictures {

namespace {

void put16(std::string& bytes, unsigned value)
{
    bytes += static_cast<char>(value & 0xFFU);
    bytes += static_cast<char>((value >> 8U) & 0xFFU);
}

void put32(std::string& bytes, std::uint32_t value)
{
    put16(bytes, value & 0xFFFFU);
    put16(bytes, value >> 16U);
}

} // namespace

std::string bmp(const Raster& raster)
{
    const bool isMono = raster.kind == Raster::Kind::Mono;
    const bool isColor = raster.kind == Raster::Kind::Rgb;
    const unsigned bits = isMono ? 1 : isColor ? 24 : 8;
    const unsigned paletteSize = isMono ? 2 : isColor ? 0 : 256;
    const std::size_t rowSize = (raster.bytesPerRow() + 3) / 4 * 4;
    const std::size_t start = 14 + 40 + paletteSize * 4;
    const std::size_t size = start + rowSize * static_cast<std::size_t>(raster.height);

    std::string bytes = "BM";
    put32(bytes, static_cast<std::uint32_t>(size));
    put32(bytes, 0);
    put32(bytes, static_cast<std::uint32_t>(start));
    put32(bytes, 40); // a BITMAPINFOHEADER follows
    put32(bytes, static_cast<std::uint32_t>(raster.width));
    put32(bytes, static_cast<std::uint32_t>(raster.height)); // positive: rows from the bottom
    put16(bytes, 1);
    put16(bytes, bits);
    put32(bytes, 0);
    put32(bytes, static_cast<std::uint32_t>(size - start));
    const auto perMetre = static_cast<std::uint32_t>(std::lround(raster.dpi / 0.0254));
    put32(bytes, perMetre);
    put32(bytes, perMetre);
    put32(bytes, paletteSize);
    put32(bytes, 0);
    for (unsigned i = 0; i < paletteSize; ++i) {
        put32(bytes, (isMono ? i * 255 : i) * 0x010101U);
    }
    bytes.reserve(size);
    for (int y = raster.height; y-- > 0;) {
        const unsigned char* row = raster.row(y);
        if (isColor) {
            for (int x = 0; x < raster.width; ++x, row += 3) {
                bytes += static_cast<char>(row[2]);
                bytes += static_cast<char>(row[1]);
                bytes += static_cast<char>(row[0]);
            }
        } else {
            bytes.append(reinterpret_cast<const char*>(row), raster.bytesPerRow());
        }
        bytes.append(rowSize - raster.bytesPerRow(), '\0');
    }
    return bytes;
}

std::string ppm(const Raster& raster)
{
    const bool isMono = raster.kind == Raster::Kind::Mono;
    std::string bytes = isMono ? "P4\n" : raster.kind == Raster::Kind::Rgb ? "P6\n" : "P5\n";
    bytes += std::to_string(raster.width) + " " + std::to_string(raster.height) + "\n";
    if (!isMono) {
        bytes += "255\n";
    }
    bytes.reserve(bytes.size() + raster.pixels.size());
    for (const unsigned char byte : raster.pixels) {
        bytes += static_cast<char>(isMono ? ~byte : byte); // a set bit is black there
    }
    return bytes;
}

} // namespace karvel::pictures
