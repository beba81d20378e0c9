#pragma once

#include "VantoraHost/core/outputs/RunUndo.h"
#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/run/RunController.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace vantora::desktop {

/// What undoing a run does, or has done, to its documents.
struct UndoOutlook {
    std::size_t givenBack = 0; ///< originals that have their names again
    std::size_t removed = 0;   ///< outputs
    std::size_t already = 0;
    std::size_t leftAlone = 0;
    std::optional<Error> firstWhy; ///< of those that are left alone

    void add(const Undone& undone);

    /// Whether anything is there to be undone.
    bool hasWork() const { return givenBack + removed > 0; }
};

/// Reads and undoes runs by their reports, beside the window's thread; one thing at a time.
class UndoController : public QObject {
    Q_OBJECT

public:
    explicit UndoController(QObject* parent = nullptr);

    /// Reads what became of the documents of a run.
    void read(const std::string& report);

    /// Works out what undoing a run would do, and touches nothing.
    void foresee(const std::string& report);

    /// Undoes a run: originals get their names again, outputs with names of their own go.
    void undo(const std::string& report);

    bool isBusy() const { return background_.isBusy(); }

    /// How far undoing is, in documents.
    std::size_t done() const { return *done_; }
    std::size_t total() const { return *total_; }

signals:
    void runRead(const std::vector<vantora::desktop::RunResult>& results);
    void foreseen(const vantora::desktop::UndoOutlook& outlook);
    void progressed();
    void undone(const std::vector<vantora::Undone>& documents);
    /// A report can't be read; the reason is a sentence.
    void failed(const QString& reason);

private:
    void begin(const std::string& report, bool dryRun);

    std::shared_ptr<std::atomic<std::size_t>> done_;
    std::shared_ptr<std::atomic<std::size_t>> total_;
    QTimer timer_;
    Background background_; ///< the last: what it does uses the others
};

/// What undoing a run would do, in sentences.
QString outlookText(const UndoOutlook& outlook);

/// What undoing it has done, in a sentence or two.
QString undoneText(const UndoOutlook& outlook);

} // namespace vantora::desktop
