#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

/// Shows which tool button of a window has the keyboard's focus, where style sheets leave the
/// buttons without a border: a ring around it, dark and white, that shows on every ground.
class FocusRing : public QWidget {
    Q_OBJECT

public:
    /// Belongs to the window.
    explicit FocusRing(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Follow(QWidget* focused);
    void Place();

    QPointer<QWidget> button_; ///< the one with the focus
};
