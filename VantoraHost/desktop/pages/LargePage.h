#pragma once

#include "VantoraHost/desktop/pages/Pictures.h"

#include <QtCore/QTimer>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace vantora::desktop {

/// One page, as large as there is room; crossed out and dimmed when it goes.
class LargePage : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the widget.
    LargePage(Marks& marks, Pictures& pictures, QWidget* parent = nullptr);

    /// Page 0 is none. The document is one that Pictures knows.
    void show(DocumentId document, int page, const QString& accessibleText);

    QSize sizeHint() const override { return {320, 420}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void want();

    Marks& marks_;
    Pictures& pictures_;
    DocumentId document_ = 0;
    int page_ = 0;
    QPixmap picture_;
    QTimer wanting_;
};

} // namespace vantora::desktop
