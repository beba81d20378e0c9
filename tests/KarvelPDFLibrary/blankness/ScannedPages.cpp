#include "KarvelPDFLibrary/viewer/Viewer.h"
#include "tests/KarvelPDFLibrary/blankness/Page.h"
#include "tests/KarvelPDFLibrary/blankness/ScanFaults.h"
#include "tests/support/Images.h"

namespace labelled {

namespace {

using karvel::pictures::Raster;
using support::PdfBuilder;

enum class Stored { Grey, Colour, Plain, Fax, Jbig2 };

bool isBilevel(Stored stored)
{
    return stored == Stored::Fax || stored == Stored::Jbig2;
}

Stored anyContinuous(Random& random)
{
    constexpr Stored all[] = {Stored::Grey, Stored::Colour, Stored::Colour, Stored::Plain};
    return all[random.whole(0, 3)];
}

int imageOf(Page& page, const Sheet& sheet, Stored stored, Random& random)
{
    const Raster& picture = sheet.picture();
    const std::string entries = "/Type /XObject /Subtype /Image /Width " +
                                std::to_string(picture.width) + " /Height " +
                                std::to_string(picture.height) + " ";
    if (isBilevel(stored)) {
        const auto bits = sheet.bits(140);
        const std::string mono = entries + "/ColorSpace /DeviceGray /BitsPerComponent 1 ";
        if (stored == Stored::Jbig2) {
            return page.builder.addStream(support::jbig2(bits, picture.width, picture.height),
                                          mono + "/Filter /JBIG2Decode");
        }
        return page.builder.addStream(
            support::groupFour(bits, picture.width, picture.height),
            mono + "/Filter /CCITTFaxDecode /DecodeParms << /K -1 /Columns " +
                std::to_string(picture.width) + " /Rows " + std::to_string(picture.height) + " >>");
    }
    Raster grey{Raster::Kind::Gray, picture.width, picture.height, picture.dpi, {}};
    for (std::size_t i = 1; i < picture.pixels.size() && stored != Stored::Colour; i += 3) {
        grey.pixels.push_back(picture.pixels[i]);
    }
    const std::string space = std::string("/BitsPerComponent 8 /ColorSpace /Device") +
                              (stored == Stored::Colour ? "RGB " : "Gray ");
    if (stored == Stored::Plain) {
        return page.builder.addStream(std::string(grey.pixels.begin(), grey.pixels.end()),
                                      entries + space);
    }
    const auto jpeg = karvel::viewer::loadedViewer().value()->imageFile(
        stored == Stored::Colour ? picture : grey, karvel::pictures::ImageFormat::Jpeg,
        random.whole(60, 92));
    return page.builder.addStream(jpeg.value(), entries + space + "/Filter /DCTDecode");
}

using Ink = void (*)(Sheet&, Random&);
using Over = void (*)(Page&, Random&);

Colour grey(double shade)
{
    return {shade, shade, shade};
}

Colour black(Random& random)
{
    return grey(random.between(0, 80));
}

struct Point {
    double x;
    double y;
};

/// A place for marks, beyond what scanners put along the edges.
Point inside(const Sheet& sheet, Random& random)
{
    return {random.between(12, sheet.width() - 22), random.between(12, sheet.height() - 22)};
}

/// Characters of a number and a height within bounds.
void writeAt(Sheet& sheet, const Point& at, int fewest, int most, double lowest, double highest,
             const Colour& ink, Random& random)
{
    const int characters = random.whole(fewest, most);
    const double height = random.between(lowest, highest);
    sheet.text(at.x, at.y, characters, height, ink, random);
}

struct ScannedRow {
    Kind kind;
    std::vector<Stored> stored; // empty for any in grey or colour
    unsigned faults = 0;        // others that show something may have any
    double grain = 0;           // at most
    Ink ink = nullptr;
    Over over = nullptr;
};

void hiddenWords(Page& page, Random& random)
{
    page.content += textAt(random, 11, "3 Tr", "recognised words");
}

const std::vector<ScannedRow>& rowsOfScanned()
{
    static const std::vector<Stored> any = {};
    static const std::vector<Stored> greyscale = {Stored::Grey};
    static const std::vector<Stored> colour = {Stored::Colour};
    static const std::vector<Stored> plain = {Stored::Plain};
    static const std::vector<Stored> fax = {Stored::Fax};
    static const std::vector<Stored> jbig2 = {Stored::Jbig2};
    static const std::vector<Stored> mono = {Stored::Fax, Stored::Fax, Stored::Jbig2};
    static const std::vector<ScannedRow> rows = {
        {{"scan: clean", true}, any},
        {{"scan: grey with grain", true}, greyscale, 0, 3},
        {{"scan: colour with grain", true}, colour, 0, 3},
        {{"scan: stored without loss, with grain", true}, plain, 0, 3},
        {{"scan: dust", true}, any, Dust, 2},
        {{"scan: uneven light", true}, any, Lamp, 2},
        {{"scan: shadows along edges", true}, any, Bars, 2},
        {{"scan: tilted", true}, any, Wedges, 2},
        {{"scan: punch holes", true}, any, Holes, 2},
        {{"scan: other side shines through", true}, any, Bleed, 2},
        {{"scan: everything at once", true}, any, Bars | Holes | Bleed | Lamp | Dust, 2},
        {{"scan: invisible text over it", true}, any, Dust, 2, nullptr, hiddenWords},
        {{"fax: clean", true}, fax},
        {{"fax: specks", true}, fax, Dust},
        {{"fax: specks, bars and holes", true}, fax, Dust | Bars | Holes},
        {{"fax: tilted", true}, fax, Wedges},
        {{"jbig2: punch holes", true}, jbig2, Holes},
        {{"scan with a dot", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             const Point at = inside(sheet, random);
             const double size = random.between(0.4, 0.8);
             sheet.dot(at.x, at.y, size, black(random));
         }},
        {{"scan with a hairline", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             const Point at = inside(sheet, random);
             const double slant = random.chance(0.5) ? 0 : random.between(0, 10);
             const Point end = random.chance(0.5) ? Point{sheet.width() - 12, at.y + slant}
                                                  : Point{at.x + slant, sheet.height() - 12};
             const double thickness = random.between(0.08, 0.15);
             sheet.stroke(at.x, at.y, end.x, end.y, thickness, black(random));
         }},
        {{"scan with pale yellow words", false},
         colour,
         0,
         1.5,
         [](Sheet& sheet, Random& random) {
             const Colour yellow = {255, 255, random.between(120, 190)};
             const Point at = inside(sheet, random);
             writeAt(sheet, at, 3, 10, 2, 4, yellow, random);
         }},
        {{"scan with pale grey words", false},
         any,
         0,
         1.5,
         [](Sheet& sheet, Random& random) {
             const Colour pale = grey(random.between(175, 212));
             const Point at = inside(sheet, random);
             writeAt(sheet, {at.x / 2, at.y}, 3, 10, 2, 4, pale, random);
         }},
        {{"scan with tiny words", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             const Colour ink = black(random);
             writeAt(sheet, inside(sheet, random), 3, 12, 0.7, 1.2, ink, random);
         }},
        {{"scan with a page number", false},
         any,
         0,
         3,
         [](Sheet& sheet, Random& random) {
             const Colour ink = black(random);
             const Point at = {sheet.width() / 2, sheet.height() - random.between(13, 20)};
             writeAt(sheet, at, 1, 3, 1.8, 3, ink, random);
         }},
        {{"scan with a page number in a corner", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             const Point at = {sheet.width() - random.between(12, 18), random.between(9, 14)};
             const Colour ink = black(random);
             sheet.text(at.x, at.y, 2, 2.2, ink, random);
         }},
        {{"scan with a stamp", false},
         any,
         0,
         3,
         [](Sheet& sheet, Random& random) {
             const Colour ink = {random.between(60, 200), random.between(60, 120), 170};
             const double x = random.between(35, sheet.width() - 30);
             const double y = random.between(35, sheet.height() - 30);
             sheet.ring(x, y, random.between(18, 30), 0.4, ink);
             sheet.text(x - 6, y, 6, 2.5, ink, random);
         }},
        {{"scan with a signature", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             double x = random.between(20, 40);
             double y = random.between(50, sheet.height() - 40);
             for (int i = 0; i < 8; ++i) {
                 const double toX = x + random.between(1, 4);
                 const double toY = y + random.between(-3, 3);
                 sheet.stroke(x, y, toX, toY, 0.25, {60, 60, random.between(60, 160)});
                 x = toX;
                 y = toY;
             }
         }},
        {{"scan with a mark at the edge", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             const Colour ink = {random.between(0, 150), 60, 90};
             const double top = random.between(30, 90);
             sheet.box(sheet.width() - 10, top, 11, random.between(6, 20), ink);
         }},
        {{"scan with a line near the edge", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             const double in = random.between(8.5, 13); // no shadow hides it
             sheet.stroke(in, 5, in, sheet.height() - 5, 0.25, black(random));
         }},
        {{"scan with a slanted line near the edge", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const double in = random.between(1, 6);
             const double end = in + random.between(2, 8);
             sheet.stroke(in, 4, end, sheet.height() - 4, random.between(0.15, 0.3), grey(40));
         }},
        {{"scan with a line beside a shadow", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const int edge = random.whole(0, 1);
             const double bar = random.between(0, 3);
             const double fading = random.between(0, 3);
             const double in = bar + fading + random.between(1, 4);
             const double x = edge == 0 ? in : sheet.width() - in;
             const Colour ink = black(random);
             sheet.stroke(x, 0, x, sheet.height(), random.between(0.2, 0.4), ink);
             sheet.shadow(edge, bar, bar, fading, random.between(0.2, 1));
         }},
        {{"scan with a line in a shadow", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const double deep = random.between(4, 8);
             const double y = sheet.height() - random.between(1.5, deep - 1);
             const Colour ink = black(random);
             sheet.stroke(0, y, sheet.width(), y, random.between(0.2, 0.4), ink);
             const bool fades = random.chance(0.5);
             sheet.shadow(3, fades ? 0 : deep, fades ? 0 : deep, fades ? deep : 0,
                          random.between(0.1, 0.6));
         }},
        {{"scan with words in a shadow", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const double deep = random.between(4, 8);
             const Point at = {random.between(15, sheet.width() - 30),
                               random.between(0.5, deep - 3)};
             writeAt(sheet, at, 1, 8, 1.8, 2.4, grey(30), random);
             const bool fades = random.chance(0.5);
             sheet.shadow(2, fades ? 0 : deep, fades ? 0 : deep, fades ? deep : 0,
                          random.between(0.1, 0.6));
         }},
        {{"scan with a broken line near the edge", false},
         any,
         Bars,
         1,
         [](Sheet& sheet, Random& random) {
             const double in = random.between(8.5, 13);
             const double dash = random.between(1, 5);
             for (double y = 3; y < sheet.height() - 3; y += 2 * dash) {
                 sheet.stroke(in, y, in, y + dash, 0.2, grey(60));
             }
         }},
        {{"scan with ticks along the edge", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const double apart = random.between(4, 12);
             const double length = random.between(2, 4);
             for (double y = 5; y < sheet.height() - 5; y += apart) {
                 sheet.stroke(0, y, length, y, 0.2, grey(60));
             }
         }},
        {{"scan with letters that the edge cuts", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const Colour ink = black(random);
             for (double y = random.between(10, 40); y < sheet.height() - 10; y += 5) {
                 sheet.text(-1.5, y, 2, 2.5, ink, random);
             }
         }},
        {{"scan with letters in a corner", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const double bar = random.between(0.5, 2);
             const double away = bar + random.between(1.2, 3);
             sheet.text(away, away, random.whole(1, 2), 2, grey(40), random);
             sheet.shadow(0, bar, bar, 0, random.between(0.3, 1));
             sheet.shadow(2, bar, bar, 0, random.between(0.3, 1));
         }},
        {{"scan with a coloured band along the edge", false},
         colour,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const Colour ink = {random.between(0, 255), random.between(100, 200), 40};
             sheet.box(0, 0, random.between(2, 8), sheet.height(), ink);
         }},
        {{"scan with one round spot", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             const Point at = {random.between(15, 80), random.between(10, 50)};
             const double size = random.between(3, 8);
             sheet.dot(at.x, at.y, size, black(random));
         }},
        {{"scan with numbers in rings where holes would be", false},
         any,
         Dust,
         1,
         [](Sheet& sheet, Random& random) {
             const double x = random.between(9, 13);
             const double size = random.between(5.2, 6.4);
             for (const double along : {-28.0, 28.0}) {
                 const double y = sheet.height() / 2 + along;
                 sheet.ring(x, y, size, 0.3, grey(40));
                 sheet.text(x - 0.8, y - 1, 1, 2, grey(40), random);
             }
         }},
        {{"scan with a page of text", false},
         any,
         0,
         3,
         [](Sheet& sheet, Random& random) {
             for (double y = 12; y < sheet.height() - 12; y += 4.5) {
                 const Colour ink = black(random);
                 sheet.text(12, y, static_cast<int>((sheet.width() - 24) / 1.8), 2.3, ink, random);
             }
         }},
        {{"scan with a page of pale text", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             const Colour pale = grey(random.between(170, 205));
             for (double y = 8; y < sheet.height() - 8; y += 4.5) {
                 sheet.text(8, y, static_cast<int>((sheet.width() - 16) / 1.8), 2.3, pale, random);
             }
         }},
        {{"scan with a pale picture", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             for (int i = 0; i < 30; ++i) {
                 const double shade = random.between(190, 220);
                 const Colour pale = {shade, shade, random.between(180, 230)};
                 const Point at = {random.between(20, 60), random.between(20, 80)};
                 const double wide = random.between(3, 20);
                 sheet.box(at.x, at.y, wide, random.between(3, 20), pale);
             }
         }},
        {{"scan with a drawn number over it", false},
         any,
         0,
         3,
         nullptr,
         [](Page& page, Random& random) {
             page.content += "BT 0 g /F1 8 Tf " +
                             numbers({random.between(20, 180), random.between(20, 280)}) +
                             "Td (7) Tj ET";
         }},
        {{"scan with an annotation over it", false},
         any,
         0,
         3,
         nullptr,
         [](Page& page, Random&) {
             annotate(page, "0 0 1 RG 5 5 m 50 20 l S", "/Subtype /Ink /F 4");
         }},
        {{"fax with a dot", false},
         mono,
         0,
         0,
         [](Sheet& sheet, Random& random) {
             const Point at = inside(sheet, random);
             sheet.dot(at.x, at.y, random.between(0.4, 0.7), grey(0));
         }},
        {{"fax with a hairline", false},
         mono,
         0,
         0,
         [](Sheet& sheet, Random& random) {
             const double y = inside(sheet, random).y;
             sheet.stroke(12, y, sheet.width() - 12, y + random.between(0, 6), 0.15, grey(0));
         }},
        {{"fax with a page number", false},
         mono,
         0,
         0,
         [](Sheet& sheet, Random& random) {
             const Point at = {sheet.width() / 2, sheet.height() - random.between(12, 18)};
             writeAt(sheet, at, 1, 3, 1.8, 3, grey(0), random);
         }},
        {{"fax with a drawn stamp over it", false},
         mono,
         0,
         0,
         nullptr,
         [](Page& page, Random&) { page.content += " 1 0 0 RG 0.5 w 90 90 60 20 re S"; }},
    };
    return rows;
}

void makeScan(Page& page, const ScannedRow& row, int index, Random& random)
{
    const Stored stored = row.stored.empty() ? anyContinuous(random)
                                             : row.stored[static_cast<std::size_t>(random.whole(
                                                   0, static_cast<int>(row.stored.size()) - 1))];
    double dpi = isBilevel(stored) ? 200 : 100;
    if (index == 0) { // most are coarse and small, as those take less time
        dpi = 300;
        page.width = 80;
        page.height = 110;
    } else if (isBilevel(stored)) {
        page.width = 74;
        page.height = 105;
    }
    const bool isTinted = !isBilevel(stored) && random.chance(0.4);
    const double white = random.between(235, 255);
    const Colour paper = isTinted
                             ? Colour{white - random.between(0, 30), white - random.between(0, 15),
                                      white - random.between(0, 60)}
                             : Colour{white, white, white};
    Sheet sheet(page.width, page.height, dpi, paper);
    const unsigned faults =
        row.kind.isBlank || row.faults != 0 ? row.faults : anyFaults(isBilevel(stored), random);
    const double grain = row.grain == 0 ? 0 : random.between(0.4, row.grain) * dpi / 100;
    if ((faults & Bleed) != 0) {
        sheet.bleedThrough(random.between(4, 11), random);
    }
    if (row.ink != nullptr) {
        row.ink(sheet, random);
    }
    scan(sheet, faults, random);
    if (grain > 0) {
        sheet.grain(grain, stored == Stored::Colour, random);
    }
    const int image = imageOf(page, sheet, stored, random);
    page.resources += "/XObject << /Im " + PdfBuilder::reference(image) + " >> ";
    page.content =
        "q " +
        numbers({page.width * pointsPerMillimetre, 0, 0, page.height * pointsPerMillimetre, 0, 0}) +
        "cm /Im Do Q ";
    if (row.over != nullptr) {
        row.over(page, random);
    }
}

} // namespace

std::vector<PageRow> scannedRows()
{
    std::vector<PageRow> rows;
    for (const ScannedRow& row : rowsOfScanned()) {
        rows.push_back({row.kind, [&row](Page& page, int index, Random& random) {
                            makeScan(page, row, index, random);
                        }});
    }
    return rows;
}

} // namespace labelled
