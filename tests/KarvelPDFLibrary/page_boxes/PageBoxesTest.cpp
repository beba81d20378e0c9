#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"

#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::page_boxes;

/// One page with entries in place of a media box; its parent has some too.
std::unique_ptr<Document> pageWith(const std::string& entries, const std::string& inherited = {})
{
    support::PdfBuilder builder;
    const int catalog = builder.reserve();
    const int root = builder.reserve();
    const int page =
        builder.add("<< /Type /Page /Parent " + builder.reference(root) + " " + entries + " >>");
    builder.set(root, "<< /Type /Pages /Count 1 /Kids [" + builder.reference(page) + "] " +
                          inherited + " >>");
    builder.set(catalog, "<< /Type /Catalog /Pages " + builder.reference(root) + " >>");
    return support::opened(builder.build(catalog));
}

std::string print(const Rectangle& box)
{
    char text[200];
    std::snprintf(text, sizeof text, "%g %g %g %g", box.left, box.bottom, box.right, box.top);
    return text;
}

struct BoxRow {
    const char* name;
    const char* entries;
    const char* inherited;
    Box box;
    const char* rectangle;
    BoxOrigin origin;
};

TEST(Boxes, AreRead)
{
    const BoxRow rows[] = {
        {"own", "/MediaBox [1 2 3 4]", "", Box::Media, "1 2 3 4", BoxOrigin::Own},
        {"inherited", "", "/MediaBox [1 2 3 4]", Box::Media, "1 2 3 4", BoxOrigin::Inherited},
        {"own before inherited", "/MediaBox [1 2 3 4]", "/MediaBox [5 6 7 8]", Box::Media,
         "1 2 3 4", BoxOrigin::Own},
        {"inverted", "/MediaBox [3 4 1 2]", "", Box::Media, "1 2 3 4", BoxOrigin::Own},
        {"no media box", "", "", Box::Media, "0 0 612 792", BoxOrigin::Default},
        {"empty media box", "/MediaBox [0 0 0 9]", "", Box::Media, "0 0 612 792",
         BoxOrigin::Default},
        {"wrong type above a right one", "/MediaBox (A4)", "/MediaBox [1 2 3 4]", Box::Media,
         "1 2 3 4", BoxOrigin::Inherited},
        {"wrong items", "/MediaBox [0 0 /A 9]", "", Box::Media, "0 0 612 792", BoxOrigin::Default},
        {"too few items", "/MediaBox [0 0 9]", "", Box::Media, "0 0 612 792", BoxOrigin::Default},
        {"beyond all measure", "/MediaBox [0 0 99999999999999999999999999999999999999999999999 9]",
         "", Box::Media, "0 0 612 792", BoxOrigin::Default},
        {"crop from media", "/MediaBox [1 2 3 4]", "", Box::Crop, "1 2 3 4", BoxOrigin::Default},
        {"crop inherited", "/MediaBox [0 0 9 9]", "/CropBox [1 1 8 8]", Box::Crop, "1 1 8 8",
         BoxOrigin::Inherited},
        {"trim from crop", "/MediaBox [0 0 9 9]", "/CropBox [1 1 8 8]", Box::Trim, "1 1 8 8",
         BoxOrigin::Default},
        {"trim is not inherited", "/MediaBox [0 0 9 9]", "/TrimBox [1 1 8 8]", Box::Trim, "0 0 9 9",
         BoxOrigin::Default},
        {"art", "/MediaBox [0 0 9 9] /ArtBox [.5 1 2 3]", "", Box::Art, "0.5 1 2 3",
         BoxOrigin::Own}};
    for (const BoxRow& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = pageWith(row.entries, row.inherited);
        EXPECT_EQ(print(box(*document, 1, row.box)), row.rectangle);
        EXPECT_EQ(boxOrigin(*document, 1, row.box), row.origin);
    }
}

struct SizeRow {
    const char* name;
    const char* entries;
    double width;
    double height;
    Orientation orientation;
};

