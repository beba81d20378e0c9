#include "KarvelPDFLibrary/rendering/PageBlankness.h"

#include "KarvelPDFLibrary/viewer/Viewer.h"
#include "tests/support/Images.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using blankness::Finding;

constexpr int side = 800; // pixels of a scan: 2 by 2 inches at 400 dpi

/// A page of 144 by 144 points with an image over all of it.
std::unique_ptr<Document> scan(const std::string& data, const std::string& entries,
                               const std::string& more = {})
{
    const std::string image = "/Type /XObject /Subtype /Image /Width 800 /Height 800 " + entries;
    return support::opened(
        support::Sketch{{"/MediaBox [0 0 144 144] /Contents @content "
                         "/Resources << /XObject << /Im @image >> >>"},
                        "",
                        {{"content", "|q 144 0 0 144 0 0 cm /Im Do Q" + more},
                         {"image", entries.empty() ? "null" : image + "|" + data}}}
            .built());
}

const std::string asJpeg = "/ColorSpace /DeviceGray /BitsPerComponent 8 /Filter /DCTDecode";
const std::string asFax = "/ColorSpace /DeviceGray /BitsPerComponent 1 /Filter /CCITTFaxDecode "
                          "/DecodeParms << /K -1 /Columns 800 /Rows 800 >>";

std::string jpegOf(unsigned char paper, bool marked)
{
    pictures::Raster raster{pictures::Raster::Kind::Gray, side, side, 400, {}};
    raster.pixels.assign(static_cast<std::size_t>(side) * side, paper);
    for (int y = 700; y < 710 && marked; ++y) {
        std::fill_n(raster.row(y) + 300, 10, static_cast<unsigned char>(0));
    }
    return viewer::loadedViewer()
        .value()
        ->imageFile(raster, pictures::ImageFormat::Jpeg, 90)
        .value();
}

std::string faxOf(bool marked)
{
    std::vector<unsigned char> bits(static_cast<std::size_t>(side) * side / 8);
    for (std::size_t y = 700; y < 710 && marked; ++y) {
        bits[y * side / 8 + 40] = 0xFF;
    }
    return support::groupFour(bits, side, side);
}

Finding found(Document& document)
{
    viewer::View view;
    const auto judgement =
        rendering::pageJudgement(document, view, 1, rendering::Thoroughness::Whether);
    EXPECT_TRUE(judgement.has_value());
    return judgement ? judgement->finding : Finding::Unreadable;
}

std::string half(const std::string& data)
{
    return data.substr(0, data.size() / 2);
}

TEST(BlankPages, AreWhatIsSeenOfThem)
{
    const struct {
        const char* name;
        std::string data, entries, more;
        Finding finding;
    } rows[] = {
        {"a grey scan", jpegOf(230, false), asJpeg, "", Finding::Nothing},
        {"a dark scan", jpegOf(60, false), asJpeg, "", Finding::DarkPaper},
        {"a scan with a dot", jpegOf(230, true), asJpeg, "", Finding::Marks},
        {"half of a scan, which ends in another grey", half(jpegOf(230, true)), asJpeg, "",
         Finding::Marks},
        {"a white fax", faxOf(false), asFax, "", Finding::Nothing},
        {"a fax with a dot", faxOf(true), asFax, "", Finding::Marks},
        {"a fax of white on black", faxOf(false), asFax + " /Decode [1 0]", "", Finding::DarkPaper},
        {"half of a fax", half(faxOf(true)), asFax, "", Finding::Unreadable},
        {"an image that is not there", "", "", "", Finding::Nothing},
        {"a scan covered with black", jpegOf(230, false), asJpeg, " 0 g 0 0 144 144 re f",
         Finding::DarkPaper},
        {"a dot covered with white", jpegOf(255, true), asJpeg, " 1 g 0 0 144 144 re f",
         Finding::Nothing},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(found(*scan(row.data, row.entries, row.more)), row.finding) << row.name;
    }
}

TEST(BlankPages, AreNoneOfThoseThatDamageMadeUnreadable)
{
    support::PagedDocument file(2);
    const std::string whole = file.build();
    for (const int object : {file.pages[0], file.pages[0] - 1 /* its content */}) {
        const std::string header = "\n" + std::to_string(object) + " 0 ";
        EXPECT_EQ(found(*support::opened(support::replaced(whole, header + "obj", header + "xxx"))),
                  Finding::Unreadable);
    }
}

TEST(BlankPages, AreTakenByAToleranceWithAndWithoutNoise)
{
    auto document = scan(jpegOf(230, true), asJpeg);
    viewer::View view;
    rendering::LastJudgement last;
    const auto isBlank = [&](double tolerance) {
        return rendering::isBlank(*document, view, last, 1, tolerance).value();
    };
    EXPECT_FALSE(isBlank(0));
    EXPECT_TRUE(isBlank(1));
    EXPECT_FALSE(isBlank(-1));
    EXPECT_TRUE(isBlank(-2));
}

} // namespace
