#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <gtest/gtest.h>
#include <memory>

/// What no machine is slow enough to take for an answer to an event, in milliseconds: a test that
/// waits so long has found a fault.
inline constexpr int longestWait = 600000;

/// Lets `use` loose on the next modal dialog of a type, once that has the keyboard. Made before the
/// call that runs the dialog. When no such dialog comes, or `use` leaves it open, all are closed
/// and the test fails, instead of waiting for ever.
template <class Dialog>
class OnModal {
public:
    template <class Use>
    explicit OnModal(Use use) : OnModal(QString(), use)
    {
    }

    /// The same for a dialog of this object name, such as one whose class is not known here.
    template <class Use>
    OnModal(const QString& name, Use use)
    {
        waiting_.start();
        timer_.setInterval(1);
        QObject::connect(&timer_, &QTimer::timeout, [this, name, use] {
            auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
            const bool isMeant = dialog != nullptr && dialog->isActiveWindow() &&
                                 (name.isEmpty() || dialog->objectName() == name);
            if (isMeant && !used_) {
                used_ = true;
                use(*dialog);
            } else if (waiting_.hasExpired(longestWait)) {
                ADD_FAILURE() << (used_ ? "a dialog was left open" : "no dialog came");
                closeAll();
            }
        });
        timer_.start();
    }

    ~OnModal() { EXPECT_TRUE(used_) << "no dialog came"; }

    bool used() const { return used_; }

private:
    static void closeAll()
    {
        while (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    }

    QTimer timer_;
    QElapsedTimer waiting_;
    bool used_ = false;
};

/// The names of what has the keyboard in a dialog when Tab is pressed again and again.
inline QStringList tabOrder(const QWidget& dialog, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names << dialog.focusWidget()->objectName();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    }
    return names;
}
