#include "VantoraApp/dialogs/DialogMessages.h"

#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <gtest/gtest.h>

namespace {

QStringList messages;

void note(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message)
{
    messages << message;
}

TEST(DropDialogMessages, LetsAllOtherMessagesPass)
{
    const QtMessageHandler before = qInstallMessageHandler(note);
    DropDialogMessages();
    DropDialogMessages();
    qWarning("Could not create pixmap from none.png");
    qWarning("QCssParser::parseColorValue: Specified color with alpha value but no alpha given: "
             "'rgba 210, 210, 210'");
    qWarning("QObject::connect: No such slot CVantoraDialog::on_MaxRestore()");
    qWarning("QObject::connect: No such slot CVantoraDialog::on_MoveMaximized() in a.cpp:1");
    qWarning("QStandardPaths: XDG_RUNTIME_DIR not set, defaulting to '/tmp/runtime-me'");
    qWarning("Could not create pixmap from :/other.png");
    qWarning("QObject::connect: No such slot CVantoraDialog::on_Other()");
    qInstallMessageHandler(before);
    EXPECT_EQ(messages, (QStringList{"Could not create pixmap from :/other.png",
                                     "QObject::connect: No such slot CVantoraDialog::on_Other()"}));
}

} // namespace
