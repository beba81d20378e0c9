#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/structure/Tagging.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLIsTagged(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return structure::isTagged(document); });
    });
}
