#include "VantoraApp/StyleSheetMessages.h"

#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace {

QtMessageHandler handlerBefore = nullptr;

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const bool isAboutStyleSheets =
        message.startsWith(QLatin1String("QCssParser::parseColorValue: Specified color with alpha "
                                         "value but no alpha given")) ||
        message == QLatin1String("Could not create pixmap from none.png");
    if (!isAboutStyleSheets)
        handlerBefore(type, context, message);
}

} // namespace

void DropStyleSheetMessages()
{
    const QtMessageHandler current = qInstallMessageHandler(HandleMessage);
    if (current != HandleMessage)
        handlerBefore = current;
}
