#pragma once

#include "VantoraHost/desktop/run/PastRuns.h"

#include <QtWidgets/QFrame>

class QLabel;
class QPushButton;

namespace vantora::desktop {

class Workbench;

/// Offers to bring back what a window has left behind that was cut off, and then to go on with its
/// run. It stands above everything else in the window and keeps nobody from working.
class RecoveryBar : public QFrame {
    Q_OBJECT

public:
    /// The workbench outlives the bar.
    explicit RecoveryBar(Workbench& workbench, QWidget* parent = nullptr);

private:
    enum class Asks { Nothing, WhetherToBringBack, WhetherToGoOn };

    void ask(Asks what, const QString& text);
    void askToBringBack();
    void askToGoOn();
    void accept();
    void decline();
    void end();

    Workbench& workbench_;
    QLabel* const text_;
    QPushButton* const yes_;
    QPushButton* const no_;
    Asks asks_ = Asks::Nothing;
    PastRun run_; ///< that was cut off
    std::size_t done_ = 0;
};

} // namespace vantora::desktop
