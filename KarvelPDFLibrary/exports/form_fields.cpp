#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/form_fields/FieldTree.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

int KPLFieldCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(form_fields::terminalFields(document).size());
        });
    });
}
