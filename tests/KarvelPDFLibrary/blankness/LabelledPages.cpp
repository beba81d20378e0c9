#include "tests/KarvelPDFLibrary/blankness/LabelledPages.h"

#include "KarvelPDFLibrary/viewer/Viewer.h"
#include "tests/KarvelPDFLibrary/blankness/ScanFaults.h"
#include "tests/KarvelPDFLibrary/blankness/Sheet.h"
#include "tests/support/Images.h"
#include "tests/support/PdfBuilder.h"

#include <algorithm>
#include <functional>

namespace labelled {

namespace {

using karvel::pictures::Raster;
using support::PdfBuilder;

constexpr double pointsPerMillimetre = 72 / 25.4;

/// One page that is being made.
struct Page {
    PdfBuilder& builder;
    double width = 105; // millimetres: A6, as smaller pages take less time
    double height = 148;
    std::string content = {};
    std::string resources = {}; // within /Resources
    std::string annotations = {};
};

std::string number(double value)
{
    return std::to_string(value);
}

std::string numbers(std::initializer_list<double> values)
{
    std::string text;
    for (const double value : values) {
        text += number(value) + " ";
    }
    return text;
}

// --- drawn pages ---

std::string textAt(Random& random, double size, const std::string& before, const std::string& text)
{
    return "BT " + before + " /F1 " + number(size) + " Tf " +
           numbers({random.between(20, 180), random.between(20, 380)}) + "Td (" + text + ") Tj ET ";
}

/// An annotation with an appearance, and the flag Print.
void annotate(Page& page, const std::string& appearance, const std::string& entries)
{
    const int form =
        page.builder.addStream(appearance, "/Type /XObject /Subtype /Form /BBox [0 0 60 30]");
    page.annotations += PdfBuilder::reference(page.builder.add(
                            "<< /Type /Annot /Rect [100 200 160 230] /AP << /N " +
                            PdfBuilder::reference(form) + " >> " + entries + " >>")) +
                        " ";
}

struct DrawnRow {
    Kind kind;
    std::function<void(Page&, Random&)> draw;
};

const std::vector<DrawnRow>& drawnRows()
{
    static const std::vector<DrawnRow> rows = {
        {{"nothing at all", true}, [](Page&, Random&) {}},
        {{"states and clips without marks", true},
         [](Page& page, Random&) { page.content = "q 0 0 100 100 re W n 1 0 0 RG Q"; }},
        {{"filled with white", true},
         [](Page& page, Random&) { page.content = "1 g 0 0 400 500 re f"; }},
        {{"filled with a paper's colour", true},
         [](Page& page, Random& random) {
             page.content =
                 numbers({random.between(0.7, 1), random.between(0.8, 1), random.between(0.5, 1)}) +
                 "rg 0 0 400 500 re f";
         }},
        {{"white text on white", true},
         [](Page& page, Random& random) {
             page.content = textAt(random, 12, "1 g", "nobody sees this");
         }},
        {{"invisible text", true},
         [](Page& page, Random& random) {
             page.content = textAt(random, 12, "3 Tr", "for searching");
         }},
        {{"text off the page", true},
         [](Page& page, Random&) { page.content = "BT /F1 9 Tf -400 -90 Td (off) Tj ET"; }},
        {{"an empty form field", true},
         [](Page& page, Random&) {
             annotate(page, "/Tx BMC EMC", "/Subtype /Widget /FT /Tx /T (a) /F 4");
         }},
        {{"a hidden annotation", true},
         [](Page& page, Random&) { annotate(page, "0 0 60 30 re f", "/Subtype /Stamp /F 6"); }},
        {{"a page number", false},
         [](Page& page, Random& random) {
             page.content = textAt(random, random.between(7, 11), "",
                                   number(1 + random.chance(0.5)).substr(0, 1));
         }},
        {{"a pale yellow word", false},
         [](Page& page, Random& random) {
             page.content =
                 textAt(random, 10, "1 1 " + number(random.between(0.6, 0.95)) + " rg", "pale");
         }},
        {{"a pale grey word", false},
         [](Page& page, Random& random) {
             page.content = textAt(random, 8, number(random.between(0.9, 0.985)) + " g", "pale");
         }},
        {{"tiny text", false},
         [](Page& page, Random& random) {
             page.content = textAt(random, random.between(0.8, 2), "", "tiny");
         }},
        {{"a full stop", false},
         [](Page& page, Random& random) { page.content = textAt(random, 8, "", "."); }},
        {{"a dot of a third of a point", false},
         [](Page& page, Random& random) {
             page.content =
                 numbers({random.between(5, 290), random.between(5, 410), 0.33, 0.33}) + "re f";
         }},
        {{"a hairline", false},
         [](Page& page, Random& random) {
             page.content = "0 w 20 " + number(random.between(10, 400)) + " m 200 " +
                            number(random.between(10, 400)) + " l S";
         }},
        {{"a pale hairline", false},
         [](Page& page, Random& random) {
             const std::string y = number(random.between(10, 400));
             page.content = "0.1 w 0.9 G 20 " + y + " m 200 " + y + " l S";
         }},
        {{"a drawing", false},
         [](Page& page, Random& random) {
             page.content = numbers({random.between(10, 200), random.between(10, 300), 40, 60}) +
                            "re S 10 10 m 100 20 200 300 90 90 c f";
         }},
        {{"a tint over a part of the page", false},
         [](Page& page, Random& random) {
             page.content = number(random.between(0.93, 0.985)) + " g 60 90 100 200 re f";
         }},
        {{"a frame along the edges", false},
         [](Page& page, Random& random) {
             const double in = random.between(1, 12);
             page.content = "0.25 w " + numbers({in, in, 297.6 - 2 * in, 419.5 - 2 * in}) + "re S";
         }},
        {{"filled with black", false},
         [](Page& page, Random&) { page.content = "0 0 400 500 re f"; }},
        {{"white text on a paper's colour", false},
         [](Page& page, Random& random) {
             page.content = "0.9 1 0.9 rg 0 0 400 500 re f " + textAt(random, 9, "1 g", "white");
         }},
        {{"a stamp annotation", false},
         [](Page& page, Random&) {
             annotate(page, "1 0 0 RG 2 2 56 26 re S", "/Subtype /Stamp /F 4");
         }},
        {{"an annotation that is only printed", false},
         [](Page& page, Random&) { annotate(page, "0 0 60 30 re f", "/Subtype /Stamp /F 36"); }},
        {{"a highlight", false},
         [](Page& page, Random&) {
             annotate(page, "1 1 0.7 rg 0 0 60 10 re f",
                      "/Subtype /Highlight /F 4 /QuadPoints [100 210 160 210 100 200 160 200]");
         }},
        {{"a form field with a value", false},
         [](Page& page, Random&) {
             annotate(page, "/Tx BMC 0 0 m 5 9 l 9 3 l S EMC",
                      "/Subtype /Widget /FT /Tx /T (a) /V (x) /F 4");
         }},
    };
    return rows;
}

// --- scanned pages ---

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

Colour black(Random& random)
{
    const double shade = random.between(0, 80);
    return {shade, shade, shade};
}

double inside(Random& random, double length)
{
    return random.between(12, length - 22);
}

struct ScannedRow {
    Kind kind;
    std::vector<Stored> stored; // empty for any in grey or colour
    unsigned faults = 0;        // of blank pages; others have any
    double grain = 0;           // at most
    Ink ink = nullptr;
    Over over = nullptr;
};

void hiddenWords(Page& page, Random& random)
{
    page.content += textAt(random, 11, "3 Tr", "recognised words");
}

const std::vector<ScannedRow>& scannedRows()
{
    static const std::vector<Stored> any = {};
    static const std::vector<Stored> grey = {Stored::Grey};
    static const std::vector<Stored> colour = {Stored::Colour};
    static const std::vector<Stored> plain = {Stored::Plain};
    static const std::vector<Stored> fax = {Stored::Fax};
    static const std::vector<Stored> jbig2 = {Stored::Jbig2};
    static const std::vector<Stored> mono = {Stored::Fax, Stored::Fax, Stored::Jbig2};
    static const std::vector<ScannedRow> rows = {
        {{"scan: clean", true}, any},
        {{"scan: grey with grain", true}, grey, 0, 3},
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
             sheet.dot(inside(random, sheet.width()), inside(random, sheet.height()),
                       random.between(0.4, 0.8), black(random));
         }},
        {{"scan with a hairline", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             const double x = inside(random, sheet.width());
             const double y = inside(random, sheet.height());
             const double slant = random.chance(0.5) ? 0 : random.between(0, 10);
             const bool across = random.chance(0.5);
             sheet.stroke(x, y, across ? sheet.width() - 12 : x + slant,
                          across ? y + slant : sheet.height() - 12, random.between(0.08, 0.15),
                          black(random));
         }},
        {{"scan with pale yellow words", false},
         colour,
         0,
         1.5,
         [](Sheet& sheet, Random& random) {
             sheet.text(inside(random, sheet.width()), inside(random, sheet.height()),
                        random.whole(3, 10), random.between(2, 4),
                        {255, 255, random.between(120, 190)}, random);
         }},
        {{"scan with pale grey words", false},
         any,
         0,
         1.5,
         [](Sheet& sheet, Random& random) {
             const double shade = random.between(175, 212);
             sheet.text(inside(random, sheet.width()) / 2, inside(random, sheet.height()),
                        random.whole(3, 10), random.between(2, 4), {shade, shade, shade}, random);
         }},
        {{"scan with tiny words", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             sheet.text(inside(random, sheet.width()), inside(random, sheet.height()),
                        random.whole(3, 12), random.between(0.7, 1.2), black(random), random);
         }},
        {{"scan with a page number", false},
         any,
         0,
         3,
         [](Sheet& sheet, Random& random) {
             sheet.text(sheet.width() / 2, sheet.height() - random.between(13, 20),
                        random.whole(1, 3), random.between(1.8, 3), black(random), random);
         }},
        {{"scan with a page number in a corner", false},
         any,
         0,
         2,
         [](Sheet& sheet, Random& random) {
             sheet.text(sheet.width() - random.between(12, 18), random.between(9, 14), 2, 2.2,
                        black(random), random);
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
             sheet.box(sheet.width() - 5, random.between(30, 90), 6, random.between(6, 20),
                       {random.between(0, 150), 60, 90});
         }},
        {{"scan with a line near the edge", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             const double in = random.between(3, 9);
             sheet.stroke(in, 5, in, sheet.height() - 5, 0.25, black(random));
         }},
        {{"scan with one round spot", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             sheet.dot(random.between(15, 80), random.between(10, 50), random.between(3, 8),
                       black(random));
         }},
        {{"scan with a page of text", false},
         any,
         0,
         3,
         [](Sheet& sheet, Random& random) {
             for (double y = 12; y < sheet.height() - 12; y += 4.5) {
                 sheet.text(12, y, static_cast<int>((sheet.width() - 24) / 1.8), 2.3, black(random),
                            random);
             }
         }},
        {{"scan with a page of pale text", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             const double shade = random.between(170, 205);
             for (double y = 8; y < sheet.height() - 8; y += 4.5) {
                 sheet.text(8, y, static_cast<int>((sheet.width() - 16) / 1.8), 2.3,
                            {shade, shade, shade}, random);
             }
         }},
        {{"scan with a pale picture", false},
         any,
         0,
         1,
         [](Sheet& sheet, Random& random) {
             for (int i = 0; i < 30; ++i) {
                 const double shade = random.between(190, 220);
                 sheet.box(random.between(20, 60), random.between(20, 80), random.between(3, 20),
                           random.between(3, 20), {shade, shade, random.between(180, 230)});
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
             sheet.dot(inside(random, sheet.width()), inside(random, sheet.height()),
                       random.between(0.4, 0.7), {0, 0, 0});
         }},
        {{"fax with a hairline", false},
         mono,
         0,
         0,
         [](Sheet& sheet, Random& random) {
             const double y = inside(random, sheet.height());
             sheet.stroke(12, y, sheet.width() - 12, y + random.between(0, 6), 0.15, {0, 0, 0});
         }},
        {{"fax with a page number", false},
         mono,
         0,
         0,
         [](Sheet& sheet, Random& random) {
             sheet.text(sheet.width() / 2, sheet.height() - random.between(12, 18),
                        random.whole(1, 3), random.between(1.8, 3), {0, 0, 0}, random);
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
    const unsigned faults = row.kind.isBlank ? row.faults : anyFaults(isBilevel(stored), random);
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

std::vector<Kind> kinds()
{
    std::vector<Kind> all;
    for (const DrawnRow& row : drawnRows()) {
        all.push_back(row.kind);
    }
    for (const ScannedRow& row : scannedRows()) {
        all.push_back(row.kind);
    }
    return all;
}

std::string documentOf(const Kind& kind, int pages, std::uint64_t seed)
{
    const auto isKind = [&](const auto& row) { return row.kind.name == kind.name; };
    const auto drawn = std::find_if(drawnRows().begin(), drawnRows().end(), isKind);
    const auto scanned = std::find_if(scannedRows().begin(), scannedRows().end(), isKind);
    PdfBuilder builder;
    const int catalog = builder.reserve();
    const int root = builder.reserve();
    const int font = builder.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    std::string kids;
    for (int index = 0; index < pages; ++index) {
        Random random(seed * 1000003 + std::hash<std::string>()(kind.name) % 1000003 * 7919 +
                      static_cast<std::uint64_t>(index));
        Page page{builder};
        if (drawn != drawnRows().end()) {
            drawn->draw(page, random);
        } else {
            makeScan(page, *scanned, index, random);
        }
        const int contents = builder.addStream(page.content);
        kids += PdfBuilder::reference(builder.add(
                    "<< /Type /Page /Parent " + PdfBuilder::reference(root) + " /MediaBox [0 0 " +
                    numbers({page.width * pointsPerMillimetre, page.height * pointsPerMillimetre}) +
                    "] /Contents " + PdfBuilder::reference(contents) + " /Annots [" +
                    page.annotations + "] /Resources << /Font << /F1 " +
                    PdfBuilder::reference(font) + " >> " + page.resources + " >> >>")) +
                " ";
    }
    builder.set(root,
                "<< /Type /Pages /Count " + std::to_string(pages) + " /Kids [" + kids + "] >>");
    builder.set(catalog, "<< /Type /Catalog /Pages " + PdfBuilder::reference(root) + " >>");
    return builder.build(catalog);
}

} // namespace labelled
