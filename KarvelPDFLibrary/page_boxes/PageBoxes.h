#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/page_boxes/PaperFormats.h"

/// The boxes, rotation and user unit of pages (ISO 32000-2, 14.11.2 and 7.7.3.3). Page numbers must
/// be within the document. A value of a wrong type counts as absent.
namespace karvel::page_boxes {

/// Box codes of the interface.
enum class Box : int { Media = 1, Crop = 2, Bleed = 3, Trim = 4, Art = 5 };
constexpr int boxCount = 5;

/// Edge codes of the interface.
enum class Edge : int { Left = 1, Bottom = 2, Right = 3, Top = 4, Width = 5, Height = 6 };
constexpr int edgeCount = 6;

/// An upright box in user space; right is not below left nor top below bottom.
struct Rectangle {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    double edge(Edge edge) const;
};

/// A page's box, inherited and default ones included. A media box that is missing or empty is taken
/// for Letter, as viewers do.
Rectangle box(Document& document, int page, Box box);

enum class BoxOrigin : int { Default = 0, Inherited = 1, Own = 2 };
BoxOrigin boxOrigin(Document& document, int page, Box box);

/// Sets a box of a page; fails when it is empty or beyond what PDF can hold.
Outcome setBox(Document& document, int page, Box box, const Rectangle& rectangle);

/// Degrees clockwise: 0, 90, 180 or 270. A rotation by anything else counts as none.
int rotation(Document& document, int page);

/// Turns pages clockwise by a multiple of 90 degrees, added to their present rotation.
Outcome rotatePages(Document& document, PageRun run, int degrees);

/// The size of the user space unit in points, 1 when unset.
double userUnit(Document& document, int page);

/// A page's size in points as shown: what the crop box leaves of the media box, turned, times the
/// user unit.
Size shownSize(Document& document, int page);

enum class Orientation : int { Square = 0, Portrait = 1, Landscape = 2 };
Orientation orientation(Document& document, int page);

} // namespace karvel::page_boxes
