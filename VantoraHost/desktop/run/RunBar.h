#pragma once

#include "VantoraHost/desktop/run/RunController.h"
#include "VantoraHost/desktop/run/RunOutlook.h"

#include <QtWidgets/QWidget>

#include <memory>

class QAction;

namespace Ui {
class RunBar;
}

namespace vantora::desktop {

/// Where results go, what a run is going to do, and how far it is.
class RunBar : public QWidget {
    Q_OBJECT

public:
    /// The button does the action, which is one of the window's.
    explicit RunBar(QAction& runAction, QWidget* parent = nullptr);
    ~RunBar() override;

    RunSettings settings() const;
    void setSettings(const RunSettings& settings);

    void showOutlook(const RunOutlook& outlook);
    void showProgress(const RunProgress& progress);
    void setRunning(bool running);

signals:
    void settingsChanged();

private:
    void updateFields();
    void keepName();
    void browse();

    const std::unique_ptr<Ui::RunBar> form_;
    RunSettings names_; ///< the names of both places, of which one is shown
    OutputPlace shown_ = OutputPlace::Folder;
};

} // namespace vantora::desktop
