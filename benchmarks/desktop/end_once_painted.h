#pragma once

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QWidget>

#include <cstdlib>

/// Ends the process, successfully and without clearing up, as soon as a window has been painted for
/// the first time and the display has all of it.
class EndOncePainted : public QObject {
public:
    explicit EndOncePainted(QWidget& window) { window.installEventFilter(this); }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, [] { // the rest of the window is painted by the same event
                QGuiApplication::sync();
                std::_Exit(0);
            });
        }
        return false;
    }
};
