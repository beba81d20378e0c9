#include "KarvelPDFLibrary/extraction/PageText.h"

#include <poppler/cpp/poppler-page.h>

namespace karvel::extraction {

namespace {

poppler::page::text_layout_enum popplerLayout(TextLayout layout)
{
    switch (layout) {
    case TextLayout::Physical:
        return poppler::page::physical_layout;
    case TextLayout::ContentStream:
        return poppler::page::raw_order_layout;
    default:
        return poppler::page::non_raw_non_physical_layout;
    }
}

/// Without an area poppler takes the crop box for one, though the text lies in turned and moved
/// coordinates; this one holds every page.
const poppler::rectf everything(-1e6, -1e6, 2e6, 2e6);

} // namespace

Result<std::string> pageText(Document& document, viewing::View& view, int page, TextLayout layout)
{
    const auto seen = view.page(document, page);
    if (!seen) {
        return tl::unexpected<Error>(seen.error());
    }
    try {
        const poppler::byte_array utf8 = (*seen)->text(everything, popplerLayout(layout)).to_utf8();
        std::string text(utf8.begin(), utf8.end());
        text.erase(text.find_last_not_of("\n\f") + 1);
        return text;
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

} // namespace karvel::extraction
