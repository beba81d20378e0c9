#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/extraction/PageText.h"
#include "exports.h"

using namespace karvel;
using boundary::onOpenDocument;

wchar_t* KPLGetPageText(int instance, int page, int layout)
{
    return boundary::wideString(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) -> Result<std::string> {
            if (layout < 1 || layout > 3) {
                return fail(ErrorCode::BadArgument, "the layout must be 1 to 3");
            }
            return extraction::pageText(*open.document, open.view, page,
                                        static_cast<extraction::TextLayout>(layout));
        });
    });
}
