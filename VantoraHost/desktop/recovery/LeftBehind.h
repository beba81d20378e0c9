#pragma once

#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/recovery/Recovered.h"
#include "VantoraHost/desktop/recovery/WorkStore.h"

#include <QtCore/QObject>

#include <deque>
#include <functional>

namespace vantora::desktop {

/// The work that windows have left behind, one after the other, the latest first; looked for and
/// read beside the window's thread. What isn't asked for stays for the next start.
class LeftBehind : public QObject {
    Q_OBJECT

public:
    /// `reportNamed` says where the report of that name lies; empty for no such report.
    LeftBehind(WorkStore store, std::function<std::string(const std::string& name)> reportNamed,
               QObject* parent = nullptr);

    /// Looks whether there is any.
    void look();

    /// The work that was found last.
    const KeptWork& work() const { return work_; }

    /// Has that handed over, and removes what was kept of it. What comes next is looked for once
    /// next() is called.
    void take();

    /// Removes what was kept of it, and looks for the next.
    void discard();

    /// Looks for the next.
    void next();

signals:
    /// There is work(), which can be taken or discarded.
    void found();
    void taken(const vantora::desktop::Recovered& work);
    /// What was kept can't be read and is removed; a sentence.
    void refused(const QString& reason);

private:
    const WorkStore store_;
    const std::function<std::string(const std::string&)> reportNamed_;
    std::deque<WorkFile> files_; ///< the first is that of work_
    KeptWork work_;
    Background background_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
