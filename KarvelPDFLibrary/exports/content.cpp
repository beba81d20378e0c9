#include "KarvelPDFLibrary/content/ContentStreams.h"
#include "KarvelPDFLibrary/content/PageContent.h"
#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;

int KPLRemoveSharedContentStreams(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return boundary::onDocument(self, [](Document& document) -> Outcome {
            content::removeSharedStreams(document);
            return {};
        });
    });
}

char* KPLGetPageContentToString(int instance, int page)
{
    return boundary::byteString(instance, [&](Instance& self) {
        return boundary::onDocument(self, [&](Document& document) -> Result<std::string> {
            return hasPage(document, page).and_then([&] {
                return content::pageContent(document, page);
            });
        });
    });
}

int KPLAddPageContentFromString(int instance, const char* content, int position)
{
    return boundary::integer(instance, [&](Instance& self) {
        return boundary::onOpenDocument(self, [&](OpenDocument& open) -> Outcome {
            if (position != 1 && position != 2) {
                return fail(ErrorCode::BadArgument, "the position must be 1 (under) or 2 (over)");
            }
            return content::addPageContent(*open.document, open.selectedPage,
                                           boundary::bytesOf(self, content),
                                           static_cast<content::Position>(position));
        });
    });
}
