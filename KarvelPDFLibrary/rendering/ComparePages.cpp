#include "KarvelPDFLibrary/rendering/ComparePages.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/rendering/RenderPage.h"

#include <algorithm>
#include <climits>
#include <string>

namespace karvel::rendering {

namespace {

/// All that a page's look is made of, by reference.
std::string madeOf(Document& document, int page)
{
    std::string text;
    for (const char* key : {"/Contents", "/Resources", "/MediaBox", "/CropBox", "/Rotate",
                            "/UserUnit", "/Annots", "/Group"}) {
        text += document.pageAttribute(page, key).unparse() + "\n";
    }
    return text;
}

Result<pictures::Raster> pictureOf(const ShownPage& shown, int dpi)
{
    return pagePixels(shown.document, shown.view, shown.page, dpi, Colors::Full);
}

long long different(const pictures::Raster& one, const pictures::Raster& other)
{
    const int width = std::min(one.width, other.width);
    const int height = std::min(one.height, other.height);
    const auto area = [](long long columns, long long rows) { return columns * rows; };
    long long count =
        area(one.width, one.height) + area(other.width, other.height) - 2 * area(width, height);
    for (int y = 0; y < height; ++y) {
        const unsigned char* first = one.row(y);
        const unsigned char* second = other.row(y);
        for (int x = 0; x < width; ++x, first += 3, second += 3) {
            count += std::equal(first, first + 3, second) ? 0 : 1;
        }
    }
    return count;
}

} // namespace

Result<int> differentPixels(const ShownPage& one, const ShownPage& other, int dpi)
{
    for (const ShownPage& shown : {one, other}) {
        if (Outcome status = hasPage(shown.document, shown.page); !status) {
            return tl::unexpected<Error>(status.error());
        }
    }
    if (one.document.isLost(one.page) || other.document.isLost(other.page)) {
        return INT_MAX; // nobody knows what it looks like
    }
    try {
        if (&one.document == &other.document &&
            madeOf(one.document, one.page) == madeOf(other.document, other.page)) {
            return 0;
        }
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(one.document.name()));
    }
    return pictureOf(one, dpi).and_then([&](const pictures::Raster& first) {
        return pictureOf(other, dpi).map([&](const pictures::Raster& second) {
            return static_cast<int>(std::min<long long>(INT_MAX, different(first, second)));
        });
    });
}

} // namespace karvel::rendering
