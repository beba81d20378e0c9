#include "VantoraHost/core/WorkerPool.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraHost/core/BatchPlan.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/ReportOrder.h"
#include "VantoraHost/core/WorkerProcess.h"

#include <poll.h>
#include <signal.h>

#include <algorithm>
#include <deque>
#include <memory>

namespace vantora {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// How often the person is asked whether to stop, at least.
constexpr auto tick = 200ms;
// How long workers may take to finish what they are saving when a run is interrupted.
constexpr auto timeToStop = 10s;
// Workers that end in a row before they are ready: then none is going to be.
constexpr int hopelessStarts = 3;
// Reports that wait for their turn; with more, the document that they wait for comes first.
constexpr std::size_t mostBytesHeld = 64 * 1024 * 1024;

std::vector<std::uint64_t> sizesOf(const std::vector<std::string>& inputs)
{
    std::vector<std::uint64_t> sizes;
    sizes.reserve(inputs.size());
    for (const std::string& input : inputs) {
        const auto state = stateOf(input);
        sizes.push_back(state ? state->size : 0);
    }
    return sizes;
}

/// A worker with what it has been given.
struct Member {
    std::unique_ptr<WorkerProcess> process;
    std::deque<std::size_t> documents; ///< without a report yet; it is at the first
    Clock::time_point since;           ///< when it was last heard of or given something
    bool ready = false;
    bool closing = false; ///< gets no more documents
    bool orderly = false; ///< has said that it ends
    bool timedOut = false;
    bool gone = false;
};

class Pool {
public:
    Pool(const Batch& batch, const WorkerSettings& settings, RunObserver& observer)
        : batch(batch), settings(settings), observer(observer), sizes(sizesOf(batch.inputs)),
          plan(sizes, settings.count),
          order([&](const DocumentReport& report) { observer.documentInTurn(report); })
    {
        WorkerSetup setup = settings.setup;
        setup.job = batch.settings;
        setupLine = setupMessage(setup);
    }

    Result<BatchResult> run()
    {
        reportRefused();
        while (!failure && (plan.left() > 0 || isBusy())) {
            if (!stopping && observer.cancelled()) {
                stop();
            }
            if (stopping && crew.empty()) {
                break;
            }
            if (!stopping) {
                startWorkers();
                handOut();
            }
            wait();
        }
        return finish();
    }

private:
    void reportRefused()
    {
        for (std::size_t i = 0; i < batch.targets.size(); ++i) {
            if (!batch.targets[i]) {
                plan.leaveOut(i);
                arrived(i, failedReport(batch.inputs[i], batch.targets[i].error()));
            }
        }
    }

    void arrived(std::size_t document, DocumentReport report)
    {
        ++result.finished;
        result.failed += report.status == DocumentStatus::Failed ? 1 : 0;
        observer.documentArrived(report);
        order.add(document, std::move(report));
    }

    bool isBusy() const
    {
        return std::any_of(crew.begin(), crew.end(),
                           [](const Member& member) { return !member.documents.empty(); });
    }

    void startWorkers()
    {
        const auto idle = static_cast<std::size_t>(
            std::count_if(crew.begin(), crew.end(),
                          [](const Member& member) { return member.documents.empty(); }));
        const std::size_t busy = crew.size() - idle;
        const std::size_t wanted = std::min(settings.count, busy + plan.workersWorthwhile());
        while (crew.size() < wanted && !failure) {
            auto process = WorkerProcess::start(settings.program);
            if (!process) {
                // Those that are there go on; the system may be short of processes for a moment.
                if (crew.empty()) {
                    failure = process.error();
                }
                return;
            }
            Member member;
            member.process = std::move(*process);
            member.since = Clock::now();
            member.process->send(setupLine);
            crew.push_back(std::move(member));
        }
    }

    std::vector<std::size_t> nextGroup()
    {
        return order.bytesHeld() > mostBytesHeld ? plan.only(order.firstMissing()) : plan.next();
    }

    void handOut()
    {
        for (Member& member : crew) {
            if (!member.ready || member.closing || !member.documents.empty()) {
                continue;
            }
            const std::vector<std::size_t> group = nextGroup();
            if (group.empty()) {
                continue;
            }
            std::vector<WorkerTask> tasks;
            for (const std::size_t document : group) {
                tasks.push_back({document, batch.inputs[document], *batch.targets[document]});
            }
            member.documents.assign(group.begin(), group.end());
            member.since = Clock::now();
            member.process->send(tasksMessage(tasks));
        }
    }

    // Waits until a worker says something or something else is due, and handles it.
    void wait()
    {
        std::vector<pollfd> descriptors;
        for (const Member& member : crew) {
            descriptors.push_back({member.process->answersToRead(), POLLIN, 0});
            descriptors.push_back({member.process->ordersToWrite(), POLLOUT, 0});
        }
        const auto before = Clock::now();
        ::poll(descriptors.data(), descriptors.size(), static_cast<int>(tick.count()));
        excuseAbsence(Clock::now() - before);
        for (std::size_t i = 0; i < crew.size(); ++i) {
            if (descriptors[2 * i + 1].revents != 0) {
                crew[i].process->writeOrders();
            }
            if (descriptors[2 * i].revents != 0) {
                listenTo(crew[i]);
            }
        }
        endLateOnes();
        crew.erase(std::remove_if(crew.begin(), crew.end(),
                                  [](const Member& member) { return member.gone; }),
                   crew.end());
    }

