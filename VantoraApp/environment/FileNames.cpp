#include "VantoraApp/environment/FileNames.h"

#include "VantoraApp/CActionUtils.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

QString CActionUtils::GetStringWithLeadingZeroesFromNumber(int number, int width)
{
    return GetStringWithLeadingZeroesFromString(QString::number(number), width);
}

QString CActionUtils::GetStringWithLeadingZeroesFromString(QString text, int width)
{
    return text.rightJustified(width, '0');
}

QString FirstFreeCopyName(const QString& name, const std::function<bool(const QString&)>& isTaken,
                          qint64 first)
{
    if (!isTaken(name)) {
        return name;
    }
    const int dot = name.lastIndexOf('.');
    const int end = dot < 0 ? name.size() : dot;
    for (qint64 n = first;; ++n) {
        QString candidate = name;
        candidate.insert(end, " (" + QString::number(n) + ")");
        if (!isTaken(candidate)) {
            return candidate;
        }
    }
}

QString CActionUtils::AppendCopyNumberToFilename(QString path)
{
    return FirstFreeCopyName(path, [](const QString& name) { return QFile::exists(name); });
}

void CActionUtils::FixStringForFilename(QString* text)
{
    *text = text->trimmed();
    const QString refused = QStringLiteral("\t\n\r<>:\"/\\|?*");
    for (const QChar character : refused) {
        text->remove(character);
    }
}

QString CActionUtils::ReplaceEnvironmentPaths(QString path)
{
    const QString placeholder = QStringLiteral("%ALLUSERSPROFILE%");
    if (!path.contains(placeholder)) {
        return path;
    }
    QString allUsers = QDir::homePath().replace('\\', '/');
    allUsers = allUsers.left(allUsers.lastIndexOf('/')) + "/All Users";
    if (allUsers.contains("Documents and Settings")) {
        allUsers += "/Application Data";
    }
    return path.replace(placeholder, allUsers + "/");
}
