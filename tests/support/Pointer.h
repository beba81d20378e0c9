#pragma once

#include <QtCore/QCoreApplication>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

/// A mouse on a window, with the positions of the screen. QTest's own calls would take a window's
/// corner for its centre.
class Pointer {
public:
    explicit Pointer(QWidget& window) : window_(window) {}

    void press(QPoint at, Qt::MouseButton button = Qt::LeftButton)
    {
        held_ |= button;
        send(QEvent::MouseButtonPress, at, button);
    }

    void move(QPoint to) { send(QEvent::MouseMove, to, Qt::NoButton); }

    void release(QPoint at, Qt::MouseButton button = Qt::LeftButton)
    {
        held_ &= ~Qt::MouseButtons(button);
        send(QEvent::MouseButtonRelease, at, button);
    }

    void click(QPoint at)
    {
        press(at);
        release(at);
    }

    void drag(QPoint from, QPoint to)
    {
        press(from);
        move(to);
        release(to);
    }

private:
    void send(QEvent::Type type, QPoint at, Qt::MouseButton button)
    {
        timestamp_ += 10000; // never a double click
        qt_handleMouseEvent(window_.windowHandle(), at - window_.pos(), at, held_, button, type, {},
                            timestamp_);
        QCoreApplication::processEvents();
    }

    QWidget& window_;
    Qt::MouseButtons held_;
    static inline int timestamp_ = 0;
};
