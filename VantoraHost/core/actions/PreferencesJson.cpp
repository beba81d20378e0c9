#include "VantoraHost/core/actions/PreferencesJson.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace vantora {

std::string preferencesJson(const PreferencesMap& preferences)
{
    const QString json = QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(preferences)).toJson(QJsonDocument::Compact));
    // Only texts can hold other characters, and there an escape means the same.
    QString ascii;
    for (const QChar unit : json) {
        ascii += unit.unicode() < 0x7F
                     ? QString(unit)
                     : QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
    }
    return ascii.toStdString();
}

} // namespace vantora
