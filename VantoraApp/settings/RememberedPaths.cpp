#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"
#include "VantoraApp/settings/SettingsFile.h"

#include <QtCore/QStandardPaths>

namespace {

constexpr int rememberedLinks = 5;

QString locationsFile()
{
    return CUtils::GetSettingsFolder() + "/LastVisitedLocations.vsf";
}

/// What the locations file holds under a key; nothing also when the file can't be read.
std::optional<QVariant> remembered(const QString& key)
{
    const auto file = SettingsFile::Read(locationsFile());
    return file ? file->Value(key) : std::nullopt;
}

} // namespace

void CActionUtils::SaveLastVisitedLocation(QString key, QString location)
{
    UpdateSettingsFile(locationsFile(), {{key, location}});
}

QString CActionUtils::GetLastVisitedLocation(QString key)
{
    if (const std::optional<QVariant> location = remembered(key)) {
        return location->toString();
    }
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
}

void CActionUtils::SaveLastEnteredLink(QString key, QString link)
{
    QStringList links = GetLastEnteredLinks(key);
    links.prepend(link);
    links.removeDuplicates();
    UpdateSettingsFile(locationsFile(), {{key, QStringList(links.mid(0, rememberedLinks))}});
}

QStringList CActionUtils::GetLastEnteredLinks(QString key)
{
    return remembered(key).value_or(QVariant()).toStringList();
}
