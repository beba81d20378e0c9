#include "VantoraApp/CUtils.h"

#include <QtCore/QSettings>
#include <utility>

QString CUtils::mApplicationName;
bool CUtils::mInstalationTypeCurrentUser = false;

void CUtils::SetAppName(QString name)
{
    mApplicationName = std::move(name);
}

QString CUtils::GetAppName()
{
    return mApplicationName.isEmpty() ? QStringLiteral("Tollera") : mApplicationName;
}

void CUtils::GetInstalationType()
{
    const QSettings settings("HKEY_LOCAL_MACHINE\\Software\\Karvel\\Karvel Tollera Pro",
                             QSettings::NativeFormat);
    mInstalationTypeCurrentUser = settings.value("InstallType", 0).toInt() == 1;
}
