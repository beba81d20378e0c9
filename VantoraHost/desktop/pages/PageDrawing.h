#pragma once

#include <QtCore/QRect>
#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QPixmap>

class QPainter;
class QPalette;

namespace vantora::desktop {

/// The red of what goes, on this palette's light or dark ground. No palette has a colour for that.
QColor goingColour(const QPalette& palette);

/// A colour between two; `share` 0 is the first one.
QColor mixed(const QColor& one, const QColor& other, double share);

/// Where a page is drawn in an area: as large as fits, in the middle of the lower edge. Its shape
/// is that of the picture, where there is one, or of the size, where that is known.
QRect placed(const QPixmap& picture, QSizeF size, const QRect& area);

/// A page as it is drawn.
struct DrawnPage {
    QRect area;
    QPixmap picture; ///< null where there is none
    QString reason;  ///< why there is none
    bool goes = false;
    bool isNeighbour = false; ///< of one that goes
};

/// Draws a page with a shadow; crossed out and dimmed when it goes, dimmed when it is a neighbour.
void drawPage(QPainter& painter, const DrawnPage& page, const QPalette& palette);

} // namespace vantora::desktop
