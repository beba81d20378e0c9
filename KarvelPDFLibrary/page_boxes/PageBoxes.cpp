#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"

#include "KarvelPDFLibrary/document/PageArguments.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace karvel::page_boxes {

namespace {

constexpr const char* keys[boxCount] = {"/MediaBox", "/CropBox", "/BleedBox", "/TrimBox",
                                        "/ArtBox"};

/// Coordinates beyond this are not meant: the largest page that anything shows is far smaller.
constexpr double largestCoordinate = 1e7;

const char* keyOf(Box box)
{
    return keys[static_cast<int>(box) - 1];
}

bool canBeInherited(Box box)
{
    return box == Box::Media || box == Box::Crop;
}

/// Four numbers as a rectangle, in whatever order the corners stand.
std::optional<Rectangle> rectangleIn(QPDFObjectHandle array)
{
    if (!array.isArray() || array.getArrayNItems() != 4) {
        return std::nullopt;
    }
    double numbers[4];
    for (int i = 0; i < 4; ++i) {
        QPDFObjectHandle item = array.getArrayItem(i);
        if (!item.getValueAsNumber(numbers[i]) || !(std::abs(numbers[i]) <= largestCoordinate)) {
            return std::nullopt;
        }
    }
    const auto [left, right] = std::minmax(numbers[0], numbers[2]);
    const auto [bottom, top] = std::minmax(numbers[1], numbers[3]);
    if (left == right || bottom == top) {
        return std::nullopt;
    }
    return Rectangle{left, bottom, right, top};
}

std::optional<Rectangle> own(Document& document, int page, Box box)
{
    return rectangleIn(document.page(page).getKey(keyOf(box)));
}

std::optional<Rectangle> inherited(Document& document, int page, Box box)
{
    return canBeInherited(box) ? rectangleIn(document.inheritedAttribute(page, keyOf(box)))
                               : std::nullopt;
}

Rectangle intersection(const Rectangle& one, const Rectangle& other)
{
    return {std::max(one.left, other.left), std::max(one.bottom, other.bottom),
            std::min(one.right, other.right), std::min(one.top, other.top)};
}

} // namespace

double Rectangle::edge(Edge edge) const
{
    switch (edge) {
    case Edge::Left:
        return left;
    case Edge::Bottom:
        return bottom;
    case Edge::Right:
        return right;
    case Edge::Top:
        return top;
    case Edge::Width:
        return right - left;
    case Edge::Height:
        return top - bottom;
    }
    return 0;
}

Rectangle box(Document& document, int page, Box which)
{
    if (const auto found = own(document, page, which)) {
        return *found;
    }
    if (const auto found = inherited(document, page, which)) {
        return *found;
    }
    switch (which) {
    case Box::Media:
        return {0, 0, 612, 792};
    case Box::Crop:
        return box(document, page, Box::Media);
    default:
        return box(document, page, Box::Crop);
    }
}

BoxOrigin boxOrigin(Document& document, int page, Box box)
{
    if (own(document, page, box)) {
        return BoxOrigin::Own;
    }
    return inherited(document, page, box) ? BoxOrigin::Inherited : BoxOrigin::Default;
}

Outcome setBox(Document& document, int page, Box box, const Rectangle& rectangle)
{
    for (const double value : {rectangle.left, rectangle.bottom, rectangle.right, rectangle.top}) {
        if (!(std::abs(value) <= largestCoordinate)) {
            return fail(ErrorCode::BadArgument, "a box cannot be that large");
        }
    }
    if (!(rectangle.right > rectangle.left) || !(rectangle.top > rectangle.bottom)) {
        return fail(ErrorCode::BadArgument, "width and height of a box must be greater than 0");
    }
    document.editPage(page).replaceKey(
        keyOf(box), QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(
                        rectangle.left, rectangle.bottom, rectangle.right, rectangle.top)));
    return {};
}

int rotation(Document& document, int page)
{
    double degrees = 0;
    if (!document.pageAttribute(page, "/Rotate").getValueAsNumber(degrees) ||
        !(std::abs(degrees) <= 1e9) || std::fmod(degrees, 90) != 0) {
        return 0;
    }
    return static_cast<int>(std::fmod(std::fmod(degrees, 360) + 360, 360));
}

Outcome rotatePages(Document& document, PageRun run, int degrees)
{
    if (degrees % 90 != 0) {
        return fail(ErrorCode::BadArgument, "pages can only be turned by multiples of 90 degrees");
    }
    if (Outcome status = hasPages(document, run); !status) {
        return status;
    }
    const int turn = (degrees % 360 + 360) % 360;
    for (int page = run.first; turn != 0 && page < run.first + run.count; ++page) {
        const int turned = (rotation(document, page) + turn) % 360;
        document.editPage(page).replaceKey("/Rotate", QPDFObjectHandle::newInteger(turned));
    }
    return {};
}

double userUnit(Document& document, int page)
{
    double unit = 1;
    QPDFObjectHandle value = document.page(page).getKey("/UserUnit");
    return value.getValueAsNumber(unit) && unit > 0 && unit <= largestCoordinate ? unit : 1;
}

Size shownSize(Document& document, int page)
{
    const Rectangle media = box(document, page, Box::Media);
    Rectangle shown = intersection(media, box(document, page, Box::Crop));
    if (!(shown.right > shown.left) || !(shown.top > shown.bottom)) {
        shown = media;
    }
    const double unit = userUnit(document, page);
    const double width = shown.edge(Edge::Width) * unit;
    const double height = shown.edge(Edge::Height) * unit;
    return rotation(document, page) % 180 == 0 ? Size{width, height} : Size{height, width};
}

Orientation orientation(Document& document, int page)
{
    const Size size = shownSize(document, page);
    if (size.width == size.height) {
        return Orientation::Square;
    }
    return size.width < size.height ? Orientation::Portrait : Orientation::Landscape;
}

} // namespace karvel::page_boxes
