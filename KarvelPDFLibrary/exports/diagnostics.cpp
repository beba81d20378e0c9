#include "KarvelPDFLibrary/diagnostics/CheckDocument.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/rendering/ComparePages.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLLastErrorCode(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        return static_cast<int>(self.lastError.code);
    });
}

wchar_t* KPLLastErrorText(int instance)
{
    return boundary::wideString(
        instance, [](Instance& self) -> Result<std::string> { return self.lastError.text; });
}

int KPLClearLastError(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Outcome {
        self.lastError = {};
        return {};
    });
}

wchar_t* KPLGetErrorText(int instance, int errorCode)
{
    return boundary::wideString(
        instance, [&](Instance&) -> Result<std::string> { return errorMeaning(errorCode); });
}

wchar_t* KPLLibraryVersion(int instance)
{
    return boundary::wideString(
        instance, [](Instance&) -> Result<std::string> { return std::string(KARVEL_VERSION); });
}

int KPLWarningCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(document.warnings().size() - document.forgottenWarnings);
        });
    });
}

wchar_t* KPLGetWarningText(int instance, int warning)
{
    return boundary::wideString(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Result<std::string> {
            const Warnings& warnings = document.warnings();
            const std::size_t forgotten = document.forgottenWarnings;
            if (warning < 1 || static_cast<std::size_t>(warning) > warnings.size() - forgotten) {
                return fail(ErrorCode::NotFound,
                            document.name() + ": has no warning " + std::to_string(warning));
            }
            return warnings[forgotten + static_cast<std::size_t>(warning) - 1];
        });
    });
}

int KPLClearWarnings(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Outcome {
            document.forgottenWarnings = document.warnings().size();
            return {};
        });
    });
}

int KPLSetReconstruction(int instance, int mode)
{
    return boundary::integer(instance, [&](Instance& self) -> Outcome {
        if (mode < 0 || mode > 2) {
            return fail(ErrorCode::BadArgument, "the value must be 0 to 2");
        }
        self.reconstruct = mode > 0;
        self.salvage = mode == 2;
        return {};
    });
}

int KPLWasReconstructed(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return document.wasReconstructed(); });
    });
}

int KPLCheckDocument(int instance, int level)
{
    const auto check = [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Result<int> {
            if (level < 1 || level > 3) {
                return fail(ErrorCode::BadArgument, "the level must be 1 to 3");
            }
            return diagnostics::checkDocument(document,
                                              static_cast<diagnostics::CheckLevel>(level));
        });
    };
    return boundary::integer(instance, check, -1);
}

int KPLComparePageAppearance(int instance, int firstDocument, int firstPage, int secondDocument,
                             int secondPage, int dpi)
{
    const auto compare = [&](Instance& self) -> Result<int> {
        const Result<OpenDocument*> first = self.documents.find(firstDocument);
        if (!first) {
            return tl::unexpected<Error>(first.error());
        }
        const Result<OpenDocument*> second = self.documents.find(secondDocument);
        if (!second) {
            return tl::unexpected<Error>(second.error());
        }
        return rendering::differentPixels({*(*first)->document, (*first)->view, firstPage},
                                          {*(*second)->document, (*second)->view, secondPage}, dpi);
    };
    return boundary::integer(instance, compare, -1);
}
