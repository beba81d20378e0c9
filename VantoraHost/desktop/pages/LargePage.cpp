#include "VantoraHost/desktop/pages/LargePage.h"

#include "VantoraHost/desktop/pages/PageDrawing.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace vantora::desktop {

namespace {

constexpr int margin = 12;

} // namespace

LargePage::LargePage(Marks& marks, Pictures& pictures, QWidget* parent)
    : QWidget(parent), marks_(marks), pictures_(pictures)
{
    setObjectName("largePage");
    setMinimumWidth(120);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    wanting_.setSingleShot(true);
    connect(&wanting_, &QTimer::timeout, this, &LargePage::want);
    const auto repaint = [this] { update(); };
    connect(&marks_, &Marks::changedForAll, this, repaint);
    connect(&marks_, &Marks::changedFor, this, repaint);
    connect(&pictures_, &Pictures::made, this,
            [this](DocumentId document, int page, int, const QImage& picture) {
                // One that the grid asked for will do until the large one comes.
                if (document == document_ && page == page_ && picture.width() > picture_.width()) {
                    picture_ = QPixmap::fromImage(picture);
                    picture_.setDevicePixelRatio(devicePixelRatioF());
                    update();
                }
            });
}

void LargePage::show(DocumentId document, int page, const QString& accessibleText)
{
    setAccessibleName(accessibleText);
    if (document == document_ && page == page_) {
        return;
    }
    document_ = document;
    page_ = page;
    picture_ = {};
    update();
    wanting_.start(0);
}

void LargePage::want()
{
    std::vector<PageWish> wishes;
    const QSize room = size() - QSize(2 * margin, 2 * margin);
    const int side = static_cast<int>(std::max(room.width(), room.height()) * devicePixelRatioF());
    if (isVisible() && page_ > 0 && side > 0) {
        wishes.push_back({document_, PictureTask{page_, std::min(side, largestPicture), 0}});
    }
    pictures_.wish(PictureAsker::LargePage, std::move(wishes));
}

void LargePage::paintEvent(QPaintEvent*)
{
    if (page_ == 0) {
        return;
    }
    QPainter painter(this);
    const QRect area = rect().adjusted(margin, margin, -margin, -margin);
    QRect page = placed(picture_, {}, area);
    page.moveCenter(area.center());
    drawPage(painter, {page, picture_, {}, marks_.of(document_).pages.contains(page_), false},
             palette());
}

void LargePage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    wanting_.start(0);
}

void LargePage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    wanting_.start(0);
}

void LargePage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    wanting_.start(0);
}

} // namespace vantora::desktop
