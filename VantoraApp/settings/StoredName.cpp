#include "VantoraApp/settings/StoredName.h"

#include "VantoraApp/CActionUtils.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <algorithm>
#include <climits>
#include <unistd.h>

namespace {

constexpr char listSuffix[] = ".xqq";
constexpr char favouriteSuffix[] = ".ini";

QString ListFileName(QString name)
{
    return name.replace(' ', '_');
}

QString Text(const char* text)
{
    return QCoreApplication::translate("StoredName", text);
}

/// The longest name in bytes of a file in the folder.
long LongestName(const QString& folder)
{
    const long longest = ::pathconf(QFile::encodeName(folder).constData(), _PC_NAME_MAX);
    return longest > 0 ? longest : NAME_MAX;
}

} // namespace

QString ReasonAgainstName(const QString& name, const QString& folder, const QString& suffix)
{
    if (name.contains('/') || name.contains('\\'))
        return Text("A name must not contain a slash or a backslash.");
    const QString trimmed = name.trimmed();
    if (trimmed == QLatin1String(".") || trimmed == QLatin1String(".."))
        return Text("A name must not be \".\" or \"..\".");
    if (std::any_of(name.begin(), name.end(),
                    [](QChar c) { return c.category() == QChar::Other_Control; }))
        return Text("A name must not contain line breaks, tabs or other control characters.");

    const QByteArray fileName = QFile::encodeName(name + suffix);
    if (QFile::decodeName(fileName) != name + suffix)
        return Text("The name contains characters that file names can't have on this system.");
    const int pathLength = QFile::encodeName(folder).size() + 1 + fileName.size();
    if (fileName.size() > LongestName(folder) || pathLength >= PATH_MAX)
        return Text("The name is too long.");
    return {};
}

QString ReasonAgainstActionListName(const QString& name)
{
    return ReasonAgainstName(ListFileName(name), CActionUtils::GetSequenceFolder(), listSuffix);
}

QString ReasonAgainstFavouriteName(const QString& name)
{
    return ReasonAgainstName(name, CActionUtils::GetCollectionsFolder(), favouriteSuffix);
}

QString ActionListPath(const QString& name)
{
    return CActionUtils::GetSequenceFolder() + "/" + ListFileName(name) + listSuffix;
}

QString FavouritePath(const QString& name)
{
    return CActionUtils::GetCollectionsFolder() + "/" + name + favouriteSuffix;
}
