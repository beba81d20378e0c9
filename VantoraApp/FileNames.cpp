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

QString CActionUtils::AppendCopyNumberToFilename(QString path)
{
    if (!QFile::exists(path)) {
        return path;
    }
    const int dot = path.lastIndexOf('.');
    const int end = dot < 0 ? path.size() : dot;
    for (qint64 n = 1;; ++n) {
        QString candidate = path;
        candidate.insert(end, " (" + QString::number(n) + ")");
        if (!QFile::exists(candidate)) {
            return candidate;
        }
    }
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
