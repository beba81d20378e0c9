#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace vantora::desktop {

/// Draws a page of a PageGridModel: its picture with a shadow, number and label beneath; crossed
/// out and dimmed when it goes. Colours are those of the palette, but the red of what goes.
class PageDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The room for a picture in a cell, in device-independent pixels: the longer side.
    void setPictureSide(int side) { side_ = side; }
    int pictureSide() const { return side_; }

    /// What a cell takes at least for a picture, its number and the room around it.
    QSize leastCell(const QFontMetrics& font) const;

    /// What a cell gets.
    void setCell(QSize cell) { cell_ = cell; }

    /// Whether cells have a line above, for the names of documents.
    void setHeadings(bool on) { headings_ = on; }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    QRect pictureArea(const QStyleOptionViewItem& option) const;
    static void drawState(QPainter& painter, const QStyleOptionViewItem& option);
    void drawTexts(QPainter& painter, const QStyleOptionViewItem& option,
                   const QModelIndex& index) const;

    int side_ = 160;
    QSize cell_;
    bool headings_ = false;
};

} // namespace vantora::desktop
