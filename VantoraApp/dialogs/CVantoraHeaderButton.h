#pragma once

#include <QtWidgets/QToolButton>

/// A button in the header of a dialog. A double click on it counts as one click and goes no
/// further, so that it is not taken for one on the header.
class CVantoraHeaderButton : public QToolButton {
    Q_OBJECT

public:
    using QToolButton::QToolButton;

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};