    // When this process was stopped for a while, its workers were, too.
    void excuseAbsence(Clock::duration waited)
    {
        if (waited > tick + 1s) {
            for (Member& member : crew) {
                member.since += waited;
            }
        }
    }

    void listenTo(Member& member)
    {
        std::vector<std::string> lines;
        const bool open = member.process->readAnswers(lines);
        for (const std::string& line : lines) {
            member.since = Clock::now();
            const auto answer = answerOf(line);
            if (!answer || !take(member, *answer)) {
                member.process->signal(SIGKILL); // it is out of its mind
                break;
            }
        }
        if (!open) {
            bury(member);
        }
    }

    // Returns false for an answer that makes no sense.
    bool take(Member& member, const WorkerAnswer& answer)
    {
        if (std::holds_alternative<WorkerReady>(answer)) {
            member.ready = begun = true;
            failedStarts = 0;
        } else if (const auto* refusal = std::get_if<WorkerRefusal>(&answer)) {
            failure = refusal->error;
        } else if (const auto* end = std::get_if<WorkerEnd>(&answer)) {
            member.orderly = member.closing = true;
            if (end->complaint && !result.ending) {
                result.ending = end->complaint;
            }
        } else {
            const auto& done = std::get<WorkerReport>(answer);
            if (member.documents.empty() || member.documents.front() != done.number) {
                return false;
            }
            member.documents.pop_front();
            arrived(done.number, done.report);
        }
        return true;
    }

    // A worker has closed its side.
    void bury(Member& member)
    {
        const std::string how = member.process->end();
        member.gone = true;
        // Somebody may ask a worker to end, but hardly twice at the same document.
        const bool again = !member.documents.empty() && member.orderly && !stopping &&
                           givenUp == member.documents.front();
        if (member.orderly && !member.documents.empty()) {
            givenUp = member.documents.front();
        }
        if ((!member.orderly || again) && !member.documents.empty()) {
            const std::size_t document = member.documents.front();
            if (!stopping || member.timedOut) {
                member.documents.pop_front();
            }
            breakOff(document, member, how);
        } else if (!member.ready && !member.orderly && ++failedStarts >= hopelessStarts &&
                   !failure) {
            failure =
                Error{Reason::WorkerFailed, {}, "worker processes end before they begin: " + how};
        }
        plan.giveBack({member.documents.begin(), member.documents.end()});
        member.documents.clear();
    }

    // The worker ended over this document.
    void breakOff(std::size_t document, const Member& member, const std::string& how)
    {
        const Target& target = *batch.targets[document];
        if (!target.path.empty()) {
            const auto folder = std::filesystem::path(target.path).parent_path();
            karvel::io::removeAbandoned(folder.empty() ? "." : folder);
        }
        if (stopping && !member.timedOut) {
            return; // it counts as not begun
        }
        Error error{Reason::Crashed, batch.inputs[document],
                    "the worker process that was at it ended: " + how};
        if (member.timedOut) {
            error.reason = Reason::TimedOut;
            error.sentence =
                "it took longer than " + std::to_string(settings.timeout.count()) + " seconds";
        }
        if (!target.replace && !target.path.empty() && identityOf(target.path)) {
            error.sentence += "; its output was finished before that";
        }
        DocumentReport report = failedReport(batch.inputs[document], std::move(error));
        report.seconds = std::chrono::duration<double>(Clock::now() - member.since).count();
        arrived(document, std::move(report));
    }

    void endLateOnes()
    {
        const auto now = Clock::now();
        for (Member& member : crew) {
            const bool atWork = !member.documents.empty() || !member.ready || member.closing;
            const bool late =
                settings.timeout > 0s && atWork && now - member.since > settings.timeout;
            const bool obstinate = stopping && now - stoppedAt > timeToStop;
            if (!member.gone && (late || obstinate)) {
                member.timedOut = member.timedOut || (late && !member.documents.empty());
                member.process->signal(SIGKILL);
            }
        }
    }

    void closeAll()
    {
        for (Member& member : crew) {
            member.closing = true;
            member.process->closeOrders();
        }
    }

    void stop()
    {
        stopping = true;
        result.interrupted = true;
        stoppedAt = Clock::now();
        closeAll();
        for (const Member& member : crew) {
            member.process->signal(SIGTERM);
        }
    }

    Result<BatchResult> finish()
    {
        if (failure && !begun) {
            return tl::unexpected<Error>(std::move(*failure));
        }
        closeAll();
        while (!crew.empty()) {
            wait();
        }
        if (failure) {
            for (auto group = plan.next(); !group.empty(); group = plan.next()) {
                for (const std::size_t document : group) {
                    arrived(document, failedReport(batch.inputs[document],
                                                   {failure->reason, batch.inputs[document],
                                                    failure->sentence}));
                }
            }
        }
        order.finish();
        return std::move(result);
    }

    const Batch& batch;
    const WorkerSettings& settings;
    RunObserver& observer;
    const std::vector<std::uint64_t> sizes;
    BatchPlan plan;
    ReportOrder order;
    std::string setupLine;
    std::vector<Member> crew;
    BatchResult result;
    std::optional<Error> failure;
    std::optional<std::size_t> givenUp; ///< where a worker that was asked to end was last
    int failedStarts = 0;
    bool begun = false; ///< whether any worker has
    bool stopping = false;
    Clock::time_point stoppedAt;
};

} // namespace

Result<BatchResult> runInWorkers(const Batch& batch, const WorkerSettings& settings,
                                 RunObserver& observer)
{
    return Pool(batch, settings, observer).run();
}

} // namespace vantora
