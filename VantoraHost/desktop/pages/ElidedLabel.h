#pragma once

#include <QtWidgets/QLabel>

namespace vantora::desktop {

/// A label of one line that takes what room there is: what doesn't fit ends in an ellipsis and is
/// shown whole as its tip.
class ElidedLabel : public QLabel {
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace vantora::desktop
