#pragma once

#include "VantoraHost/desktop/choosing/Chooser.h"
#include "VantoraHost/desktop/choosing/RangesFiles.h"
#include "VantoraHost/desktop/documents/DocumentsController.h"
#include "VantoraHost/desktop/pages/Marks.h"
#include "VantoraHost/desktop/recovery/LeftBehind.h"
#include "VantoraHost/desktop/recovery/WorkKeeper.h"
#include "VantoraHost/desktop/run/Forecast.h"
#include "VantoraHost/desktop/run/PastRuns.h"
#include "VantoraHost/desktop/run/ResultList.h"
#include "VantoraHost/desktop/run/RunController.h"
#include "VantoraHost/desktop/run/RunOutlook.h"
#include "VantoraHost/desktop/run/UndoController.h"
#include "VantoraHost/desktop/sequence/InstalledActions.h"

#include <QtCore/QTimer>
#include <QtWidgets/QUndoStack>

#include <set>
#include <vector>

namespace vantora::desktop {

/// All that somebody works on, without a window: documents, marks, steps, and the runs over them.
class Workbench : public QObject {
    Q_OBJECT

public:
    explicit Workbench(const Installation& installation, QObject* parent = nullptr);
    ~Workbench() override;

    QUndoStack undo;
    DocumentList list;
    DocumentsController documents;
    Marks marks;
    Chooser chooser;
    RangesFiles ranges;
    const std::vector<InstalledAction> actions;
    StepList steps;
    RunController runs;
    ResultList results;
    const PastRuns pastRuns;
    UndoController undoing;
    LeftBehind leftBehind;
    WorkKeeper keeper;

    void setSettings(const RunSettings& settings);
    const RunOutlook& outlook() const { return outlook_; }

    /// Puts this range into the marks for all documents.
    void markForAll(const QString& range);

    /// Starts a run over all documents that aren't done, unless one of them has changed. Results of
    /// before go.
    void startRun();

    /// Goes on with those that aren't done, or have failed: as startRun(), but results of before
    /// stay.
    void goOn();

    /// Does those that failed because of damage once more, with losses.
    void salvage();

    /// Shows the results of a run of before, once they are read.
    void showPastRun(const PastRun& run);

    /// Puts work that a window has left behind into the list, the marks and the steps, and shows
    /// the results of its run.
    void bringBack(const Recovered& found);

    /// Works out what undoing the run would do whose results are shown, or undoes it.
    void foreseeUndo();
    void undoRun();

    /// Whether there is a report to undo that run by.
    bool canUndoRun() const { return !report_.empty() && !runs.isRunning(); }

    /// What the run is called whose results are shown, and its report; empty for none.
    QString shownRun() const;
    const std::string& report() const { return report_; }

    /// What opens the listed document of that path; empty for nothing.
    QString passwordFor(const std::string& input) const;

    /// The commands of a terminal that do what was run last.
    QString commands() const { return commands_; }

signals:
    void outlookChanged();
    /// The results are those of a run of before now; the title says which.
    void pastRunShown(const QString& title);
    /// The settings of a run are these now.
    void settingsBroughtBack(const vantora::desktop::RunSettings& settings);
    /// The run of work that was brought back was cut off, and goOn() goes on with it; `done` of so
    /// many documents.
    void runCutOff(const vantora::desktop::PastRun& run, std::size_t done);
    /// Something that people are to know, as a sentence.
    void noted(const QString& sentence);

private:
    void outdated();
    void run(bool keepsResults);
    void plan();
    QString obstacle() const;
    std::vector<RunDocument> toRun() const;
    void takeResults(const std::vector<RunResult>& results);
    void begin();
    std::optional<RunReport> openReport();
    void showRead(const std::vector<RunResult>& results);
    KeptWork work() const;
    std::size_t takeReported(const Recovered& found);
    void takeUndone(const std::vector<Undone>& undone);
    void forgetRuns();

    QString titleOf(const PastRun& run) const;

    Forecast forecast_;
    RunSettings settings_;
    RunOutlook outlook_;
    QString commands_;
    std::string report_; ///< of the run whose results are shown; empty for none
    PastRun past_;       ///< the run of before whose results are shown; else without a report
    QTimer planTimer_;
    bool startsWhenPlanned_ = false;
    std::set<DocumentId> salvaged_; ///< may be done with losses
    bool keepsResults_ = false;
    bool beginsRun_ = false;
    Background planning_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
