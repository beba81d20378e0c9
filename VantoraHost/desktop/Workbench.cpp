#include "VantoraHost/desktop/Workbench.h"

#include "VantoraHost/core/actions/DeletePagesOptions.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "VantoraHost/desktop/recovery/BringBack.h"
#include "VantoraHost/desktop/run/RunRemedy.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QLocale>

#include <algorithm>

namespace vantora::desktop {

namespace {

// After the last keystroke, in milliseconds; what exists is looked up on the disk.
constexpr int planDelay = 150;

std::vector<DocumentId> idsOf(const std::vector<Document>& documents)
{
    std::vector<DocumentId> ids;
    for (const Document& document : documents) {
        ids.push_back(document.id);
    }
    return ids;
}

} // namespace

Workbench::Workbench(const Installation& installation, QObject* parent)
    : QObject(parent), documents(list, undo, installation.program),
      chooser(list, marks, undo, installation.program), ranges(list, marks, undo),
      actions(installedActions(installation.actionFolders)), runs(installation),
      leftBehind(WorkStore(),
                 [this](const std::string& name) {
                     const auto run = pastRuns.named(name);
                     return run ? run->report : std::string();
                 }),
      keeper(WorkStore(), [this] { return work(); }),
      forecast_(steps, marks, installation.actionFolders)
{
    if (const InstalledAction* deletion = actionNamed(actions, deletepages::actionName)) {
        steps.set({stepOf(*deletion)});
    }
    list.setForecast([this](const Document& document) { return forecast_.goingFrom(document); });
    connect(&list, &DocumentList::changed, this, &Workbench::outdated);
    connect(&marks, &Marks::changedForAll, this, [this] {
        steps.setMarks(marks.forAll().text);
        forgetRuns();
    });
    connect(&marks, &Marks::changedFor, this, [this](DocumentId id) {
        documents.forgetRun({id});
        list.forecastChanged(id);
        outdated();
    });
    connect(&steps, &StepList::changed, this, [this] {
        forecast_.forgetSteps();
        forgetRuns();
    });
    connect(&ranges, &RangesFiles::noted, this, &Workbench::noted);
    connect(&chooser, &Chooser::progressed, this, &Workbench::outdated);
    // What is replaced is read anew, and would be looked at as if it were to be done again.
    connect(&runs, &RunController::started, &chooser, &Chooser::stop);
    connect(&runs, &RunController::documentsDone, this, &Workbench::takeResults);
    connect(&runs, &RunController::finished, this, &Workbench::outdated);
    connect(&runs, &RunController::finished, &keeper, &WorkKeeper::changed);
    connect(&list, &DocumentList::changed, &keeper, &WorkKeeper::changed);
    connect(&marks, &Marks::changedForAll, &keeper, &WorkKeeper::changed);
    connect(&marks, &Marks::changedFor, &keeper, &WorkKeeper::changed);
    connect(&steps, &StepList::changed, &keeper, &WorkKeeper::changed);
    connect(&keeper, &WorkKeeper::failed, this, &Workbench::noted);
    connect(&leftBehind, &LeftBehind::taken, this, &Workbench::bringBack);
    connect(&leftBehind, &LeftBehind::refused, this, &Workbench::noted);
    connect(&undoing, &UndoController::runRead, this, &Workbench::showRead);
    connect(&undoing, &UndoController::undone, this, &Workbench::takeUndone);
    connect(&undoing, &UndoController::failed, this, &Workbench::outdated);
    planTimer_.setSingleShot(true);
    planTimer_.setInterval(planDelay);
    connect(&planTimer_, &QTimer::timeout, this, &Workbench::plan);
    outdated();
}

Workbench::~Workbench()
{
    undo.clear(); // its commands speak of the list
    disconnect(&list, nullptr, this, nullptr);
}

void Workbench::setSettings(const RunSettings& settings)
{
    settings_ = settings;
    keeper.changed();
    forgetRuns();
}

void Workbench::markForAll(const QString& range)
{
    undo.push(new MarkCommand(marks, std::nullopt, Marks::ofText(range, marks.forAll()),
                              tr("marking %1").arg(range)));
}

void Workbench::forgetRuns()
{
    documents.forgetRun(idsOf(list.documents()));
    list.forecastChanged();
    outdated();
}

void Workbench::outdated()
{
    planTimer_.start();
}

QString Workbench::obstacle() const
{
    const auto& all = list.documents();
    const bool isReading = std::any_of(all.begin(), all.end(), [](const Document& document) {
        return document.state == DocumentState::Reading;
    });
    if (all.empty()) {
        return tr("Add the documents that pages are to go from.");
    }
    if (isReading) {
        return tr("The documents are being read.");
    }
    if (undoing.isBusy()) {
        return tr("A run is being undone.");
    }
    if (chooser.isBusy()) {
        return tr("The pages that go are being looked for.");
    }
    if (marks.forAll().fault) {
        return tr("The page range “%1” %2.", "a range and what is wrong with it")
            .arg(marks.forAll().text, *marks.forAll().fault);
    }
    if (steps.requests(QStringLiteral("1")).empty()) {
        return tr("No step is switched on; add what is to be done on the right.");
    }
    return {};
}

std::vector<RunDocument> Workbench::toRun() const
{
    std::vector<RunDocument> run;
    for (const Document& document : list.documents()) {
        if (document.isUsable() && !document.isDone) {
            run.push_back({document.id, document.input, forecast_.goingFrom(document).value_or(0),
                           forecast_.stepsFor(document.id), salvaged_.count(document.id) > 0});
        }
    }
    return run;
}

void Workbench::plan()
{
    if (runs.isRunning()) {
        return;
    }
    RunOutlook outlook;
    outlook.obstacle = obstacle();
    for (const Document& document : list.documents()) {
        outlook.unreadable += document.isUsable() ? 0 : 1;
        outlook.done += document.isDone ? 1 : 0;
    }
    std::vector<RunDocument> run =
        outlook.obstacle.isEmpty() ? toRun() : std::vector<RunDocument>();
    const bool nothingMarked =
        !run.empty() && std::all_of(run.begin(), run.end(), [](const RunDocument& document) {
            return document.steps.empty();
        });
    if (nothingMarked) {
        outlook.obstacle = tr("Mark the pages that go: click them, or type their numbers.");
        run.clear();
    }
    planning_.start([this, outlook, run = std::move(run),
                     settings = settings_](const std::atomic<bool>&) mutable {
        if (outlook.obstacle.isEmpty()) {
            auto plan = planRun(run, settings);
            if (plan) {
                outlook.plan = std::move(*plan);
            } else {
                outlook.obstacle = tr("%1.", "a sentence").arg(explained(plan.error()));
                outlook.obstacle[0] = outlook.obstacle[0].toUpper();
            }
        }
        return [this, outlook = std::move(outlook)] {
            outlook_ = outlook;
            emit outlookChanged();
            if (std::exchange(startsWhenPlanned_, false) && outlook_.plan.documents > 0) {
                begin();
            }
        };
    });
}

void Workbench::begin()
{
    if (!keepsResults_ || !past_.report.empty()) {
        results.clear();
        report_.clear();
        past_ = {};
    }
    commands_ = commandsOf(outlook_.plan, settings_);
    auto report = openReport();
    // Else a window that is cut off at once would not know what its run has done.
    beginsRun_ = true;
    keeper.keepNow();
    beginsRun_ = false;
    runs.start(outlook_.plan, documents.passwords(), std::move(report));
}

// A run goes on without one, too.
std::optional<RunReport> Workbench::openReport()
{
    if (!report_.empty()) {
        auto file = ReportFile::open(report_, ExistingReport::Continue);
        if (file) {
            return RunReport(std::move(*file));
        }
        report_.clear();
    }
    auto begun = pastRuns.begin(QDateTime::currentDateTimeUtc(), outlook_.plan.documents);
    if (!begun) {
        emit noted(tr("This run can't be undone later: %1: %2.", "a file and what is wrong with it")
                       .arg(shownText(begun.error().file), explained(begun.error())));
        return std::nullopt;
    }
    report_ = begun->path;
    return RunReport(std::move(begun->file));
}

void Workbench::showPastRun(const PastRun& run)
{
    if (!runs.isRunning()) {
        past_ = run;
        report_ = run.report;
        undoing.read(report_);
    }
}

void Workbench::showRead(const std::vector<RunResult>& read)
{
    results.clear();
    results.add(read);
    emit pastRunShown(titleOf(past_));
}

QString Workbench::titleOf(const PastRun& run) const
{
    return tr("Run of %1", "a time")
               .arg(QLocale().toString(run.begun.toLocalTime(), QLocale::ShortFormat)) +
           QStringLiteral(" · ") +
           Workbench::tr("%n document(s)", nullptr, asCount(results.results().size()));
}

QString Workbench::shownRun() const
{
    const auto run = pastRuns.named(report_.substr(report_.rfind('/') + 1));
    return run ? titleOf(*run)
               : Workbench::tr("%n document(s)", nullptr, asCount(results.results().size()));
}

QString Workbench::passwordFor(const std::string& input) const
{
    const auto& all = list.documents();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Document& document) {
        return document.input.path == input;
    });
    return found == all.end() ? QString() : QString::fromStdString(found->password);
}

