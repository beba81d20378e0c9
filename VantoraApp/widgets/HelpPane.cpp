#include "VantoraApp/CActionUtils.h"

#include <QtCore/QFile>
#include <QtCore/QTextCodec>
#include <QtGui/QIcon>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTextEdit>

QLabel* CActionUtils::mNavBarLabel = nullptr;
QTextEdit* CActionUtils::mInfoLabel = nullptr;

QIcon CActionUtils::GetIconForTool(QString fileName)
{
    return QIcon(":/Vantora/Resources/Tools/" + fileName);
}

void CActionUtils::SetTargetLabels(QLabel* navBarLabel, QTextEdit* infoLabel)
{
    mNavBarLabel = navBarLabel;
    mInfoLabel = infoLabel;
}

void CActionUtils::SetCurrentSection(QString title)
{
    if (mNavBarLabel != nullptr)
        mNavBarLabel->setText(title);
}

void CActionUtils::SetHelp(QString fileName)
{
    QFile file(":/Vantora/Resources/HelpFiles/" + fileName);
    QByteArray page;
    if (file.open(QIODevice::ReadOnly | QIODevice::Text))
        page = file.readAll();
    file.close();
    SetHelpHtml(QTextCodec::codecForHtml(page)->toUnicode(page));
}

void CActionUtils::SetHelpHtml(QString html)
{
    if (mInfoLabel != nullptr)
        mInfoLabel->setText(html);
}
