#include "VantoraHost/desktop/run/RunController.h"

#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/actions/ActionCatalog.h"
#include "VantoraHost/core/actions/StepsIdentity.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/SpreadRun.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <algorithm>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>

namespace vantora::desktop {

namespace {

// How often results are taken over, in milliseconds: often enough to look alive, seldom enough for
// thousands of documents in a second.
constexpr int interval = 100;

} // namespace

/// Takes results in the run's thread, for the window's.
class RunFeed : public RunObserver {
public:
    RunFeed(const RunPlan& plan, std::optional<RunReport> report) : report_(std::move(report))
    {
        for (const RunGroup& group : plan.groups) {
            for (std::size_t i = 0; i < group.ids.size(); ++i) {
                ids_.emplace(group.batch.inputs[i], group.ids[i]);
            }
        }
    }

    /// The documents that follow are of this run.
    void begin(RunIdentity run) { run_ = std::move(run); }

    bool hasReport() const { return report_.has_value(); }

    void outputsGetNames(const std::vector<DocumentReport>& reports) override
    {
        if (report_) {
            report_->outputsGetNames(reports, run_);
        }
    }

    void documentArrived(const DocumentReport& report) override
    {
        if (report_) {
            report_->documentArrived(report, run_);
        }
        const auto id = ids_.find(report.input);
        const std::lock_guard lock(mutex_);
        results_.push_back({id == ids_.end() ? 0 : id->second, report});
    }

    void documentInTurn(const DocumentReport& /*report*/) override {}
    bool cancelled() const override { return cancelled_; }

    void cancel() { cancelled_ = true; }

    /// Closes the report; returns why it isn't complete.
    std::optional<Error> endReport()
    {
        const Outcome synced = report_ ? report_->sync() : Outcome();
        report_.reset(); // a run that goes on writes to it, too
        return synced ? std::nullopt : std::optional(synced.error());
    }

    std::vector<RunResult> take()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(results_, {});
    }

private:
    std::optional<RunReport> report_; ///< these two are the run's thread's
    RunIdentity run_;
    std::unordered_map<std::string, DocumentId> ids_;
    std::atomic<bool> cancelled_{false};
    std::mutex mutex_;
    std::vector<RunResult> results_;
};

namespace {

WorkerSettings workersFor(const Installation& installation, const std::vector<StepRequest>& steps)
{
    WorkerSettings settings;
    settings.program = installation.program;
    settings.count = std::max(1U, std::thread::hardware_concurrency());
    settings.timeout = std::chrono::seconds(longestForADocument);
    settings.setup.library = installation.library;
    settings.setup.actionFolders = installation.actionFolders;
    settings.setup.steps = steps;
    settings.setup.memoryLimit = memoryShare(settings.count);
    return settings;
}

// Returns why it could not go on.
std::optional<Error> runGroup(RunGroup& group, const Installation& installation, RunFeed& feed)
{
    auto sequence = Sequence::of(group.steps, ActionCatalog::of(installation.actionFolders));
    if (!sequence) {
        return sequence.error();
    }
    feed.begin({VANTORA_VERSION, stepsDigest(sequence->steps()), stepsJson(sequence->steps()),
                nanosecondsNow(), group.batch.settings.salvage, group.verifies});
    // Its workers outlive a window that is killed by what they are at. Going on, a run must not
    // find outputs of its own that nobody knows of.
    group.batch.settings.reportFirst = feed.hasReport();
    group.batch.settings.verifier = group.verifies ? installation.verifier.native() : "";
    makeFolders(group.batch.inputs, group.batch.targets);
    removeAbandonedFiles(group.batch.targets);
    const auto result =
        spreadRun(*sequence, group.batch, workersFor(installation, group.steps), feed);
    return result ? result->ending : std::optional(result.error());
}

} // namespace

RunController::RunController(Installation installation, QObject* parent)
    : QObject(parent), installation_(std::move(installation))
{
    connect(&timer_, &QTimer::timeout, this, &RunController::takeResults);
}

RunController::~RunController()
{
    cancel();
}

void RunController::start(RunPlan plan, std::vector<std::string> passwords,
                          std::optional<RunReport> report)
{
    feed_ = std::make_shared<RunFeed>(plan, std::move(report));
    summary_ = {};
    reportFault_.reset();
    total_ = plan.documents;
    elapsed_.start();
    timer_.start(interval);
    background_.start([this, feed = feed_, plan = std::make_shared<RunPlan>(std::move(plan)),
                       passwords = std::move(passwords)](const std::atomic<bool>&) {
        std::optional<Error> error;
        for (RunGroup& group : plan->groups) {
            if (error || feed->cancelled()) {
                break;
            }
            group.batch.settings.passwords = passwords;
            group.batch.settings.cancelled = [feed] { return feed->cancelled(); };
            error = runGroup(group, installation_, *feed);
        }
        return [this, feed, error, reportFault = feed->endReport()] {
            reportFault_ = reportFault;
            takeResults();
            timer_.stop();
            emit finished(feed->cancelled() && summary_.finished() < total_,
                          error ? shownSentence(error->sentence) : QString());
        };
    });
    emit started(total_);
}

void RunController::cancel()
{
    if (feed_) {
        feed_->cancel();
    }
}

void RunController::takeResults()
{
    const std::vector<RunResult> results = feed_->take();
    for (const RunResult& result : results) {
        summary_.add(result.report);
    }
    if (!results.empty()) {
        emit documentsDone(results);
    }
    emit progressed();
}

RunProgress RunController::progress() const
{
    RunProgress progress;
    progress.finished = summary_.finished();
    progress.failed = summary_.failed();
    progress.total = total_;
    const double seconds = elapsed_.isValid() ? static_cast<double>(elapsed_.elapsed()) / 1000 : 0;
    if (seconds >= 1 && progress.finished > 0) {
        progress.rate = static_cast<double>(progress.finished) / seconds;
        progress.left = static_cast<double>(progress.total - progress.finished) / progress.rate;
    }
    return progress;
}

} // namespace vantora::desktop
