#include "KarvelPDFLibrary/pictures/JpegErrors.h"
#include "KarvelPDFLibrary/pictures/ReducedImages.h"

namespace karvel::pictures {

namespace {

/// Warnings tell of damage: what such a file shows is for others to judge.
void leaveAtWarning(j_common_ptr decompressor, int level)
{
    if (level < 0) {
        JpegErrors::leave(decompressor);
    }
}

constexpr JDIMENSION linesBetweenQuestions = 64;

/// Why a part of the decoding ended.
enum class Read { Failed, MoreToCome, Done };

/// Nothing that is made in these functions may need to be destroyed after setjmp.
class Decoder {
public:
    explicit Decoder(const std::string& bytes) : bytes_(bytes)
    {
        decompressor_.err = &errors_.manager;
        errors_.manager.emit_message = leaveAtWarning;
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    ~Decoder() { jpeg_destroy_decompress(&decompressor_); }

    bool start(int divisor, Raster& raster)
    {
        if (setjmp(errors_.escape) != 0) {
            return false;
        }
        jpeg_create_decompress(&decompressor_);
        jpeg_mem_src(&decompressor_, reinterpret_cast<const unsigned char*>(bytes_.data()),
                     bytes_.size());
        jpeg_read_header(&decompressor_, TRUE);
        const int components = decompressor_.num_components;
        if ((components != 1 && components != 3) ||
            double(decompressor_.image_width) * decompressor_.image_height > mostPixels) {
            return false;
        }
        decompressor_.scale_num = 1;
        decompressor_.scale_denom = static_cast<unsigned>(divisor);
        decompressor_.out_color_space = components == 1 ? JCS_GRAYSCALE : JCS_RGB;
        decompressor_.dct_method = JDCT_ISLOW;
        decompressor_.do_fancy_upsampling = FALSE;
        jpeg_start_decompress(&decompressor_);
        raster.kind = components == 1 ? Raster::Kind::Gray : Raster::Kind::Rgb;
        raster.width = static_cast<int>(decompressor_.output_width);
        raster.height = static_cast<int>(decompressor_.output_height);
        return true;
    }

    Read readSome(Raster& raster)
    {
        if (setjmp(errors_.escape) != 0) {
            return Read::Failed;
        }
        const JDIMENSION last = decompressor_.output_scanline + linesBetweenQuestions;
        while (decompressor_.output_scanline < last &&
               decompressor_.output_scanline < decompressor_.output_height) {
            JSAMPROW row = raster.row(static_cast<int>(decompressor_.output_scanline));
            jpeg_read_scanlines(&decompressor_, &row, 1);
        }
        return rows() < raster.height ? Read::MoreToCome : Read::Done;
    }

    int rows() const { return static_cast<int>(decompressor_.output_scanline); }

private:
    const std::string& bytes_;
    jpeg_decompress_struct decompressor_ = {};
    JpegErrors errors_;
};

} // namespace

std::optional<Raster> reducedJpeg(const std::string& bytes, Reduction reduction,
                                  const Enough& enough)
{
    Decoder decoder(bytes);
    Raster raster;
    if (!decoder.start(reduction.divisor, raster)) {
        return std::nullopt;
    }
    raster.dpi = reduction.dpi;
    raster.pixels.resize(raster.bytesPerRow() * static_cast<std::size_t>(raster.height));
    Read read = Read::MoreToCome;
    while (read == Read::MoreToCome) {
        read = decoder.readSome(raster);
        if (read == Read::Failed) {
            return std::nullopt;
        }
        if (enough && enough(raster, decoder.rows())) {
            break;
        }
    }
    return raster;
}

} // namespace karvel::pictures
