#include "VantoraApp/errors/CErrorHandler.h"

#include <cstddef>
#include <type_traits>

/// The host makes these objects and actions of other builds store messages in them.
class CErrorHandler::Layout {
    static_assert(std::has_virtual_destructor_v<CErrorHandler>);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof" // which GCC knows for such classes, too
    static_assert(offsetof(CErrorHandler, mErrorList) == sizeof(void*));
    static_assert(offsetof(CErrorHandler, mExtraErrorList) == 2 * sizeof(void*));
#pragma GCC diagnostic pop
    static_assert(sizeof(CErrorHandler) == 3 * sizeof(void*));
    static_assert(sizeof(QList<QString>) == sizeof(void*));
};

namespace {

QString UnknownError()
{
    return QStringLiteral("Unknown error");
}

} // namespace

CErrorHandler::~CErrorHandler()
{
    mErrorList.clear();
}

void CErrorHandler::Store(QString format, va_list arguments)
{
    const QString message = QString::vasprintf(format.toUtf8().constData(), arguments);
    mErrorList.append(message);
    if (mExtraErrorList != nullptr)
        mExtraErrorList->append(message);
}

void CErrorHandler::StoreError(QString format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    Store(format, arguments);
    va_end(arguments);
}

long CErrorHandler::GetCount() const
{
    return mErrorList.size();
}

QString CErrorHandler::GetAt(long index) const
{
    if (index < 0 || index >= GetCount())
        return UnknownError();
    return mErrorList.at(static_cast<int>(index));
}

QString CErrorHandler::GetLast() const
{
    return mErrorList.isEmpty() ? UnknownError() : mErrorList.last();
}

void CErrorHandler::ClearAll()
{
    mErrorList.clear();
}

void CErrorHandler::WriteToLog(const char* /*text*/, bool /*flag*/) {}
