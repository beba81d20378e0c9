#include "KarvelPDFLibrary/attachments/Attachments.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

int KPLAttachmentCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(
            self, [](Document& document) -> Result<int> { return attachments::count(document); });
    });
}

wchar_t* KPLGetAttachmentName(int instance, int attachment)
{
    return boundary::wideString(instance, [=](Instance& self) {
        return onUpToDateDocument(
            self, [=](Document& document) { return attachments::nameOf(document, attachment); });
    });
}
