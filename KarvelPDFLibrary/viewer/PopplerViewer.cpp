#include "KarvelPDFLibrary/viewer/Viewer.h"

#include <algorithm>
#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-page-renderer.h>
#include <poppler/cpp/poppler-page.h>

namespace karvel::viewer {

namespace {

poppler::page::text_layout_enum popplerLayout(TextOrder order)
{
    switch (order) {
    case TextOrder::Physical:
        return poppler::page::physical_layout;
    case TextOrder::ContentStream:
        return poppler::page::raw_order_layout;
    default:
        return poppler::page::non_raw_non_physical_layout;
    }
}

/// Without an area poppler takes the crop box for one, though the text lies in turned and moved
/// coordinates; this one holds every page.
const poppler::rectf everything(-1e6, -1e6, 2e6, 2e6);

constexpr unsigned smoothing =
    poppler::page_renderer::antialiasing | poppler::page_renderer::text_antialiasing;

/// How often poppler found something wrong on this thread.
thread_local unsigned complaints = 0;

class PopplerDocument final : public Viewed {
public:
    PopplerDocument(std::vector<char> bytes, std::unique_ptr<poppler::document> document)
        : bytes_(std::move(bytes)), document_(std::move(document))
    {
    }

    std::optional<std::string> text(int page, TextOrder order) override
    {
        const std::unique_ptr<poppler::page> seen(document_->create_page(page - 1));
        if (!seen) {
            return std::nullopt;
        }
        const poppler::byte_array utf8 = seen->text(everything, popplerLayout(order)).to_utf8();
        return std::string(utf8.begin(), utf8.end());
    }

    std::optional<pictures::Raster> picture(int page, const PictureRequest& request) override
    {
        const std::unique_ptr<poppler::page> seen(document_->create_page(page - 1));
        if (!seen) {
            return std::nullopt;
        }
        const unsigned before = complaints;
        poppler::page_renderer renderer;
        renderer.set_render_hints(request.smooth ? smoothing : 0);
        renderer.set_image_format(request.grey ? poppler::image::format_gray8
                                               : poppler::image::format_rgb24);
        renderer.set_paper_color(request.paper);
        const poppler::image image = renderer.render_page(seen.get(), request.dpi, request.dpi, 0,
                                                          0, request.width, request.height);
        wasDamaged_ = complaints != before;
        if (!image.is_valid() || image.width() != request.width ||
            image.height() != request.height) {
            return std::nullopt;
        }
        return rasterOf(image, request);
    }

    bool wasDamaged() const override { return wasDamaged_; }

private:
    static pictures::Raster rasterOf(const poppler::image& image, const PictureRequest& request)
    {
        using pictures::Raster;
        Raster raster{request.grey ? Raster::Kind::Gray : Raster::Kind::Rgb,
                      image.width(),
                      image.height(),
                      request.dpi,
                      {}};
        raster.pixels.resize(raster.bytesPerRow() * static_cast<std::size_t>(raster.height));
        for (int y = 0; y < raster.height; ++y) {
            const char* row =
                image.const_data() + static_cast<std::ptrdiff_t>(image.bytes_per_row()) * y;
            std::copy_n(row, raster.bytesPerRow(), reinterpret_cast<char*>(raster.row(y)));
        }
        return raster;
    }

    std::vector<char> bytes_; // poppler reads from them
    std::unique_ptr<poppler::document> document_;
    bool wasDamaged_ = false;
};

std::unique_ptr<Viewed> opened(std::vector<char> bytes, poppler::document* document)
{
    std::unique_ptr<poppler::document> owned(document);
    if (!owned || owned->is_locked()) {
        return nullptr;
    }
    return std::make_unique<PopplerDocument>(std::move(bytes), std::move(owned));
}

class PopplerViewer final : public Viewer {
public:
    PopplerViewer()
    {
        // poppler would write what it finds wrong to standard error.
        poppler::set_debug_error_function([](const std::string&, void*) { ++complaints; }, nullptr);
    }

    std::unique_ptr<Viewed> openFile(const std::string& path, const std::string& password) override
    {
        return opened({}, poppler::document::load_from_file(path, password, password));
    }

    std::unique_ptr<Viewed> openBytes(std::vector<char> bytes, const std::string& password) override
    {
        poppler::document* document = poppler::document::load_from_raw_data(
            bytes.data(), static_cast<int>(bytes.size()), password, password);
        return opened(std::move(bytes), document); // moving leaves the bytes where they are
    }

    Result<std::string> imageFile(const pictures::Raster& raster, pictures::ImageFormat format,
                                  int quality) override
    {
        return pictures::imageFile(raster, format, quality);
    }

    std::optional<pictures::Raster> reducedJpeg(const std::string& bytes,
                                                pictures::Reduction reduction,
                                                const pictures::Enough& enough) override
    {
        return pictures::reducedJpeg(bytes, reduction, enough);
    }

    std::optional<pictures::Raster> reducedFax(const std::string& bytes,
                                               const pictures::FaxImage& image,
                                               pictures::Reduction reduction,
                                               const pictures::Enough& enough) override
    {
        return pictures::reducedFax(bytes, image, reduction, enough);
    }
};

} // namespace

} // namespace karvel::viewer

extern "C" __attribute__((visibility("default"))) karvel::viewer::Viewer* karvelModule()
{
    static karvel::viewer::PopplerViewer viewer;
    return &viewer;
}
