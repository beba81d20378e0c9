#include "VantoraApp/CUtils.h"

#include <QtCore/QFileInfo>

QDir CUtils::GetNewTempFolder(QString* name)
{
    const QString temporary = QDir::tempPath() + "/";
    QString candidate = temporary + *name;
    for (int k = 0; k < 100000 && QFileInfo::exists(candidate); ++k) {
        candidate = temporary + *name + "_" + QString::number(k);
    }
    if (!QFileInfo::exists(candidate)) {
        QDir().mkpath(candidate);
    }
    if (!QDir(candidate).exists()) {
        *name = temporary;
        return QDir::temp();
    }
    *name = candidate;
    return QDir(candidate);
}

QString CUtils::GetNewTempFile(char* baseName)
{
    const QString start = QDir::tempPath() + "/" + QString::fromUtf8(baseName) + "_";
    for (int n = 1; n <= 9999; ++n) {
        QString path = start + QString::number(n) + ".pdf";
        path.replace('\\', '/');
        if (!QFileInfo::exists(path)) {
            return path;
        }
    }
    return {};
}
