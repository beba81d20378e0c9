#pragma once

namespace karvel::page_boxes {

/// Width and height in points.
struct Size {
    double width = 0;
    double height = 0;
};

/// The paper formats by the codes of the interface.
constexpr int formatCount = 14;

/// A format's size in portrait orientation; `format` must be 1 to formatCount.
Size sizeOfFormat(int format);

/// The format whose sides are within 2 points of a size's, in either orientation; 0 when there is
/// none.
int formatOfSize(Size size);

} // namespace karvel::page_boxes
