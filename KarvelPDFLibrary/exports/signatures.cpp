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

wchar_t* KPLGetSignatureText(int instance, int signature, int item)
{
    return boundary::wideString(instance, [=](Instance& self) {
        return onUpToDateDocument(self, [=](Document& document) -> Result<std::string> {
            if (item < static_cast<int>(signatures::Text::Signer) ||
                item > static_cast<int>(signatures::Text::Format)) {
                return fail(ErrorCode::BadArgument,
                            "a signature has no text " + std::to_string(item));
            }
            return signatures::textOf(document, signature, static_cast<signatures::Text>(item));
        });
    });
}

int KPLGetSignatureCoverage(int instance, int signature)
{
    return boundary::integer(instance, [=](Instance& self) {
        return onUpToDateDocument(self, [=](Document& document) {
            return signatures::coverageOf(document, signature)
                .map([](signatures::Coverage coverage) { return static_cast<int>(coverage); });
        });
    });
}
