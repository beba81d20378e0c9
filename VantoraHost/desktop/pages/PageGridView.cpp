#include "VantoraHost/desktop/pages/PageGridView.h"

#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <iterator>

namespace vantora::desktop {

namespace {

// The longer side of a thumbnail in device-independent pixels; 0 is as large as the view.
constexpr int sides[] = {72, 96, 128, 168, 216, 288, 384, 512, 680, 900, 0};

constexpr int smallestSide = 48;

} // namespace

PageGridView::PageGridView(PageGridModel& model, QWidget* parent) : QListView(parent), model_(model)
{
    setObjectName("pageGrid");
    setModel(&model);
    setItemDelegate(&delegate_);
    setFlow(LeftToRight);
    setWrapping(true);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setSelectionRectVisible(true);
    setVerticalScrollMode(ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // so that the columns stay what they are
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setFrameShape(NoFrame);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    wanting_.setSingleShot(true);
    connect(&wanting_, &QTimer::timeout, this, &PageGridView::want);
    connect(&model_, &PageGridModel::outdated, this, [this] {
        layOut();
        wanting_.start(0);
    });
    connect(this, &QListView::clicked, this,
            [this](const QModelIndex& index) { emit pressed(index.row()); });
    layOut();
}

int PageGridView::mostZoom()
{
    return static_cast<int>(std::size(sides)) - 1;
}

void PageGridView::setZoom(int zoom)
{
    zoom = std::clamp(zoom, 0, mostZoom());
    if (zoom == zoom_) {
        return;
    }
    const QModelIndex kept = currentIndex().isValid() ? currentIndex() : indexAt(QPoint(20, 20));
    zoom_ = zoom;
    layOut();
    if (kept.isValid()) {
        scrollTo(kept, PositionAtCenter);
    }
    wanting_.start(0);
    emit zoomChanged(zoom_);
}

// As many columns as there is room for, over the whole width.
void PageGridView::layOut()
{
    delegate_.setHeadings(model_.isReview());
    const QSize room = viewport()->size();
    int side = sides[zoom_];
    if (side == 0) {
        delegate_.setPictureSide(0);
        const QSize around = delegate_.leastCell(fontMetrics());
        side = std::max(smallestSide, std::min(std::max(room.width() - around.width(),
                                                        room.height() - around.height()),
                                               room.height() - around.height()));
    }
    delegate_.setPictureSide(side);
    const QSize cell = delegate_.leastCell(fontMetrics());
    const int columns = zoom_ == mostZoom() ? 1 : std::max(1, room.width() / cell.width());
    // One pixel less than there is: the list breaks the line where a row fills it to the last.
    const QSize grid(std::max(cell.width(), (room.width() - 1) / columns), cell.height());
    delegate_.setCell(grid);
    if (grid != gridSize()) {
        setGridSize(grid);
    }
    verticalScrollBar()->setSingleStep(std::max(cell.height() / 4, 1));
}

std::vector<int> PageGridView::visibleRows() const
{
    const int height = gridSize().height();
    const int count = model_.rowCount();
    if (count == 0 || height <= 0) {
        return {};
    }
    const int columns = std::max(1, (viewport()->width() - 1) / std::max(gridSize().width(), 1));
    const int first = std::max(verticalOffset() / height * columns, 0);
    const int last = (verticalOffset() + viewport()->height() - 1) / height * columns + columns - 1;
    std::vector<int> rows;
    for (int row = first; row <= std::min(last, count - 1); ++row) {
        rows.push_back(row);
    }
    return rows;
}

void PageGridView::want()
{
    const double density = devicePixelRatioF();
    const int side = static_cast<int>(delegate_.pictureSide() * density);
    model_.want(visibleRows(), std::clamp(side, 1, largestPicture), density);
}

PageSet PageGridView::chosen() const
{
    PageSet pages;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        pages = pages.united(
            PageSet(PageRun{model_.pageAt(range.top()), model_.pageAt(range.bottom())}));
    }
    return pages;
}

void PageGridView::goTo(int row)
{
    setCurrentIndex(model_.index(row));
    scrollTo(model_.index(row), PositionAtCenter);
}

void PageGridView::resizeEvent(QResizeEvent* event)
{
    layOut();
    QListView::resizeEvent(event);
    wanting_.start(0);
}

void PageGridView::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    wanting_.start(0);
}

void PageGridView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        setZoom(zoom_ + (event->angleDelta().y() > 0 ? 1 : -1));
        event->accept();
        return;
    }
    QListView::wheelEvent(event);
}

void PageGridView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        layOut();
    }
}

} // namespace vantora::desktop
