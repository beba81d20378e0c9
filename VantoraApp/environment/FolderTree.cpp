#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStandardPaths>

namespace {

QString makerFolder()
{
    return CUtils::GetAppDataFolder() + "/orvex software";
}

void createLevel(const QString& path)
{
    QDir folder(path);
    if (!folder.exists()) {
        folder.mkdir(path);
    }
}

} // namespace

QString CUtils::GetAppDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString CUtils::GetAppDataToolsFolder()
{
    return makerFolder() + "/Tollera/";
}

QString CUtils::GetSequenceFolder()
{
    return GetAppDataToolsFolder() + "Actions";
}

QString CUtils::GetWFFolder()
{
    return GetAppDataToolsFolder() + "WF";
}

QString CUtils::GetReportsFolder()
{
    return GetAppDataToolsFolder() + "/Reports/Action Reports";
}

QString CUtils::GetAppLogFolder()
{
    return GetAppDataToolsFolder() + "/Reports/App Log";
}

QString CUtils::GetSettingsFolder()
{
    return GetAppDataToolsFolder() + "/Settings";
}

QString CUtils::GetCollectionsFolder()
{
    return GetAppDataToolsFolder() + "/Settings/Favorites";
}

QString CUtils::GetAdvSplitTemplatesFolder()
{
    return GetAppDataToolsFolder() + "/Settings/AdvSplitTemplates";
}

QString CUtils::GetActionFolder()
{
    return QStringLiteral("./Tools");
}

void CUtils::SetupFolders()
{
    const QString tools = makerFolder() + "/Tollera";
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                              "/" + QCoreApplication::applicationName();
    // Each folder stands after the one that holds it.
    const QString levels[] = {
        makerFolder(),
        tools,
        tools + "/Actions",
        tools + "/Reports",
        tools + "/Scripts",
        tools + "/Reports/Action Reports",
        tools + "/Reports/App Log",
        tools + "/WF",
        tools + "/Settings",
        tools + "/Settings/Favorites",
        tools + "/Settings/AdvSplitTemplates",
        documents,
        documents + "/Input",
        documents + "/Output",
    };
    for (const QString& level : levels) {
        createLevel(level);
    }
}

QString CActionUtils::GetSettingsFolder()
{
    return CUtils::GetSettingsFolder();
}

QString CActionUtils::GetCollectionsFolder()
{
    return CUtils::GetCollectionsFolder();
}

QString CActionUtils::GetSequenceFolder()
{
    return CUtils::GetSequenceFolder();
}

QString CActionUtils::GetVantoraAppDataFolder()
{
    return CUtils::GetAppDataToolsFolder();
}
