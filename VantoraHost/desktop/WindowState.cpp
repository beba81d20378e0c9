#include "VantoraHost/desktop/WindowState.h"

#include "VantoraApp/CUtils.h"
#include "VantoraApp/settings/SettingsFile.h"

#include <QtCore/QStringList>

namespace vantora::desktop {

namespace {

QString file()
{
    return CUtils::GetSettingsFolder() + "/VantoraViewerSettings.vsf";
}

const QStringList names = {"geometry",      "panes",       "documentsShown", "pagesShown",
                           "sequenceShown", "documents",   "pages",          "results",
                           "runPlace",      "runFolder",   "folderName",     "besideName",
                           "keepsBackup",   "keepsSigned", "verifies",       "recent"};

} // namespace

QString WindowState::keyOf(const QString& name)
{
    return "VantoraClass" + name;
}

WindowState::WindowState()
{
    const auto settings = SettingsFile::Read(file());
    for (const QString& name : names) {
        if (const auto value = settings ? settings->Value(keyOf(name)) : std::nullopt) {
            values_.insert(keyOf(name), *value);
        }
    }
}

QByteArray WindowState::bytes(const QString& name) const
{
    return value(name).toByteArray();
}

bool WindowState::flag(const QString& name, bool otherwise) const
{
    const QVariant found = value(name);
    return found.isValid() ? found.toBool() : otherwise;
}

RunSettings WindowState::runSettings() const
{
    RunSettings settings;
    // A file may say anything; in place is never where a program begins.
    if (value("runPlace").toInt() == static_cast<int>(OutputPlace::Beside)) {
        settings.place = OutputPlace::Beside;
    }
    settings.folder = value("runFolder").toString();
    const QString folderName = value("folderName").toString();
    const QString besideName = value("besideName").toString();
    settings.folderName = folderName.isEmpty() ? settings.folderName : folderName;
    settings.besideName = besideName.isEmpty() ? settings.besideName : besideName;
    settings.keepsBackup = flag("keepsBackup", true);
    settings.keepsSigned = flag("keepsSigned", false);
    settings.verifies = flag("verifies", false);
    return settings;
}

void WindowState::setRunSettings(const RunSettings& settings)
{
    set("runPlace", static_cast<int>(settings.place));
    set("runFolder", settings.folder);
    set("folderName", settings.folderName);
    set("besideName", settings.besideName);
    set("keepsBackup", settings.keepsBackup);
    set("keepsSigned", settings.keepsSigned);
    set("verifies", settings.verifies);
}

void WindowState::write() const
{
    UpdateSettingsFile(file(), values_);
}

} // namespace vantora::desktop
