#include "KarvelPDFLibrary/page_boxes/PaperFormats.h"

#include <cmath>

namespace karvel::page_boxes {

namespace {

constexpr Size millimetres(double width, double height)
{
    return {width * 72 / 25.4, height * 72 / 25.4};
}

constexpr Size formats[formatCount] = {
    millimetres(841, 1189), // A0 to A6: ISO 216
    millimetres(594, 841),
    millimetres(420, 594),
    millimetres(297, 420),
    millimetres(210, 297),
    millimetres(148, 210),
    millimetres(105, 148),
    millimetres(250, 353), // B4, B5: ISO 216
    millimetres(176, 250),
    {612, 792},  // Letter
    {612, 1008}, // Legal
    {792, 1224}, // Tabloid
    {522, 756},  // Executive
    {396, 612},  // Statement
};

constexpr double tolerance = 2;

bool matches(double side, double other)
{
    return std::abs(side - other) <= tolerance;
}

} // namespace

Size sizeOfFormat(int format)
{
    return formats[format - 1];
}

int formatOfSize(Size size)
{
    for (int format = 1; format <= formatCount; ++format) {
        const Size paper = sizeOfFormat(format);
        const bool portrait =
            matches(size.width, paper.width) && matches(size.height, paper.height);
        const bool landscape =
            matches(size.width, paper.height) && matches(size.height, paper.width);
        if (portrait || landscape) {
            return format;
        }
    }
    return 0;
}

} // namespace karvel::page_boxes
