#pragma once

#include <QtCore/QString>
#include <QtDBus/QDBusMessage>

namespace vantora::desktop {

/// The call that has the desktop show a notice (org.freedesktop.Notifications): a title and a plain
/// text, in which no markup counts.
QDBusMessage noticeCall(const QString& title, const QString& text);

/// Shows a notice, if the session has something that shows them; waits for nothing.
void showNotice(const QString& title, const QString& text);

} // namespace vantora::desktop
