#include "KarvelPDFLibrary/rendering/RenderPage.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace karvel::rendering {

namespace {

/// Images beyond this are refused: at 3 bytes a pixel, and twice while they are made, they would
/// take more memory than is likely to be there.
constexpr double mostPixels = 200e6;

constexpr double largestDpi = 9600;

struct Scale {
    double dpi = 72;
    int width = 0; // pixels
    int height = 0;
};

Outcome fits(const Scale& scale)
{
    if (scale.width > pictures::largestSide || scale.height > pictures::largestSide ||
        static_cast<double>(scale.width) * scale.height > mostPixels) {
        return fail(ErrorCode::OutOfMemory, "the image would have " + std::to_string(scale.width) +
                                                " by " + std::to_string(scale.height) + " pixels");
    }
    return {};
}

int pixels(double points, double dpi)
{
    // What is left of a pixel is one too, but not what arithmetic leaves over.
    return static_cast<int>(std::clamp(std::ceil(points * dpi / 72 - 1e-6), 1.0, 1e9));
}

Result<Scale> scaleAt(Document& document, int page, double dpi)
{
    if (!(dpi > 0) || dpi > largestDpi) {
        return fail(ErrorCode::BadArgument,
                    "the resolution must be greater than 0 and at most 9600");
    }
    if (Outcome status = hasPage(document, page); !status) {
        return tl::unexpected<Error>(status.error());
    }
    const page_boxes::Size size = page_boxes::shownSize(document, page);
    return Scale{dpi, pixels(size.width, dpi), pixels(size.height, dpi)};
}

Scale scaleTo(Document& document, int page, int side)
{
    const page_boxes::Size size = page_boxes::shownSize(document, page);
    const double dpi = side * 72.0 / std::max(size.width, size.height);
    const auto length = [&](double points) {
        return std::clamp(static_cast<int>(std::lround(points * dpi / 72)), 1, side);
    };
    return {dpi, length(size.width), length(size.height)};
}

/// Renders onto paper of one colour.
Result<pictures::Raster> render(Document& document, viewer::View& view, int page,
                                const Scale& scale, viewer::PictureRequest request)
{
    if (Outcome status = fits(scale); !status) {
        return tl::unexpected<Error>(status.error());
    }
    const auto seen = view.seen(document, page);
    if (!seen) {
        return tl::unexpected<Error>(seen.error());
    }
    // poppler does not count the user unit.
    request.dpi = scale.dpi * page_boxes::userUnit(document, page);
    request.width = scale.width;
    request.height = scale.height;
    std::optional<pictures::Raster> raster = (*seen)->picture(page, request);
    if (!raster) {
        return fail(ErrorCode::LibraryFailed,
                    document.name() + ": page " + std::to_string(page) + " cannot be rendered");
    }
    raster->dpi = scale.dpi;
    return std::move(*raster);
}

/// Grey in black and white by error diffusion (Floyd and Steinberg). poppler's own format of one
/// bit a pixel stays white.
pictures::Raster inBlackAndWhite(const pictures::Raster& grey)
{
    pictures::Raster mono{pictures::Raster::Kind::Mono, grey.width, grey.height, grey.dpi, {}};
    mono.pixels.resize(mono.bytesPerRow() * static_cast<std::size_t>(mono.height));
    // What pixels are off by, in sixteenths, with a column more at each side.
    const auto columns = static_cast<std::size_t>(grey.width) + 2;
    std::vector<int> here(columns);
    std::vector<int> below(columns);
    for (int y = 0; y < grey.height; ++y) {
        const unsigned char* in = grey.row(y);
        unsigned char* out = mono.row(y);
        std::fill(below.begin(), below.end(), 0);
        for (std::size_t x = 0; x + 2 < columns; ++x) {
            const int value = in[x] + here[x + 1] / 16;
            const bool white = value >= 128;
            const int off = value - (white ? 255 : 0);
            here[x + 2] += off * 7;
            below[x] += off * 3;
            below[x + 1] += off * 5;
            below[x + 2] += off;
            if (white) {
                out[x / 8] = static_cast<unsigned char>(out[x / 8] | (0x80U >> (x % 8)));
            }
        }
        here.swap(below);
    }
    return mono;
}

Result<pictures::Raster> onWhite(Document& document, viewer::View& view, int page,
                                 const Scale& scale, Colors colors)
{
    viewer::PictureRequest request;
    request.grey = colors != Colors::Full;
    // Smoothed edges would become specks in black and white.
    request.smooth = colors != Colors::BlackAndWhite;
    return render(document, view, page, scale, request).map([&](pictures::Raster raster) {
        return colors == Colors::BlackAndWhite ? inBlackAndWhite(raster) : std::move(raster);
    });
}

/// The paper shows through where a pixel differs between white and black paper. poppler's own
/// format with alpha has every pixel opaque.
Result<pictures::Raster> onNothing(Document& document, viewer::View& view, int page,
                                   const Scale& scale, Colors colors)
{
    viewer::PictureRequest request;
    request.grey = colors == Colors::Grey;
    const Result<pictures::Raster> white = render(document, view, page, scale, request);
    request.paper = 0xFF000000;
    const Result<pictures::Raster> black =
        white ? render(document, view, page, scale, request) : white;
    if (!black) {
        return tl::unexpected<Error>(black.error());
    }
    const int channels = white->channels();
    pictures::Raster raster{request.grey ? pictures::Raster::Kind::GrayAlpha
                                         : pictures::Raster::Kind::RgbAlpha,
                            scale.width,
                            scale.height,
                            scale.dpi,
                            {}};
    raster.pixels.resize(raster.bytesPerRow() * static_cast<std::size_t>(raster.height));
    for (int y = 0; y < scale.height; ++y) {
        const unsigned char* onWhite = white->row(y);
        const unsigned char* onBlack = black->row(y);
        unsigned char* out = raster.row(y);
        for (int x = 0; x < scale.width; ++x) {
            int through = 255;
            for (int c = 0; c < channels; ++c) {
                through = std::min(through, std::max(0, onWhite[c] - onBlack[c]));
            }
            const int alpha = 255 - through;
            for (int c = 0; c < channels; ++c) {
                const int colour = alpha == 0 ? 0 : (onBlack[c] * 255 + alpha / 2) / alpha;
                *out++ = static_cast<unsigned char>(std::min(colour, 255));
            }
            *out++ = static_cast<unsigned char>(alpha);
            onWhite += channels;
            onBlack += channels;
        }
    }
    return raster;
}

Result<std::string> imageAt(Document& document, viewer::View& view, int page, const Scale& scale,
                            const RenderOptions& options)
{
    try {
        return (options.transparentPaper ? onNothing(document, view, page, scale, options.colors)
                                         : onWhite(document, view, page, scale, options.colors))
            .and_then([&](const pictures::Raster& raster) {
                return viewer::loadedViewer().and_then([&](viewer::Viewer* viewer) {
                    return viewer->imageFile(raster, options.format, options.jpegQuality);
                });
            });
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

} // namespace

Result<RenderOptions> renderOptions(int codes)
{
    constexpr int grey = 16;
    constexpr int blackAndWhite = 32;
    constexpr int transparent = 64;
    const int format = codes & 15;
    if (codes < 0 || codes >= 2 * transparent || format < 1 || format > 5) {
        return fail(ErrorCode::BadArgument,
                    "render options must be an image format 1 to 5 plus 16, 32 or 64");
    }
    if ((codes & grey) != 0 && (codes & blackAndWhite) != 0) {
        return fail(ErrorCode::BadArgument, "an image cannot be both grey and black and white");
    }
    RenderOptions options;
    options.format = static_cast<pictures::ImageFormat>(format);
    options.colors = (codes & grey) != 0            ? Colors::Grey
                     : (codes & blackAndWhite) != 0 ? Colors::BlackAndWhite
                                                    : Colors::Full;
    options.transparentPaper = (codes & transparent) != 0;
    if (options.transparentPaper &&
        (options.format != pictures::ImageFormat::Png || options.colors == Colors::BlackAndWhite)) {
        return fail(ErrorCode::BadArgument,
                    "only PNG in colour or grey can have transparent paper");
    }
    return options;
}

Result<std::string> pageImage(Document& document, viewer::View& view, int page, double dpi,
                              const RenderOptions& options)
{
    return scaleAt(document, page, dpi).and_then([&](const Scale& scale) {
        return imageAt(document, view, page, scale, options);
    });
}

Result<std::string> thumbnail(Document& document, viewer::View& view, int page, int side,
                              const RenderOptions& options)
{
    if (side < 1 || side > pictures::largestSide) {
        return fail(ErrorCode::BadArgument, "the longer side must be 1 to 65000 pixels");
    }
    return hasPage(document, page).and_then([&] {
        return imageAt(document, view, page, scaleTo(document, page, side), options);
    });
}

Result<pictures::Raster> pagePixels(Document& document, viewer::View& view, int page, double dpi,
                                    Colors colors, int longestSide)
{
    return scaleAt(document, page, dpi).and_then([&](Scale scale) -> Result<pictures::Raster> {
        if (longestSide > 0 && std::max(scale.width, scale.height) > longestSide) {
            scale = scaleTo(document, page, longestSide);
        }
        try {
            return onWhite(document, view, page, scale, colors);
        } catch (...) {
            return tl::unexpected<Error>(currentExceptionAsError(document.name()));
        }
    });
}

} // namespace karvel::rendering
