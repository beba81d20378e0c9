#include "VantoraHost/desktop/EmptyPage.h"

#include "VantoraHost/desktop/WindowActions.h"

#include "ui_EmptyPage.h"

namespace vantora::desktop {

EmptyPage::EmptyPage(QAction& addFiles, QAction& addFolder, QWidget* parent)
    : QWidget(parent), form_(std::make_unique<Ui::EmptyPage>())
{
    form_->setupUi(this);
    QFont large = form_->titleLabel->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    form_->titleLabel->setFont(large);
    const int side = 4 * fontMetrics().height();
    form_->pictureLabel->setPixmap(windowPicture("Drop.png").pixmap(side, side));
    form_->filesButton->setDefaultAction(&addFiles);
    form_->folderButton->setDefaultAction(&addFolder);
}

EmptyPage::~EmptyPage() = default;

} // namespace vantora::desktop
