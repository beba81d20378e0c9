#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/geometry/Truncated.h"

#include <QtGui/QFont>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QTextOption>
#include <QtWidgets/QGraphicsTextItem>

double CActionUtils::GetTextItemHeight(const QFont& font, const QString& html, double width)
{
    QGraphicsTextItem item;
    item.setHtml(html);
    item.setFont(font);
    item.setTextWidth(width);
    return item.boundingRect().height();
}

void CActionUtils::GenerateTextItemIcon(double width, double height, const QString& text,
                                        QIcon* icon)
{
    const QSize size(Truncated(width), Truncated(height));
    QImage image(size, QImage::Format_ARGB32);
    if (image.isNull())
        return;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setPen(QPen(QBrush(Qt::black), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.drawText(QRectF(QPointF(0, 0), size), text, QTextOption());
    painter.end();
    icon->addPixmap(
        QPixmap::fromImage(image).scaled(128, 128, Qt::KeepAspectRatio, Qt::SmoothTransformation),
        QIcon::Normal, QIcon::Off);
}
