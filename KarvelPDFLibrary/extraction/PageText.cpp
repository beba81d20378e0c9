#include "KarvelPDFLibrary/extraction/PageText.h"

#include "KarvelPDFLibrary/extraction/UnreadableText.h"

namespace karvel::extraction {

namespace {

viewer::TextOrder orderOf(TextLayout layout)
{
    switch (layout) {
    case TextLayout::Physical:
        return viewer::TextOrder::Physical;
    case TextLayout::ContentStream:
        return viewer::TextOrder::ContentStream;
    default:
        return viewer::TextOrder::Reading;
    }
}

} // namespace

Result<std::string> pageText(Document& document, viewer::View& view, int page, TextLayout layout)
{
    const auto seen = view.seen(document, page);
    if (!seen) {
        return tl::unexpected<Error>(seen.error());
    }
    try {
        std::optional<std::string> text = (*seen)->text(page, orderOf(layout));
        if (!text) {
            return fail(ErrorCode::LibraryFailed,
                        document.name() + ": page " + std::to_string(page) + " cannot be shown");
        }
        warnOfUnreadableText(document, page);
        text->erase(text->find_last_not_of("\n\f") + 1);
        return std::move(*text);
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

} // namespace karvel::extraction
