#include "VantoraHost/desktop/pages/PageDrawing.h"

#include <QtGui/QPainter>
#include <QtGui/QPalette>

#include <algorithm>
#include <cstdlib>

namespace vantora::desktop {

namespace {

// The shape of a page whose size isn't known.
const QSizeF usualPage(595, 842);

void drawShadow(QPainter& painter, const QRect& page, const QPalette& palette)
{
    QColor shadow = palette.color(QPalette::Shadow);
    for (const int distance : {3, 2, 1}) {
        shadow.setAlpha(20);
        painter.fillRect(page.adjusted(-distance, -distance + 1, distance, distance + 1), shadow);
    }
}

void drawCross(QPainter& painter, const QRect& page, const QColor& colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const double width = std::clamp(page.width() / 60.0, 1.5, 4.0);
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    const QRectF lines = QRectF(page).adjusted(width, width, -width, -width);
    painter.drawLine(lines.topLeft(), lines.bottomRight());
    painter.drawLine(lines.topRight(), lines.bottomLeft());
    painter.setPen(QPen(colour, 2));
    painter.drawRect(QRectF(page).adjusted(1, 1, -1, -1));
}

} // namespace

QColor goingColour(const QPalette& palette)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return QColor::fromHsl(0, isDark ? 230 : 165, isDark ? 170 : 128);
}

QColor mixed(const QColor& one, const QColor& other, double share)
{
    const auto mix = [&](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()),
            mix(one.blue(), other.blue())};
}

QRect placed(const QPixmap& picture, QSizeF size, const QRect& area)
{
    QSize fitting = (picture.isNull() ? size.isEmpty() ? usualPage : size : QSizeF(picture.size()))
                        .scaled(area.size(), Qt::KeepAspectRatio)
                        .toSize();
    const QSize own = picture.isNull() ? QSize() : picture.size() / picture.devicePixelRatio();
    // A picture that was made for this place is drawn as it is, which is faster and sharper.
    if (std::abs(own.width() - fitting.width()) <= 1 &&
        std::abs(own.height() - fitting.height()) <= 1) {
        fitting = own;
    }
    fitting = fitting.expandedTo(QSize(1, 1));
    return {area.left() + (area.width() - fitting.width()) / 2,
            area.bottom() + 1 - fitting.height(), fitting.width(), fitting.height()};
}

void drawPage(QPainter& painter, const DrawnPage& page, const QPalette& palette)
{
    constexpr double goingOpacity = 0.35;
    constexpr double neighbourOpacity = 0.3;
    drawShadow(painter, page.area, palette);
    const QColor ground = palette.color(QPalette::Base);
    const QColor ink = palette.color(QPalette::Text);
    if (!page.picture.isNull()) {
        const double opacity = page.goes ? goingOpacity : page.isNeighbour ? neighbourOpacity : 1;
        if (opacity < 1) {
            painter.fillRect(page.area, ground);
        }
        painter.setOpacity(opacity);
        painter.setRenderHint(QPainter::SmoothPixmapTransform,
                              page.area.size() * page.picture.devicePixelRatio() !=
                                  page.picture.size());
        painter.drawPixmap(page.area, page.picture);
        painter.setOpacity(1);
    } else {
        painter.fillRect(page.area, mixed(ground, ink, 0.08));
        painter.setPen(mixed(ground, ink, 0.75));
        painter.drawText(page.area.adjusted(6, 6, -6, -6), Qt::AlignCenter | Qt::TextWordWrap,
                         page.reason);
    }
    if (page.goes) {
        drawCross(painter, page.area, goingColour(palette));
    }
}

} // namespace vantora::desktop
