#pragma once

#include "VantoraHost/core/Installation.h"
#include "VantoraHost/core/outputs/RunUndo.h"
#include "VantoraHost/core/reports/RunReport.h"
#include "VantoraHost/core/reports/RunSummary.h"
#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/run/RunPlan.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace vantora::desktop {

class RunFeed;

/// What became of a document.
struct RunResult {
    DocumentId id = 0; ///< 0 where it isn't listed
    DocumentReport report;
    std::optional<Undone> undone = std::nullopt; ///< where the run was undone
};

/// How far a run is.
struct RunProgress {
    std::size_t finished = 0;
    std::size_t failed = 0;
    std::size_t total = 0;
    double rate = 0; ///< documents a second; 0 while nobody can tell
    double left = 0; ///< seconds at that rate
};

/// Runs plans in the core's worker processes, beside the window's thread, one at a time and with
/// one result each.
class RunController : public QObject {
    Q_OBJECT

public:
    explicit RunController(Installation installation, QObject* parent = nullptr);
    ~RunController() override;

    /// Starts a run, with passwords that are tried on encrypted documents. Makes the folders that
    /// the outputs need. With a report, that has each document as it is done.
    void start(RunPlan plan, std::vector<std::string> passwords,
               std::optional<RunReport> report = std::nullopt);

    /// Ends the run; what is being saved is finished. The rest is as it was.
    void cancel();

    bool isRunning() const { return background_.isBusy(); }
    RunProgress progress() const;
    const RunSummary& summary() const { return summary_; }

    /// Why the report of the last run isn't complete; none when it is.
    const std::optional<Error>& reportFault() const { return reportFault_; }

signals:
    void started(std::size_t documents);
    /// Documents are done or have failed.
    void documentsDone(const std::vector<vantora::desktop::RunResult>& results);
    void progressed();
    /// The run is over; `cancelled` tells that not all of it was done, `error` why it could not go
    /// on; empty for no reason.
    void finished(bool cancelled, const QString& error);

private:
    void takeResults();

    const Installation installation_;
    std::shared_ptr<RunFeed> feed_;
    RunSummary summary_;
    std::optional<Error> reportFault_;
    std::size_t total_ = 0;
    QElapsedTimer elapsed_;
    QTimer timer_;
    Background background_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
