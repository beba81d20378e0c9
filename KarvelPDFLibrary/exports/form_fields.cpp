#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/form_fields/FieldTree.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLFieldCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(form_fields::terminalFields(document).size());
        });
    });
}
