#include "tests/support/Images.h"

#include "tests/support/Inspect.h"

#include <cstdio>
#include <cstring>
#include <jpeglib.h>
#include <png.h>
#include <sstream>
#include <tiffio.h>

namespace support {

namespace {

Image withSize(const char* format, int width, int height)
{
    Image image{format, width, height, {}};
    image.rgba.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, 255);
    return image;
}

/// Sets pixels from rows of 3 bytes a pixel.
void setRow(Image& image, int y, const unsigned char* rgb, bool reversed = false)
{
    unsigned char* out = image.rgba.data() + static_cast<std::ptrdiff_t>(y) * image.width * 4;
    for (int x = 0; x < image.width; ++x, out += 4, rgb += 3) {
        out[0] = rgb[reversed ? 2 : 0];
        out[1] = rgb[1];
        out[2] = rgb[reversed ? 0 : 2];
    }
}

Image fromPng(const std::string& file)
{
    png_image reader = {};
    reader.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&reader, file.data(), file.size()) == 0) {
        return {};
    }
    reader.format = PNG_FORMAT_RGBA;
    Image image = withSize("PNG", static_cast<int>(reader.width), static_cast<int>(reader.height));
    return png_image_finish_read(&reader, nullptr, image.rgba.data(), 0, nullptr) != 0 ? image
                                                                                       : Image();
}

Image fromJpeg(const std::string& file)
{
    jpeg_decompress_struct reader = {};
    jpeg_error_mgr errors = {};
    reader.err = jpeg_std_error(&errors); // ends the program on an error: the test fails
    jpeg_create_decompress(&reader);
    jpeg_mem_src(&reader, reinterpret_cast<const unsigned char*>(file.data()), file.size());
    jpeg_read_header(&reader, TRUE);
    reader.out_color_space = JCS_RGB;
    jpeg_start_decompress(&reader);
    Image image = withSize("JPEG", static_cast<int>(reader.output_width),
                           static_cast<int>(reader.output_height));
    std::vector<unsigned char> row(static_cast<std::size_t>(image.width) * 3);
    for (int y = 0; y < image.height; ++y) {
        unsigned char* line = row.data();
        jpeg_read_scanlines(&reader, &line, 1);
        setRow(image, y, line);
    }
    jpeg_finish_decompress(&reader);
    jpeg_destroy_decompress(&reader);
    return image;
}

Image fromTiff(const std::string& file)
{
    const ScratchFolder scratch;
    TIFF* reader = TIFFOpen(scratch.write("a.tif", file).c_str(), "r");
    if (reader == nullptr) {
        return {};
    }
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TIFFGetField(reader, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(reader, TIFFTAG_IMAGELENGTH, &height);
    Image image = withSize("TIFF", static_cast<int>(width), static_cast<int>(height));
    std::vector<std::uint32_t> pixels(image.rgba.size() / 4);
    const bool read = TIFFReadRGBAImageOriented(reader, width, height, pixels.data(),
                                                ORIENTATION_TOPLEFT, 1) != 0;
    TIFFClose(reader);
    std::memcpy(image.rgba.data(), pixels.data(), image.rgba.size());
    return read ? image : Image();
}

int number(const std::string& file, std::size_t offset, int bytes)
{
    int value = 0;
    for (int i = bytes; i-- > 0;) {
        value =
            value * 256 + static_cast<unsigned char>(file[offset + static_cast<std::size_t>(i)]);
    }
    return value;
}

Image fromBmp(const std::string& file)
{
    Image image = withSize("BMP", number(file, 18, 4), number(file, 22, 4));
    const int start = number(file, 10, 4);
    const int bits = number(file, 28, 2);
    const int rowSize = (image.width * bits + 31) / 32 * 4;
    std::vector<unsigned char> row(static_cast<std::size_t>(image.width) * 3);
    for (int y = 0; y < image.height; ++y) {
        const int offset = start + (image.height - 1 - y) * rowSize;
        for (int x = 0; x < image.width; ++x) {
            const int bit = x * bits;
            const int value = number(file, static_cast<std::size_t>(offset + bit / 8), 1);
            const int index = bits == 1 ? (value >> (7 - bit % 8)) & 1 : value;
            const int from = bits == 24 ? offset + x * 3 : 54 + index * 4;
            std::memcpy(row.data() + x * 3, file.data() + from, 3);
        }
        setRow(image, y, row.data(), true);
    }
    return image;
}

Image fromPortable(const std::string& file)
{
    std::istringstream reader(file);
    std::string kind;
    int width = 0;
    int height = 0;
    int most = 0;
    reader >> kind >> width >> height;
    if (kind != "P4") {
        reader >> most;
    }
    reader.get();
    Image image = withSize("PPM", width, height);
    std::vector<unsigned char> row(static_cast<std::size_t>(width) * 3);
    for (int y = 0; y < height; ++y) {
        int byte = 0;
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) {
                byte = kind == "P6" || (kind == "P5" && c == 0) ||
                               (kind == "P4" && c == 0 && x % 8 == 0)
                           ? reader.get()
                           : byte;
                const bool black = (byte >> (7 - x % 8) & 1) != 0;
                row[static_cast<std::size_t>(x * 3 + c)] =
                    static_cast<unsigned char>(kind == "P4" ? (black ? 0 : 255) : byte);
            }
        }
        setRow(image, y, row.data());
    }
    return reader ? image : Image();
}

} // namespace

std::array<int, 4> Image::at(int x, int y) const
{
    const unsigned char* pixel = rgba.data() + (static_cast<std::ptrdiff_t>(y) * width + x) * 4;
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Image decoded(const std::string& file)
{
    if (file.compare(0, 4, "\x89PNG") == 0) {
        return fromPng(file);
    }
    if (file.compare(0, 3, "\xff\xd8\xff") == 0) {
        return fromJpeg(file);
    }
    if (file.compare(0, 4, std::string("II*\0", 4)) == 0) {
        return fromTiff(file);
    }
    if (file.compare(0, 2, "BM") == 0) {
        return fromBmp(file);
    }
    return file.size() > 2 && file[0] == 'P' ? fromPortable(file) : Image();
}

} // namespace support
