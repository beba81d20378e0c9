#include "KarvelPDFLibrary/content/ContentStreams.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;

int KPLRemoveSharedContentStreams(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return boundary::onDocument(self, [](Document& document) -> Status {
            content::removeSharedStreams(document);
            return {};
        });
    });
}
