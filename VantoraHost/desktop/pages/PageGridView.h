#pragma once

#include "VantoraHost/desktop/pages/PageDelegate.h"
#include "VantoraHost/desktop/pages/PageGridModel.h"

#include <QtCore/QTimer>
#include <QtWidgets/QListView>

namespace vantora::desktop {

/// Pages as a grid of thumbnails, from many small ones to one that fills the view. Asks the model
/// for the pictures of those that can be seen, and of no others.
class PageGridView : public QListView {
    Q_OBJECT

public:
    explicit PageGridView(PageGridModel& model, QWidget* parent = nullptr);

    /// Steps of zooming: 0 is the smallest; the last one is a page as large as the view.
    int zoom() const { return zoom_; }
    static int mostZoom();
    void setZoom(int zoom);

    /// The pages that are chosen, of the document that is shown.
    PageSet chosen() const;

    /// The rows that can be seen, the first ones first.
    std::vector<int> visibleRows() const;

    void goTo(int row);

signals:
    void zoomChanged(int zoom);
    /// In a review: a page was clicked, or chosen by a key.
    void pressed(int row);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void want();

    PageGridModel& model_;
    PageDelegate delegate_;
    QTimer wanting_; ///< once, after all that an event changes
    int zoom_ = 3;
};

} // namespace vantora::desktop
