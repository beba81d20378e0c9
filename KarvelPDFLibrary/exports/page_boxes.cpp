#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;
using boundary::onOpenDocument;

namespace {

Result<page_boxes::Box> boxOf(int code)
{
    if (code < 1 || code > page_boxes::boxCount) {
        return fail(ErrorCode::BadArgument, "the box must be 1 to 5");
    }
    return static_cast<page_boxes::Box>(code);
}

Result<page_boxes::Edge> edgeOf(int code)
{
    if (code < 1 || code > page_boxes::edgeCount) {
        return fail(ErrorCode::BadArgument, "the dimension must be 1 to 6");
    }
    return static_cast<page_boxes::Edge>(code);
}

Result<double> boxEdge(Document& document, int page, int box, int dimension)
{
    const auto which = boxOf(box);
    const auto edge = edgeOf(dimension);
    if (!which || !edge) {
        return tl::unexpected<Error>(which ? edge.error() : which.error());
    }
    return hasPage(document, page).map([&] {
        return page_boxes::box(document, page, *which).edge(*edge);
    });
}

} // namespace

double KPLPageWidth(int instance)
{
    return boundary::real(instance, [](Instance& self) {
        return onOpenDocument(self, [](OpenDocument& open) -> Result<double> {
            return page_boxes::shownSize(*open.document, open.selectedPage).width;
        });
    });
}

double KPLPageHeight(int instance)
{
    return boundary::real(instance, [](Instance& self) {
        return onOpenDocument(self, [](OpenDocument& open) -> Result<double> {
            return page_boxes::shownSize(*open.document, open.selectedPage).height;
        });
    });
}

int KPLFindPageFormat(int instance, int page)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return hasPage(document, page).map([&] {
                return page_boxes::formatOfSize(page_boxes::shownSize(document, page));
            });
        });
    });
}

double KPLGetPageBox(int instance, int box, int dimension)
{
    return boundary::real(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return boxEdge(*open.document, open.selectedPage, box, dimension);
        });
    });
}

double KPLGetPageBoxAt(int instance, int page, int box, int dimension)
{
    return boundary::real(instance, [&](Instance& self) {
        return onDocument(
            self, [&](Document& document) { return boxEdge(document, page, box, dimension); });
    });
}

int KPLHasPageBox(int instance, int page, int box)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return boxOf(box).and_then([&](page_boxes::Box which) {
                return hasPage(document, page).map([&] {
                    return static_cast<int>(page_boxes::boxOrigin(document, page, which));
                });
            });
        });
    });
}

int KPLSetPageBox(int instance, int box, double left, double bottom, double width, double height)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return boxOf(box).and_then([&](page_boxes::Box which) {
                return page_boxes::setBox(*open.document, open.selectedPage, which,
                                          {left, bottom, left + width, bottom + height});
            });
        });
    });
}

int KPLPageRotation(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onOpenDocument(self, [](OpenDocument& open) -> Result<int> {
            return page_boxes::rotation(*open.document, open.selectedPage);
        });
    });
}

int KPLGetPageRotationAt(int instance, int page)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return hasPage(document, page).map([&] {
                return page_boxes::rotation(document, page);
            });
        });
    });
}

int KPLRotatePages(int instance, int firstPage, int pageCount, int degrees)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return page_boxes::rotatePages(document, {firstPage, pageCount}, degrees);
        });
    });
}

int KPLGetPageOrientation(int instance, int page)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return hasPage(document, page).map([&] {
                return static_cast<int>(page_boxes::orientation(document, page));
            });
        });
    });
}

double KPLUserUnit(int instance)
{
    return boundary::real(instance, [](Instance& self) {
        return onOpenDocument(self, [](OpenDocument& open) -> Result<double> {
            return page_boxes::userUnit(*open.document, open.selectedPage);
        });
    });
}
