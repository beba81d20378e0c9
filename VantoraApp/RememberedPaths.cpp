#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>

namespace {

constexpr int rememberedLinks = 5;

QString locationsFile()
{
    return CUtils::GetSettingsFolder() + "/LastVisitedLocations.vsf";
}

} // namespace

void CActionUtils::SaveLastVisitedLocation(QString key, QString location)
{
    QSettings settings(locationsFile(), QSettings::IniFormat);
    settings.setValue(key, location);
}

QString CActionUtils::GetLastVisitedLocation(QString key)
{
    const QSettings settings(locationsFile(), QSettings::IniFormat);
    if (!settings.contains(key)) {
        return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    }
    return settings.value(key).toString();
}

void CActionUtils::SaveLastEnteredLink(QString key, QString link)
{
    QSettings settings(locationsFile(), QSettings::IniFormat);
    QStringList links = settings.value(key).toStringList();
    links.prepend(link);
    links.removeDuplicates();
    settings.setValue(key, QStringList(links.mid(0, rememberedLinks)));
}

QStringList CActionUtils::GetLastEnteredLinks(QString key)
{
    const QSettings settings(locationsFile(), QSettings::IniFormat);
    return settings.value(key).toStringList();
}