TEST(Sizes, AreThoseShown)
{
    const SizeRow rows[] = {
        {"upright", "/MediaBox [10 20 110 220]", 100, 200, Orientation::Portrait},
        {"turned", "/MediaBox [0 0 100 200] /Rotate 90", 200, 100, Orientation::Landscape},
        {"square", "/MediaBox [0 0 100 100]", 100, 100, Orientation::Square},
        {"cropped", "/MediaBox [0 0 100 200] /CropBox [50 50 90 500]", 40, 150,
         Orientation::Portrait},
        {"cropped outside", "/MediaBox [0 0 100 200] /CropBox [300 0 400 90]", 100, 200,
         Orientation::Portrait},
        {"larger unit", "/MediaBox [0 0 100 200] /UserUnit 2.5", 250, 500, Orientation::Portrait},
        {"nonsense unit", "/MediaBox [0 0 100 200] /UserUnit -1", 100, 200, Orientation::Portrait}};
    for (const SizeRow& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = pageWith(row.entries);
        EXPECT_DOUBLE_EQ(shownSize(*document, 1).width, row.width);
        EXPECT_DOUBLE_EQ(shownSize(*document, 1).height, row.height);
        EXPECT_EQ(orientation(*document, 1), row.orientation);
    }
}

struct RotationRow {
    const char* name;
    const char* entries;
    int degrees;
};

TEST(Rotations, AreRead)
{
    const RotationRow rows[] = {{"absent", "", 0},
                                {"quarter", "/Rotate 90", 90},
                                {"backwards", "/Rotate -90", 270},
                                {"real", "/Rotate 180.0", 180},
                                {"many turns", "/Rotate 36270", 270},
                                {"askew", "/Rotate 45", 0},
                                {"text", "/Rotate (90)", 0},
                                {"huge", "/Rotate 99999999999999999999", 0}};
    for (const RotationRow& row : rows)
        EXPECT_EQ(rotation(*pageWith(row.entries), 1), row.degrees) << row.name;
}

TEST(PageBoxes, RotatingAddsToWhatIsThere)
{
    auto document = pageWith("/MediaBox [0 0 100 200]", "/Rotate 270");
    ASSERT_TRUE(rotatePages(*document, {1, 1}, 180).has_value());
    EXPECT_EQ(rotation(*document, 1), 90);
    ASSERT_TRUE(rotatePages(*document, {1, 1}, -450).has_value());
    EXPECT_EQ(rotation(*document, 1), 0) << "in spite of the inherited one";
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a.pdf", saving::toString(*document, {}).value_or(""));
    EXPECT_NE(support::runCommand("pdfinfo " + path).output.find("Page rot:        0"),
              std::string::npos);
    EXPECT_EQ(rotatePages(*document, {1, 1}, 45).error().code, ErrorCode::BadArgument);
    EXPECT_EQ(rotatePages(*document, {1, 2}, 90).error().code, ErrorCode::BadPageList);
    EXPECT_EQ(rotatePages(*document, {1, INT_MAX}, 90).error().code, ErrorCode::BadPageList);
}

TEST(PageBoxes, SettingABoxIsSeenByOthers)
{
    auto document = support::opened(support::documentOfPages(2));
    ASSERT_TRUE(setBox(*document, 2, Box::Crop, {10.5, 20, 110, 220}).has_value());
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a.pdf", saving::toString(*document, {}).value_or(""));
    const std::string told = support::runCommand("pdfinfo -l 2 -box " + path).output;
    EXPECT_NE(told.find("Page    2 CropBox:      10.50    20.00   110.00   220.00"),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("Page    1 CropBox:       0.00     0.00   612.00   792.00"),
              std::string::npos);
}

TEST(PageBoxes, ABoxThatIsNoneIsRefused)
{
    auto document = support::opened(support::documentOfPages(1));
    for (const Rectangle& wrong :
         {Rectangle{0, 0, 0, 10}, Rectangle{0, 10, 10, 0}, Rectangle{0, 0, NAN, 10},
          Rectangle{0, 0, INFINITY, 10}, Rectangle{-1e300, 0, 10, 10}}) {
        EXPECT_EQ(setBox(*document, 1, Box::Media, wrong).error().code, ErrorCode::BadArgument);
    }
    EXPECT_FALSE(document->isModified());
}

TEST(PaperFormats, AreFoundInBothOrientations)
{
    EXPECT_EQ(formatOfSize({595, 842}), 5);
    EXPECT_EQ(formatOfSize({843, 595}), 5);
    EXPECT_EQ(formatOfSize({612, 792}), 10);
    EXPECT_EQ(formatOfSize({600, 792}), 0);
    for (int format = 1; format <= formatCount; ++format) {
        EXPECT_EQ(formatOfSize(sizeOfFormat(format)), format);
    }
}

} // namespace
