#include "KarvelPDFLibrary/signatures/Signatures.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

int KPLSignatureCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(
            self, [](Document& document) -> Result<int> { return signatures::count(document); });
    });
}

int KPLGetSignatureField(int instance, int signature)
{
    return boundary::integer(instance, [=](Instance& self) {
        return onUpToDateDocument(
            self, [=](Document& document) { return signatures::fieldOf(document, signature); });
    });
}

int KPLIsSignatureSigned(int instance, int signature)
{
    return boundary::integer(instance, [=](Instance& self) {
        return onUpToDateDocument(self, [=](Document& document) -> Result<int> {
            const Result<bool> isSigned = signatures::isSigned(document, signature);
            if (!isSigned) {
                return tl::unexpected<Error>(isSigned.error());
            }
            return *isSigned ? 1 : 0;
        });
    });
}
