#include "KarvelPDFLibrary/signatures/Signatures.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLSignatureCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return signatures::count(document); });
    });
}
