#include "VantoraHost/desktop/session/Notice.h"

#include <QtCore/QVariantMap>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusPendingCall>

namespace vantora::desktop {

QDBusMessage noticeCall(const QString& title, const QString& text)
{
    constexpr uint replacesNone = 0;
    constexpr int asLongAsUsual = -1;
    QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                       "/org/freedesktop/Notifications",
                                                       "org.freedesktop.Notifications", "Notify");
    call.setArguments(
        {QStringLiteral("vantora-desktop"), replacesNone, QStringLiteral("vantora-desktop"), title,
         text.toHtmlEscaped(), QStringList(),
         QVariantMap{{"desktop-entry", QStringLiteral("vantora-desktop")}}, asLongAsUsual});
    return call;
}

void showNotice(const QString& title, const QString& text)
{
    QDBusConnection session = QDBusConnection::sessionBus();
    if (session.isConnected()) {
        session.asyncCall(noticeCall(title, text));
    }
}

} // namespace vantora::desktop
