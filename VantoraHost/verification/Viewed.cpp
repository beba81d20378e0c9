#include "VantoraHost/verification/Viewed.h"

#include <algorithm>
#include <limits>
#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-global.h>
#include <poppler/cpp/poppler-page-renderer.h>
#include <poppler/cpp/poppler-page.h>

namespace vantora::verification {

namespace {

constexpr double resolution = 50;
constexpr double mostPixels = 2000; ///< a side: a sheet of one metre

/// Without an area poppler takes the crop box for one, though the text lies in turned and moved
/// coordinates.
const poppler::rectf everything(-1e6, -1e6, 2e6, 2e6);

class PopplerView final : public Viewed {
public:
    explicit PopplerView(std::unique_ptr<poppler::document> document)
        : document_(std::move(document))
    {
    }

    int pages() const override { return document_->pages(); }

    std::optional<std::string> text(int page) const override
    {
        const std::unique_ptr<poppler::page> seen(document_->create_page(page - 1));
        if (!seen) {
            return std::nullopt;
        }
        const poppler::byte_array utf8 =
            seen->text(everything, poppler::page::non_raw_non_physical_layout).to_utf8();
        return std::string(utf8.begin(), utf8.end());
    }

    std::optional<Picture> picture(int page) const override
    {
        const std::unique_ptr<poppler::page> seen(document_->create_page(page - 1));
        if (!seen) {
            return std::nullopt;
        }
        const poppler::rectf sheet = seen->page_rect();
        const double longest = std::max({sheet.width(), sheet.height(), 1.0});
        const double dpi = std::min(resolution, mostPixels * 72 / longest);
        poppler::page_renderer renderer;
        renderer.set_render_hints(poppler::page_renderer::antialiasing |
                                  poppler::page_renderer::text_antialiasing);
        renderer.set_image_format(poppler::image::format_rgb24);
        const poppler::image image = renderer.render_page(seen.get(), dpi, dpi);
        if (!image.is_valid()) {
            return std::nullopt;
        }
        Picture picture{image.width(), image.height(), {}};
        for (int y = 0; y < image.height(); ++y) {
            picture.pixels.append(image.const_data() +
                                      static_cast<std::ptrdiff_t>(image.bytes_per_row()) * y,
                                  static_cast<std::size_t>(image.width()) * 3);
        }
        return picture;
    }

private:
    std::unique_ptr<poppler::document> document_;
};

} // namespace

std::unique_ptr<Viewed> view(const std::string& bytes, const std::string& password)
{
    // poppler would write what it finds wrong to standard error.
    poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr);
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return nullptr;
    }
    std::unique_ptr<poppler::document> document(poppler::document::load_from_raw_data(
        bytes.data(), static_cast<int>(bytes.size()), password, password));
    if (!document || document->is_locked()) {
        return nullptr;
    }
    return std::make_unique<PopplerView>(std::move(document));
}

} // namespace vantora::verification