KeptWork Workbench::work() const
{
    KeptWork work = workIn(list, marks, steps);
    work.settings = settings_;
    work.isRunning = beginsRun_ || runs.isRunning();
    if (past_.report.empty()) {
        work.report = report_.substr(report_.rfind('/') + 1);
    }
    return work;
}

void Workbench::bringBack(const Recovered& found)
{
    const bool isKnown = !found.report.empty() && !found.reportFault;
    const bool wasCutOff = found.work.isRunning && isKnown;
    RunSettings settings = found.work.settings;
    // Replacing documents is never where a window begins, unless it is to go on with that.
    if (!wasCutOff && settings.place == OutputPlace::InPlace) {
        settings.place = OutputPlace::Folder;
    }
    emit settingsBroughtBack(settings);
    setSettings(settings);
    const BroughtBack brought = desktop::bringBack(found.work, {list, marks, steps, undo, actions});
    QSet<DocumentId> done;
    for (std::size_t i = 0; i < brought.ids.size(); ++i) {
        if (found.isDone[i]) {
            done.insert(brought.ids[i]);
        }
    }
    list.update({done.begin(), done.end()}, [](Document& document) {
        document.isDone = true;
        return true;
    });
    outlook_ = {};
    outlook_.obstacle = obstacle(); // until it is worked out
    emit outlookChanged();
    if (isKnown && !runs.isRunning()) {
        report_ = found.report;
        past_ = {};
        const std::size_t finished = takeReported(found);
        const PastRun run = pastRuns.named(found.work.report).value_or(PastRun());
        emit pastRunShown(titleOf(run));
        if (wasCutOff && !brought.stepsFault) {
            emit runCutOff(run, finished);
        }
    }
    if (found.work.isRunning && !isKnown) {
        emit noted(
            tr("A run was cut off, and it can't be told which documents it has done; look at "
               "them before you run it again."));
    }
    if (brought.stepsFault) {
        emit noted(tr("The steps can't be brought back: %1.", "a reason")
                       .arg(explained(*brought.stepsFault)));
    }
    keeper.keepNow();
}

