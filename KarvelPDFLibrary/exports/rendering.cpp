#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/rendering/RenderPage.h"
#include "exports.h"

using namespace karvel;
using boundary::onOpenDocument;

char* KPLRenderPageToString(int instance, double dpi, int page, int options)
{
    return boundary::byteString(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return rendering::renderOptions(options).and_then([&](const auto& chosen) {
                return rendering::pageImage(*open.document, open.view, page, dpi, chosen);
            });
        });
    });
}

char* KPLRenderThumbnailToString(int instance, int page, int maximumSide, int options)
{
    return boundary::byteString(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return rendering::renderOptions(options).and_then([&](const auto& chosen) {
                return rendering::thumbnail(*open.document, open.view, page, maximumSide, chosen);
            });
        });
    });
}
