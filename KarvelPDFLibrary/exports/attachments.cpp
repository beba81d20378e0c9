#include "KarvelPDFLibrary/attachments/Attachments.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLAttachmentCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return attachments::count(document); });
    });
}
