#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <array>
#include <optional>
#include <vector>

namespace karvel::content {

/// An image that a page paints: its stream, or null for one within the content, and the matrix that
/// takes the unit square to where it is.
struct PaintedImage {
    QPDFObjectHandle stream;
    std::array<double, 6> placement = {1, 0, 0, 1, 0, 0};

    /// The area of the page that it covers, in square units of user space.
    double area() const;
};

/// What the content of a page and its annotations may put on paper, as far as can be told without
/// rendering. Text that is drawn invisibly counts for nothing.
struct PaintedContent {
    std::vector<PaintedImage> images;

    /// Whether there is anything beside the images.
    bool paintsMore = false;

    /// Whether clipping, transparency or layers may show an image otherwise than it is.
    bool altersImages = false;

    bool paints() const { return paintsMore || !images.empty(); }
};

/// Goes through a page's content, that of its forms included. Stops at the first text that can be
/// seen: then images that follow it are missing. Content that can't be read paints more.
PaintedContent paintedContent(Document& document, int page);

} // namespace karvel::content
