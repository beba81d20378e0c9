#include "VantoraApp/dialogs/DialogMessages.h"

#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace {

QtMessageHandler handlerBefore = nullptr;

// What a window without these slots says; their connections are made by name for those that have
// them.
bool IsAboutAnAbsentSlot(const QString& message)
{
    return message.startsWith(QLatin1String("QObject::connect: No such slot ")) &&
           (message.contains(QLatin1String("::on_MaxRestore()")) ||
            message.contains(QLatin1String("::on_MoveMaximized()")));
}

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const bool isAboutStyleSheets =
        message.startsWith(QLatin1String("QCssParser::parseColorValue: Specified color with alpha "
                                         "value but no alpha given")) ||
        message == QLatin1String("Could not create pixmap from none.png");
    // As in a job of cron, where Qt does without the folder.
    const bool isAboutFolder =
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"));
    if (!isAboutStyleSheets && !isAboutFolder && !IsAboutAnAbsentSlot(message))
        handlerBefore(type, context, message);
}

} // namespace

void DropDialogMessages()
{
    const QtMessageHandler current = qInstallMessageHandler(HandleMessage);
    if (current != HandleMessage)
        handlerBefore = current;
}
