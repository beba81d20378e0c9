#include "KarvelPDFLibrary/layers/Layers.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

int KPLLayerCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(
            self, [](Document& document) -> Result<int> { return layers::count(document); });
    });
}

wchar_t* KPLGetLayerName(int instance, int layer)
{
    return boundary::wideString(instance, [=](Instance& self) {
        return onUpToDateDocument(
            self, [=](Document& document) { return layers::nameOf(document, layer); });
    });
}
