#include "VantoraHost/desktop/pages/ElidedLabel.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>

namespace vantora::desktop {

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    style()->drawItemText(
        &painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
        fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()), foregroundRole());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool fits = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
        setToolTip(fits ? QString() : text());
    }
    return QLabel::event(event);
}

} // namespace vantora::desktop
