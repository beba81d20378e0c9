#pragma once

#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/recovery/KeptWork.h"
#include "VantoraHost/desktop/recovery/WorkStore.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantora::desktop {

/// Keeps what is worked on in a window's own file, a moment after each change and beside the
/// window's thread, for the case that the window is cut off.
class WorkKeeper : public QObject {
    Q_OBJECT

public:
    /// `work` says what there is to be kept; it is asked in the window's thread.
    WorkKeeper(WorkStore store, std::function<KeptWork()> work, QObject* parent = nullptr);

    /// There is something else to be kept, in a moment.
    void changed();

    /// Keeps it now, and returns once the disk has it.
    void keepNow();

    /// The window closes as its user wants: nothing is kept.
    void end();

signals:
    /// It can't be kept; a sentence, said once.
    void failed(const QString& reason);

private:
    struct Kept;

    void keep();
    void say(const std::optional<Error>& fault);

    const WorkStore store_;
    const std::function<KeptWork()> work_;
    const std::shared_ptr<Kept> kept_; ///< the background's while that is busy
    QTimer timer_;
    bool hasFailed_ = false;
    bool hasEnded_ = false;
    Background background_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
