#include "VantoraApp/dialogs/FocusRing.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolButton>

namespace {

constexpr int darkWidth = 2;
constexpr int ringWidth = darkWidth + 1;

} // namespace

FocusRing::FocusRing(QWidget* window) : QWidget(window)
{
    setObjectName("VDfocusRing");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*before*/, QWidget* now) { Follow(now); });
}

void FocusRing::Follow(QWidget* focused)
{
    if (button_ != nullptr)
        button_->removeEventFilter(this);
    const bool isOurs =
        qobject_cast<QToolButton*>(focused) && parentWidget()->isAncestorOf(focused);
    button_ = isOurs ? focused : nullptr;
    if (button_ != nullptr)
        button_->installEventFilter(this);
    Place();
}

void FocusRing::Place()
{
    setVisible(button_ != nullptr && button_->isVisible());
    if (button_ == nullptr)
        return;
    const QRect button(button_->mapTo(parentWidget(), QPoint(0, 0)), button_->size());
    setGeometry(button.adjusted(-ringWidth, -ringWidth, ringWidth, ringWidth));
    raise();
}

bool FocusRing::eventFilter(QObject* /*watched*/, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        Place();
        break;
    default:
        break;
    }
    return false;
}

void FocusRing::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(
        QPen(QColor(40, 36, 36), darkWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
    painter.setPen(QPen(Qt::white, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5));
}
