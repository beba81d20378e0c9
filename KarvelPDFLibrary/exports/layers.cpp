#include "KarvelPDFLibrary/layers/Layers.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLLayerCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return layers::count(document); });
    });
}