// Those that the run has done by the steps of now are done; returns their number.
std::size_t Workbench::takeReported(const Recovered& found)
{
    const QHash<QString, DocumentId> ids = list.idsByPath();
    std::vector<RunResult> read;
    std::vector<DocumentId> done;
    for (const ReportedDocument& one : found.reported) {
        // The report may be ahead of the outputs' names.
        if (found.work.isRunning && one.report.status == DocumentStatus::Done && !one.isDone) {
            continue;
        }
        const DocumentId id = ids.value(qtPath(one.report.input));
        read.push_back({id, one.report});
        if (id != 0 && one.isDone && found.work.isRunning &&
            one.stepsDigest == forecast_.stepsDigestFor(id)) {
            done.push_back(id);
        }
    }
    results.clear();
    results.add(read);
    list.update(done, [](Document& document) { return !std::exchange(document.isDone, true); });
    return done.size();
}

void Workbench::foreseeUndo()
{
    if (canUndoRun() && !undoing.isBusy()) {
        undoing.foresee(report_);
    }
}

void Workbench::undoRun()
{
    if (canUndoRun() && !undoing.isBusy()) {
        undoing.undo(report_);
        outdated();
    }
}

void Workbench::takeUndone(const std::vector<Undone>& undone)
{
    results.setUndone(undone);
    const QHash<QString, DocumentId> ids = list.idsByPath();
    std::vector<DocumentId> again;
    std::vector<DocumentId> replaced;
    for (const Undone& one : undone) {
        const auto id = ids.constFind(qtPath(one.input));
        if (id != ids.constEnd() && one.status != UndoStatus::LeftAlone) {
            again.push_back(*id);
            if (one.input == one.output) {
                replaced.push_back(*id);
            }
        }
    }
    documents.forgetRun(again);
    documents.readAgain(replaced);
    outdated();
}

void Workbench::startRun()
{
    salvaged_.clear();
    run(false);
}

void Workbench::salvage()
{
    const std::vector<DocumentId> damaged = results.damaged();
    salvaged_ = {damaged.begin(), damaged.end()};
    documents.forgetRun(damaged);
    run(true);
}

void Workbench::goOn()
{
    salvaged_.clear();
    documents.forgetRun(results.failed());
    run(true);
}

void Workbench::run(bool keepsResults)
{
    if (runs.isRunning() || undoing.isBusy()) {
        return;
    }
    const auto changed = documents.readChanged();
    if (!changed.empty()) {
        emit noted(tr("%n document(s) have changed on the disk and are read anew. Look at them, "
                      "and run it then.",
                      nullptr, static_cast<int>(changed.size())));
        return;
    }
    startsWhenPlanned_ = true;
    keepsResults_ = keepsResults;
    planTimer_.stop();
    plan();
}

void Workbench::takeResults(const std::vector<RunResult>& done)
{
    results.add(done);
    QHash<DocumentId, const DocumentReport*> reports;
    std::vector<DocumentId> ids;
    std::vector<DocumentId> replaced;
    for (const RunResult& result : done) {
        reports.insert(result.id, &result.report);
        ids.push_back(result.id);
        if (!result.report.error && result.report.output == result.report.input) {
            replaced.push_back(result.id);
        }
    }
    list.update(ids, [&](Document& document) {
        const DocumentReport& report = *reports.value(document.id);
        document.isDone = !report.error;
        document.error = report.error;
        document.state = report.error ? DocumentState::Failed : DocumentState::Done;
        return true;
    });
    documents.readAgain(replaced);
}

} // namespace vantora::desktop
