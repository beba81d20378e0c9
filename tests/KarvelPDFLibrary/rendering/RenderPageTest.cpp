#include "KarvelPDFLibrary/rendering/RenderPage.h"

#include "KarvelPDFLibrary/rendering/PageBlankness.h"
#include "KarvelPDFLibrary/rendering/PageColor.h"
#include "tests/support/Images.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::rendering;

/// One page with a content of its own: 100 by 50 points unless the entries say otherwise.
std::string page(const std::string& content, const std::string& entries = {})
{
    return support::Sketch{
        {"/MediaBox [0 0 100 50] /Contents @content /Resources << >> " + entries},
        "",
        {{"content", "|" + content}}}
        .built();
}

/// Red in the left half, nothing in the right one.
const std::string redHalf = "1 0 0 rg 0 0 50 50 re f";

support::Image rendered(const std::string& pdf, double dpi, int options)
{
    auto document = support::opened(pdf);
    viewer::View view;
    const auto bytes = renderOptions(options).and_then(
        [&](const RenderOptions& chosen) { return pageImage(*document, view, 1, dpi, chosen); });
    EXPECT_TRUE(bytes.has_value()) << (bytes ? std::string() : bytes.error().text);
    return support::decoded(bytes.value_or(""));
}

constexpr std::array<int, 4> red = {255, 0, 0, 255};
constexpr std::array<int, 4> grey = {76, 76, 76, 255};
constexpr std::array<int, 4> white = {255, 255, 255, 255};

struct FormatRow {
    const char* name;
    int options;
    const char* format;
    std::array<int, 4> left;
    std::array<int, 4> right;
};

TEST(Formats, HoldThePage)
{
    const FormatRow rows[] = {{"png", 1, "PNG", red, white},
                              {"jpeg", 2, "JPEG", red, white},
                              {"tiff", 3, "TIFF", red, white},
                              {"bmp", 4, "BMP", red, white},
                              {"ppm", 5, "PPM", red, white},
                              {"grey png", 17, "PNG", grey, white},
                              {"grey jpeg", 18, "JPEG", grey, white},
                              {"grey tiff", 19, "TIFF", grey, white},
                              {"grey bmp", 20, "BMP", grey, white},
                              {"grey ppm", 21, "PGM", grey, white},
                              {"transparent png", 65, "PNG", red, {0, 0, 0, 0}},
                              {"transparent grey png", 81, "PNG", grey, {0, 0, 0, 0}}};
    for (const FormatRow& row : rows) {
        SCOPED_TRACE(row.name);
        const support::Image image = rendered(page(redHalf), 144, row.options);
        EXPECT_EQ(image.format, row.format);
        ASSERT_EQ(image.width, 200);
        ASSERT_EQ(image.height, 100);
        for (int c = 0; c < 4; ++c) {
            const auto index = static_cast<std::size_t>(c);
            EXPECT_NEAR(image.at(50, 90)[index], row.left[index], 3) << "component " << c;
            EXPECT_NEAR(image.at(150, 10)[index], row.right[index], 3) << "component " << c;
        }
    }
}

TEST(Rendering, InBlackAndWhiteIsOnlyThat)
{
    for (const int format : {1, 2, 3, 4, 5}) {
        const support::Image image = rendered(page("0 g 0 0 51 50 re f"), 72, format + 32);
        ASSERT_EQ(image.width, 100) << format;
        EXPECT_NEAR(image.at(25, 25)[0], 0, 3) << format;
        EXPECT_NEAR(image.at(75, 25)[0], 255, 3) << format;
        EXPECT_NEAR(image.at(49, 25)[0], 0, 3) << format;
        EXPECT_NEAR(image.at(53, 25)[0], 255, 6) << format;
    }
    // Grey comes out as as much black as it is dark.
    const support::Image grey = rendered(page("0.75 g 0 0 100 50 re f"), 72, 33);
    int white = 0;
    for (int y = 0; y < grey.height; ++y) {
        for (int x = 0; x < grey.width; ++x) {
            const int value = grey.at(x, y)[0];
            EXPECT_TRUE(value == 0 || value == 255);
            white += value == 255 ? 1 : 0;
        }
    }
    EXPECT_NEAR(white, 3750, 100);
}

struct SizeRow {
    const char* name;
    const char* entries;
    double dpi;
    int width;
    int height;
};

