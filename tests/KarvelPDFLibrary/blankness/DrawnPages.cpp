#include "tests/KarvelPDFLibrary/blankness/Page.h"

namespace labelled {

namespace {

std::string number(double value)
{
    return std::to_string(value);
}

using Draw = void (*)(Page&, Random&);

struct DrawnRow {
    Kind kind;
    Draw draw;
};

const std::vector<DrawnRow>& rowsOfDrawn()
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
             const double size = random.between(7, 11);
             page.content = textAt(random, size, "", random.chance(0.5) ? "1" : "2");
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
             const std::string start = number(random.between(10, 400));
             const std::string end = number(random.between(10, 400));
             page.content = "0 w 20 " + start + " m 200 " + end + " l S";
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

} // namespace

std::vector<PageRow> drawnRows()
{
    std::vector<PageRow> rows;
    for (const DrawnRow& row : rowsOfDrawn()) {
        const Draw draw = row.draw;
        rows.push_back({row.kind, [draw](Page& page, int, Random& random) { draw(page, random); }});
    }
    return rows;
}

} // namespace labelled
