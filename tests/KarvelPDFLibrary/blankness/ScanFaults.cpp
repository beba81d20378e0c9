#include "tests/KarvelPDFLibrary/blankness/ScanFaults.h"

namespace labelled {

namespace {

void punch(Sheet& sheet, Random& random)
{
    const double dark = random.between(0, 130);
    const double size = random.between(5.2, 6.4);
    const double x = random.between(9, 13);
    const double middle = sheet.height() / 2 + random.between(-3, 3);
    for (const double along : {-40.0, 40.0}) {
        if (sheet.height() > 100) {
            sheet.dot(x + random.between(-0.3, 0.3), middle + along, size, {dark, dark, dark});
        } else {
            sheet.dot(x, middle + along * 0.7, size, {dark, dark, dark});
        }
    }
}

} // namespace

unsigned anyFaults(bool isBilevel, Random& random)
{
    constexpr unsigned choices[] = {
        0, 0, Dust, Bars, Wedges, Holes, Lamp | Dust, Bleed, Bars | Holes | Dust};
    const unsigned faults = choices[random.whole(0, 8)];
    return isBilevel ? faults & (Dust | Bars | Wedges | Holes) : faults;
}

void scan(Sheet& sheet, unsigned faults, Random& random)
{
    if ((faults & Lamp) != 0) {
        sheet.uneven(random.between(5, 20));
    }
    if ((faults & Dust) != 0) {
        sheet.specks(random.whole(3, 40), 0.2, random);
    }
    if ((faults & Bars) != 0) {
        for (int edge = 0; edge < 4; ++edge) {
            if (random.chance(0.5)) {
                const double bar = random.chance(0.5) ? random.between(0.5, 4) : 0;
                const double fading = random.between(0, 4);
                sheet.shadow(edge, bar, bar, fading, random.between(0.1, 1));
            }
        }
    }
    if ((faults & Wedges) != 0) {
        const double deep = random.between(1, 6);
        const bool falls = random.chance(0.5);
        const int edge = random.whole(0, 3);
        const double dark = random.between(0.5, 1);
        sheet.shadow(edge, falls ? deep : 0, falls ? 0 : deep, 0, dark);
    }
    if ((faults & Holes) != 0) {
        punch(sheet, random);
    }
}

} // namespace labelled
