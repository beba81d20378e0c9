#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/outlines/Outline.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLOutlineEntryCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return outlines::entryCount(document); });
    });
}
