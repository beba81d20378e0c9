#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

/// The longest category that is offered; a longer one is no name that anybody chose.
constexpr int longestCategory = 1000;

QString StepKey(const char* name, int step)
{
    return QLatin1String(name) + QString::number(step);
}

void AppendStep(const QString& path, const QMap<QString, QVariant>& prefs)
{
    const auto list = SettingsFile::Read(path);
    if (!list)
        return;
    int step = 0;
    while (list->Contains(StepKey("ActionName", step)))
        ++step;
    UpdateSettingsFile(path, {{StepKey("ActionName", step), prefs.value("ActionName").toString()},
                              {StepKey("ActionPrefs", step), prefs}});
}

void CreateList(const QString& path, QMap<QString, QVariant>* prefs)
{
    const QString category = prefs->value("ActionListCategory").toString();
    QMap<QString, QVariant> step = *prefs;
    for (const char* key :
         {"ActionName", "ActionListOverwrite", "ActionListCategory", "ActionListName"})
        step.remove(key);

    const bool replaces = QFileInfo::exists(path);
    const SettingsWriting written = WriteSettingsFile(
        path, {{"SequenceName", prefs->value("ActionListName").toString()},
               {"SequenceCategory", category.isEmpty() ? QString("Favorites") : category},
               {"IOSettings", 0},
               {"ActionName0", prefs->value("ActionName").toString()},
               {"ActionPrefs0", step}});
    // Only the refusal to replace a list leaves the request as it is.
    if (written || !replaces)
        *prefs = step;
}

} // namespace

void CActionUtils::SaveAsCustomActionList(QMap<QString, QVariant>* prefs)
{
    const QString name = prefs->value("ActionListName", "Action").toString();
    if (!ReasonAgainstActionListName(name).isEmpty())
        return;
    const QString path = ActionListPath(name);
    if (!prefs->value("ActionListOverwrite").toBool() && QFileInfo::exists(path))
        AppendStep(path, *prefs);
    else
        CreateList(path, prefs);
}

QStringList CActionUtils::GetActionListCategories()
{
    QStringList categories{"Default", "Favorites"};
    const QDir folder(GetSequenceFolder());
    for (const QFileInfo& file :
         folder.entryInfoList({"*.xqq"}, QDir::Files | QDir::Dirs, QDir::Name | QDir::IgnoreCase)) {
        const auto list = SettingsFile::Read(file.filePath());
        if (!list)
            continue;
        const QString category = list->Value("SequenceCategory").value_or(QVariant()).toString();
        if (!category.isEmpty() && category.size() <= longestCategory &&
            !categories.contains(category, Qt::CaseInsensitive))
            categories << category;
    }
    return categories;
}
