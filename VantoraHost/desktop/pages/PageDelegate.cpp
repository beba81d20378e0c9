#include "VantoraHost/desktop/pages/PageDelegate.h"

#include "VantoraHost/desktop/pages/PageDrawing.h"
#include "VantoraHost/desktop/pages/PageGridModel.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace vantora::desktop {

namespace {

constexpr int cellMargin = 8; // around a picture

} // namespace

QSize PageDelegate::leastCell(const QFontMetrics& font) const
{
    const int lines = headings_ ? 2 : 1;
    return {side_ + 2 * cellMargin, side_ + 2 * cellMargin + lines * (font.height() + cellMargin)};
}

QSize PageDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return cell_;
}

QRect PageDelegate::pictureArea(const QStyleOptionViewItem& option) const
{
    const int heading = headings_ ? option.fontMetrics.height() + cellMargin : 0;
    return {option.rect.left() + (option.rect.width() - side_) / 2,
            option.rect.top() + cellMargin + heading, side_, side_};
}

void PageDelegate::paint(QPainter* painter, const QStyleOptionViewItem& given,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    painter->save();
    drawState(*painter, option);
    const auto picture = index.data(PageGridModel::PictureRole).value<QPixmap>();
    drawPage(*painter,
             {placed(picture, index.data(PageGridModel::SizeRole).toSizeF(), pictureArea(option)),
              picture, index.data(PageGridModel::ReasonRole).toString(),
              index.data(PageGridModel::GoesRole).toBool(),
              index.data(PageGridModel::NeighbourRole).toBool()},
             option.palette);
    drawTexts(*painter, option, index);
    painter->restore();
}

// Whether the page is chosen, and whether the user is at it.
void PageDelegate::drawState(QPainter& painter, const QStyleOptionViewItem& option)
{
    const QRectF cell = QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5);
    constexpr double round = 6;
    QColor highlight = option.palette.color(QPalette::Active, QPalette::Highlight);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::NoPen);
    if (option.state.testFlag(QStyle::State_Selected)) {
        QColor ground = highlight;
        ground.setAlphaF(0.28);
        painter.setBrush(ground);
    }
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        // Text is what palettes set off from the ground most; highlights are faint on some dark
        // ones.
        painter.setPen(QPen(option.palette.color(QPalette::Active, QPalette::Text), 2));
    }
    painter.drawRoundedRect(cell, round, round);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// The number with the label, and in a review the document's name above.
void PageDelegate::drawTexts(QPainter& painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const QRect cell = option.rect.adjusted(4, 4, -4, -4);
    const QColor ink = option.palette.color(QPalette::Text);
    const QString label = index.data(PageGridModel::LabelRole).toString();
    const QString number = index.data(Qt::DisplayRole).toString();
    const QString text =
        label.isEmpty() ? number : tr("%1 · %2", "page number and label").arg(number, label);
    const QRect below(cell.left(), pictureArea(option).bottom() + cellMargin / 2, cell.width(),
                      option.fontMetrics.height() + cellMargin);
    painter.setFont(option.font);
    painter.setPen(index.data(PageGridModel::GoesRole).toBool() ? goingColour(option.palette)
                   : index.data(PageGridModel::NeighbourRole).toBool()
                       ? mixed(option.palette.color(QPalette::Base), ink, 0.55)
                       : ink);
    painter.drawText(below, Qt::AlignCenter,
                     option.fontMetrics.elidedText(text, Qt::ElideMiddle, below.width()));
    const QString heading = index.data(PageGridModel::HeadingRole).toString();
    if (!headings_ || heading.isEmpty()) {
        return;
    }
    QFont bold = option.font;
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(ink);
    const QRect above(cell.left(), cell.top(), cell.width(), option.fontMetrics.height() + 2);
    painter.drawText(above, Qt::AlignCenter,
                     QFontMetrics(bold).elidedText(heading, Qt::ElideMiddle, above.width()));
}

} // namespace vantora::desktop
