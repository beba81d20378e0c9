#include "VantoraHost/desktop/help/HelpPane.h"

#include "VantoraApp/CActionUtils.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace vantora::desktop {

HelpPane::HelpPane(QWidget* parent)
    : QWidget(parent), title_(new QLabel(this)), page_(new QTextBrowser(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(title_);
    layout->addWidget(page_);
    page_->setAccessibleName(tr("Help of the action"));
    page_->setOpenExternalLinks(true);
    // Pages name their pictures relative to themselves.
    page_->setSearchPaths({QStringLiteral(":/Vantora/Resources/HelpFiles")});
    CActionUtils::SetTargetLabels(title_, page_);
}

HelpPane::~HelpPane()
{
    CActionUtils::SetTargetLabels(nullptr, nullptr);
}

void HelpPane::showPage(const QString& title, const QString& page)
{
    CActionUtils::SetCurrentSection(title);
    CActionUtils::SetHelp(page);
}

} // namespace vantora::desktop
