#include "VantoraApp/CErrorHandler.h"

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
