#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/outlines/Outline.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

int KPLOutlineEntryCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(
            self, [](Document& document) -> Result<int> { return outlines::entryCount(document); });
    });
}
