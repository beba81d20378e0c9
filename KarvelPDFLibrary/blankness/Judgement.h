#pragma once

#include "KarvelPDFLibrary/pictures/Raster.h"

namespace karvel::blankness {

/// What is allowed to be on a page that is called blank.
enum class Allowing {
    Nothing, ///< every pixel has the paper's colour
    Noise,   ///< what scanners add: grain, specks, shadows along the edges, punch holes, and what
             ///< shines through from the other side
};

/// What was found first that nobody would take for paper.
enum class Finding {
    Nothing,     ///< the page is blank
    Marks,       ///< dots, lines, text, pictures
    PaleMarks,   ///< too faint for a point by itself, but many of them beside each other
    UnevenPaper, ///< shades that no lamp makes
    DarkPaper,   ///< a page that is dark all over
    CoarseNoise, ///< too much noise for saying that there is nothing in it
    Unreadable,  ///< it could not be shown whole
    OnlyPrinted, ///< what is seen on paper only
};

struct Judgement {
    Finding finding = Finding::Nothing;

    /// How much of the page is marked, in percent: more than 0 unless it is blank.
    double marked = 0;

    /// How much of the page differs from its paper's colour at all, in percent, noise included.
    /// 100 for what was not found by its picture.
    double different = 0;

    bool isBlank() const { return finding == Finding::Nothing; }
};

/// Whether a person would see something on a page, by a grey or colour picture of it. The picture
/// says with its dpi how large the page is; each pixel has to be the mean of what it stands for,
/// so that small things darken it. Marks of a fifth of a millimetre are found from 37 dpi on. The
/// paper's colour is taken from the picture, place by place.
///
/// In doubt a page is not blank. What is taken for noise: single specks of less than a quarter of
/// a millimetre; what is as strong as the grain of the page itself; straight shadows along an edge,
/// as wide everywhere or like a wedge, of the paper's hue, that get weaker inward all the way;
/// round holes of one shade along an edge, two at least, at equal distances from its middle; and
/// what differs by less than a fiftieth where the page has grain.
Judgement judged(const pictures::Raster& picture, Allowing allowing);

/// Whether the upper rows of a picture have marks enough that no noise can be meant. Costs less
/// than a judgement, and saves decoding what is below.
bool isClearlyMarked(const pictures::Raster& picture, int rows);

} // namespace karvel::blankness