TEST(RenderedSizes, AreThoseOfThePageAsShown)
{
    const SizeRow rows[] = {{"plain", "", 72, 100, 50},
                            {"turned", "/Rotate 90", 72, 50, 100},
                            {"cropped", "/CropBox [10 10 90 40]", 72, 80, 30},
                            {"larger unit", "/UserUnit 2", 72, 200, 100},
                            {"part of a pixel", "/CropBox [0 0 70.3 30]", 72, 71, 30}};
    for (const SizeRow& row : rows) {
        SCOPED_TRACE(row.name);
        const support::Image image = rendered(page(redHalf, row.entries), row.dpi, 1);
        EXPECT_EQ(image.width, row.width);
        EXPECT_EQ(image.height, row.height);
        // Red is shown in the place that belongs to the lower left of the user space.
        const bool turned = row.width < row.height;
        EXPECT_EQ(turned ? image.at(image.width / 2, 1) : image.at(1, image.height / 2), red);
    }
}

TEST(Rendering, OfThumbnailsHasALongerSideOfThatManyPixels)
{
    auto document = support::opened(page(redHalf));
    viewer::View view;
    for (const int side : {1, 7, 64}) {
        const auto bytes = thumbnail(*document, view, 1, side, {});
        const support::Image image = support::decoded(bytes.value_or(""));
        EXPECT_EQ(image.width, side);
        EXPECT_EQ(image.height, std::max(1, static_cast<int>(std::lround(side / 2.0))));
    }
}

struct Refusal {
    const char* name;
    int page;
    double dpi;
    const char* entries;
    ErrorCode code;
};

TEST(RefusedRenderings, AreErrors)
{
    const Refusal rows[] = {
        {"no such page", 2, 72, "", ErrorCode::BadPageList},
        {"page zero", 0, 72, "", ErrorCode::BadPageList},
        {"no resolution", 1, 0, "", ErrorCode::BadArgument},
        {"resolution that is no number", 1, NAN, "", ErrorCode::BadArgument},
        {"resolution beyond measure", 1, 1e300, "", ErrorCode::BadArgument},
        {"too many pixels", 1, 9600, "/MediaBox [0 0 14400 14400]", ErrorCode::OutOfMemory},
        {"hostile unit", 1, 72, "/UserUnit 1000000", ErrorCode::OutOfMemory}};
    for (const Refusal& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(page(redHalf, row.entries));
        viewer::View view;
        const auto bytes = pageImage(*document, view, row.page, row.dpi, {});
        ASSERT_FALSE(bytes.has_value());
        EXPECT_EQ(bytes.error().code, row.code);
    }
}

TEST(Rendering, OptionsThatContradictEachOtherAreRefused)
{
    for (const int options : {0, 6, -1, 48, 49, 66, 97, 128, 129, INT_MAX}) {
        EXPECT_FALSE(renderOptions(options).has_value()) << options;
    }
    viewer::View view;
    auto document = support::opened(page(redHalf));
    EXPECT_FALSE(thumbnail(*document, view, 1, 0, {}).has_value());
    EXPECT_FALSE(thumbnail(*document, view, 1, INT_MAX, {}).has_value());
}

struct Coloured {
    const char* name;
    const char* content;
    double percent;
};

TEST(PageColour, IsMeasured)
{
    const Coloured rows[] = {{"nothing", "", 0},
                             {"white", "1 g 0 0 100 50 re f", 0},
                             {"red half", "1 0 0 rg 0 0 50 50 re f", 50},
                             {"grey half", "0.5 g 0 0 50 50 re f", 0},
                             {"grey of four inks", "0 0 0 0.5 k 0 0 50 50 re f", 0},
                             {"pale yellow dot", "1 1 0.9 rg 10 10 1 1 re f", 0.02}};
    for (const Coloured& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(page(row.content));
        viewer::View view;
        EXPECT_NEAR(colouredPercentage(*document, view, 1).value(), row.percent, 0.1);
        EXPECT_EQ(colouredPercentage(*document, view, 1).value() > 0, row.percent > 0);
    }
}

TEST(Rendering, FindsBlankPagesAndLeavesOne)
{
    support::PagedDocument file(4);
    for (const std::size_t index : {0U, 2U}) {
        file.builder.setStream(file.pages[index] - 1, "q Q");
    }
    auto document = support::opened(file.build());
    viewer::View view;
    EXPECT_EQ(blankPages(*document, view, {1, 4}).value(), (std::vector<int>{1, 3}));
    EXPECT_EQ(blankPages(*document, view, {2, 3}).value(), std::vector<int>{3});
    EXPECT_EQ(blankPages(*document, view, {2, 4}).error().code, ErrorCode::BadPageList);
    auto blank = Document::create().value();
    viewer::View other;
    EXPECT_TRUE(blankPages(*blank, other, {1, 1}).value().empty());
}

} // namespace
