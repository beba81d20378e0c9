#include "KarvelPDFLibrary/exports/Boundary.h"
#include "exports.h"

using namespace karvel;

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
    return boundary::integer(instance, [](Instance& self) -> Status {
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
