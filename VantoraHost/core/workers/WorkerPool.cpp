#include "VantoraHost/core/workers/WorkerPool.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/OutputGroup.h"
#include "VantoraHost/core/reports/ReportOrder.h"
#include "VantoraHost/core/workers/BatchPlan.h"
#include "VantoraHost/core/workers/CrewMember.h"
#include "VantoraHost/core/workers/MessageFrames.h"
#include "VantoraHost/core/workers/Settlement.h"
#include "VantoraHost/core/workers/Verdicts.h"
#include "VantoraHost/core/workers/WorkerService.h"

#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <deque>
#include <thread>

namespace vantora {

namespace {

using karvel::io::FileDescriptor;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// How often the person is asked whether to stop, at least.
constexpr auto tick = 200ms;
// How long workers may take to finish what they are saving when a run is interrupted.
constexpr auto timeToStop = 10s;
// Workers that end in a row before they are ready: then none is going to be. Once one has been
// ready, somebody who ends them at random may be the reason.
constexpr int hopelessStarts = 3;
constexpr int hopelessStartsLater = 20;
// Reports that wait for their turn; with more, the document that they wait for comes first.
constexpr std::size_t mostBytesHeld = 64 * 1024 * 1024;
// Documents that a worker has to do, beyond which nobody rests longer for them.
constexpr std::size_t largestRest = 50;

std::vector<std::uint64_t> sizesOf(const Batch& batch)
{
    std::vector<std::uint64_t> sizes;
    sizes.reserve(batch.inputs.size());
    for (std::size_t i = 0; i < batch.inputs.size(); ++i) {
        if (batch.targets[i] && batch.targets[i]->inputSize) {
            sizes.push_back(*batch.targets[i]->inputSize);
        } else {
            const auto state = stateOf(batch.inputs[i]);
            sizes.push_back(state ? state->size : 0);
        }
    }
    return sizes;
}

class Pool {
public:
    Pool(const Batch& batch, const WorkerSettings& settings, RunObserver& observer)
        : batch_(batch), settings_(settings), observer_(observer), sizes_(sizesOf(batch)),
          wholeRun_(settings.setup.wholeRun), workers_(wholeRun_ ? 1 : settings.count),
          plan_(sizes_, workers_, wholeRun_ ? HandingOut::InOrder : HandingOut::LongestFirst),
          order_([&](const DocumentReport& report) { observer.documentInTurn(report); }),
          verdicts_(settings.timeout, !wholeRun_)
    {
        for (std::size_t i = 0; i < batch.targets.size(); ++i) {
            if (!batch.targets[i]) {
                plan_.leaveOut(i);
            }
        }
    }

    Result<BatchResult> run()
    {
        if (earlyLeft() > 0 || !settings_.copies) {
            startWorkers();
        }
        if (const Outcome begun = settings_.begin(); !begun) {
            return tl::unexpected<Error>(begun.error());
        }
        reportRefused();
        while (!failure_ && (plan_.left() > 0 || !suspects_.empty() || isBusy())) {
            if (!stopping_ && observer_.cancelled()) {
                stop();
            }
            if (stopping_ && crew_.empty()) {
                break;
            }
            if (!stopping_) {
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
        for (std::size_t i = 0; i < batch_.targets.size(); ++i) {
            if (!batch_.targets[i]) {
                arrived(i, failedReport(batch_.inputs[i], batch_.targets[i].error()));
            }
        }
    }

    void arrived(std::size_t document, DocumentReport report)
    {
        const Result<Target>& target = batch_.targets[document];
        if (target && target->standardOutput && report.status == DocumentStatus::Done) {
            passOn(report);
        }
        ++result_.finished;
        result_.failed += report.status == DocumentStatus::Failed ? 1 : 0;
        observer_.documentArrived(report);
        order_.add(document, std::move(report));
    }

    bool isBusy() const
    {
        return std::any_of(crew_.begin(), crew_.end(),
                           [](const CrewMember& member) { return member.isBusy(); });
    }

    void startWorkers()
    {
        const auto busy = static_cast<std::size_t>(std::count_if(
            crew_.begin(), crew_.end(), [](const CrewMember& member) { return member.isBusy(); }));
        const std::size_t wanted =
            std::min(workers_, busy + plan_.workersWorthwhile() + suspects_.size());
        while (crew_.size() < wanted && !failure_) {
            const bool isEarly = earlyLeft() > 0;
            auto process = isEarly ? settings_.early->take() : startWorker();
            if (!process) {
                // Those that are there go on; the system may be short of processes for a moment.
                if (crew_.empty()) {
                    failure_ = process.error();
                }
                return;
            }
            CrewMember member;
            member.process = std::move(*process);
            member.since = settings_.now();
            member.process->send(isEarly ? setupOfEarly() : setup());
            crew_.push_back(std::move(member));
        }
    }

    std::size_t earlyLeft() const { return settings_.early ? settings_.early->left() : 0; }

    std::string setupWith(std::vector<StepRequest> steps, std::vector<std::string> readable) const
    {
        WorkerSetup setup = settings_.setup;
        setup.steps = std::move(steps);
        setup.job = batch_.settings;
        setup.files = {std::move(readable), writableFor(batch_)};
        return framed(setupMessage(setup));
    }

    // Each is made when the first worker is to get it.
    const std::string& setup()
    {
        if (setup_.empty()) {
            setup_ = setupWith(settings_.setup.steps, readableFor(batch_.inputs));
        }
        return setup_;
    }

    const std::string& setupOfEarly()
    {
        if (setupOfEarly_.empty()) {
            setupOfEarly_ = setupWith({}, {});
        }
        return setupOfEarly_;
    }

    Result<std::unique_ptr<WorkerProcess>> startWorker()
    {
        if (!settings_.copies) {
            return WorkerProcess::start(settings_.program);
        }
        output_ = FileDescriptor(::memfd_create("standard output", MFD_CLOEXEC));
        return WorkerProcess::copy({output_.get()}, [&](int orders, int answers) {
            WorkerInheritance inheritance;
            inheritance.streams.standardInput = batch_.settings.standardInput;
            inheritance.streams.standardOutput = [this](std::string_view bytes) {
                return ::write(output_.get(), bytes.data(), bytes.size()) ==
                       static_cast<ssize_t>(bytes.size());
            };
            return serveAsWorker({orders, answers}, settings_.copies, std::move(inheritance)) ? 0
                                                                                              : 1;
        });
    }

    // What a worker has written for standard output waits in a file without a name until it is
    // known to be whole.
    void passOn(DocumentReport& report)
    {
        const off_t size = ::lseek(output_.get(), 0, SEEK_END);
        void* const bytes = ::mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED,
                                   output_.get(), 0);
        const bool passed =
            bytes != MAP_FAILED && batch_.settings.standardOutput({static_cast<const char*>(bytes),
                                                                   static_cast<std::size_t>(size)});
        if (bytes != MAP_FAILED) {
            ::munmap(bytes, static_cast<std::size_t>(size));
        }
        if (!passed) {
            turnIntoFailure(report,
                            {Reason::OutputNotWritable, {}, "standard output can't be written"});
        }
    }

    // A document that a worker ended over is given alone to one that has done nothing yet, or to
    // any where no such is to be had.
    std::vector<std::size_t> nextGroup(const CrewMember& member)
    {
        const bool freshOneComes =
            std::any_of(crew_.begin(), crew_.end(), [](const CrewMember& other) {
                return other.stage == WorkerStage::Starting || other.stage == WorkerStage::Fresh;
            });
        if (!suspects_.empty() && (member.stage == WorkerStage::Fresh || !freshOneComes)) {
            const std::size_t suspect = suspects_.front();
            suspects_.pop_front();
            return {suspect};
        }
        return order_.bytesHeld() > mostBytesHeld ? plan_.only(order_.firstMissing())
                                                  : plan_.next();
    }

    void handOut()
    {
        for (CrewMember& member : crew_) {
            handOutTo(member);
        }
    }

    // So that it needn't wait for its next documents, as long as there are many more. Behind a
    // large one, or one that gets its second chance, others might wait for long.
    bool mayHaveMoreAhead(const CrewMember& member) const
    {
        constexpr std::size_t many = 16;
        constexpr std::size_t manyMore = 128;
        return member.ahead == 0 && member.documents.size() >= many && suspects_.empty() &&
               plan_.left() >= manyMore * workers_ &&
               !batch_.settings.reportFirst; // the next message is the leave to give names there
    }

    void handOutTo(CrewMember& member)
    {
        const bool isBusy = member.isBusy();
        if (!isOpen(member.stage) || (isBusy && !mayHaveMoreAhead(member))) {
            return;
        }
        const std::vector<std::size_t> group = nextGroup(member);
        if (group.empty()) {
            return;
        }
        std::vector<WorkerTask> tasks;
        for (const std::size_t document : group) {
            tasks.push_back({document, batch_.inputs[document], *batch_.targets[document],
                             batch_.rangeOf(document)});
        }
        member.give(group);
        member.after(WorkerEvent::IsGivenDocuments);
        member.since = isBusy ? member.since : settings_.now();
        member.process->send(framed(tasksMessage(tasks)));
    }

    // Waits until a worker says something or something else is due, and handles it.
    void wait()
    {
        std::vector<pollfd> descriptors;
        for (const CrewMember& member : crew_) {
            descriptors.push_back({member.process->answersToRead(), POLLIN, 0});
            descriptors.push_back({member.process->ordersToWrite(), POLLOUT, 0});
        }
        const auto before = settings_.now();
        // Waking up for each answer costs more than the answers.
        std::this_thread::sleep_for(timeUntilSomeoneIsDone());
        ::poll(descriptors.data(), descriptors.size(), static_cast<int>(tick.count()));
        excuseAbsence(settings_.now() - before);
        for (std::size_t i = 0; i < crew_.size(); ++i) {
            if (descriptors[2 * i + 1].revents != 0) {
                crew_[i].process->writeOrders();
            }
            if (descriptors[2 * i].revents != 0) {
                listenTo(crew_[i]);
            }
        }
        endLateOnes();
        crew_.erase(std::remove_if(crew_.begin(), crew_.end(),
                                   [](const CrewMember& member) { return !member.process; }),
                    crew_.end());
    }

    // At least so long; nothing when it may be soon.
    std::chrono::microseconds timeUntilSomeoneIsDone() const
    {
        constexpr auto smallDocument = 100us; // takes longer than that
        constexpr std::size_t soon = 10;
        std::size_t fewest = stopping_ || crew_.empty() ? 0 : largestRest;
        for (const CrewMember& member : crew_) {
            fewest = std::min(fewest, member.documents.size());
        }
        return fewest < soon ? 0us : static_cast<int>(fewest) * smallDocument;
    }

    // When this process was stopped for a while, its workers were, too.
    void excuseAbsence(Clock::duration waited)
    {
        if (waited > tick + 1s) {
            for (CrewMember& member : crew_) {
                member.since += waited;
            }
        }
    }

    void listenTo(CrewMember& member)
    {
        const Heard heard = hear(member);
        if (member.fault == WorkerFault::MadeNoSense || heard == Heard::End) {
            bury(member);
        }
    }

    Heard hear(CrewMember& member)
    {
        std::vector<std::string> messages;
        const Heard heard = member.process->readMessages(messages);
        bool makesSense = heard != Heard::Nonsense;
        for (auto message = messages.begin(); makesSense && message != messages.end(); ++message) {
            member.since = settings_.now();
            auto answer = answerOf(*message);
            makesSense = answer && take(member, std::move(*answer));
            member.noteEndOfGroup();
        }
        if (!makesSense) {
            member.blameFor(WorkerFault::MadeNoSense);
        }
        return heard;
    }

    // Returns false for an answer that makes no sense.
    bool take(CrewMember& member, WorkerAnswer answer)
    {
        if (std::holds_alternative<WorkerReady>(answer)) {
            member.after(WorkerEvent::SaysReady);
            begun_ = true;
            failedStarts_ = 0;
        } else if (const auto* refusal = std::get_if<WorkerRefusal>(&answer)) {
            failure_ = refusal->error;
        } else if (const auto* end = std::get_if<WorkerEnd>(&answer)) {
            member.after(end->asked ? WorkerEvent::SaysEndAsked : WorkerEvent::SaysEnd);
            if (end->complaint && !result_.ending) {
                result_.ending = end->complaint;
            }
        } else if (auto* written = std::get_if<WorkerWritten>(&answer)) {
            if (!member.isAt(written->number)) {
                return false;
            }
            member.documents.pop_front();
            member.written.emplace(written->number, std::move(*written));
        } else if (std::holds_alternative<WorkerNaming>(answer)) {
            return letName(member);
        } else if (const auto* placed = std::get_if<WorkerPlaced>(&answer)) {
            return takePlaced(member, placed->numbers);
        } else {
            auto& done = std::get<WorkerReport>(answer);
            if (member.isAt(done.number)) {
                member.documents.pop_front();
            } else if (member.written.erase(done.number) == 0) {
                return false;
            }
            arrived(done.number, std::move(done.report));
        }
        return true;
    }

    // Returns false when it has no reason to ask.
    bool letName(CrewMember& member)
    {
        if (!batch_.settings.reportFirst) {
            return false;
        }
        if (!isOpen(member.stage)) {
            return true; // its orders have an end, which is no leave
        }
        std::vector<DocumentReport> reports;
        for (const auto& [document, written] : member.written) {
            reports.push_back(written.report);
        }
        observer_.outputsGetNames(reports);
        member.process->send(framed(namingMessage()));
        return true;
    }

    // The worker gets its next documents before what has become of these is passed on. Returns
    // false for documents that were not written.
    bool takePlaced(CrewMember& member, const std::vector<std::size_t>& documents)
    {
        std::vector<WorkerWritten> placed;
        bool makesSense = true;
        for (const std::size_t document : documents) {
            auto written = member.written.extract(document);
            if (written.empty()) {
                makesSense = false;
                break;
            }
            placed.push_back(std::move(written.mapped()));
        }
        member.noteEndOfGroup();
        if (makesSense && !failure_) {
            handOutTo(member);
        }
        for (WorkerWritten& written : placed) {
            arrived(written.number, std::move(written.report));
        }
        return makesSense;
    }

    // Returns false when it was not written.
    bool placedBy(CrewMember& member, std::size_t document)
    {
        auto written = member.written.extract(document);
        if (!written.empty()) {
            arrived(document, std::move(written.mapped().report));
        }
        return !written.empty();
    }

    // A worker has closed its side, or is not going to be waited for any longer.
    void bury(CrewMember& member)
    {
        if (member.fault != WorkerFault::None) {
            member.process->signal(SIGKILL);
        }
        const ProcessEnd end = member.process->end();
        const auto document = member.current();
        if (member.fault != WorkerFault::MadeNoSense) {
            hear(member); // its last words
        }
        for (const std::size_t document : settleOutputsOf(member, batch_)) {
            placedBy(member, document);
        }
        // One that has been too slow may have been done with it in the last moment.
        const bool ended = stopping_ || member.stage == WorkerStage::Ended;
        const bool toBlame = member.fault == WorkerFault::TookTooLong ? member.current() == document
                                                                      : !ended && member.current();
        if (!wasReady(member.stage) && !hasSaidEnd(member.stage)) {
            failedStart(member, end);
        } else if (toBlame && member.current()) {
            judge(*member.current(), member, end);
            member.forget(*member.current());
        }
        plan_.giveBack(member.lost());
        member.documents.clear();
        member.written.clear();
        if (wholeRun_ && wasReady(member.stage) && !stopping_) {
            endRun(member, end, document);
        }
        member.process.reset();
    }

    // The one worker that has seen all of the run so far is gone.
    void endRun(const CrewMember& member, const ProcessEnd& end,
                std::optional<std::size_t> document)
    {
        const std::string how = document ? " over " + batch_.inputs[*document] : ": " + end.text();
        if (plan_.left() > 0) {
            failure_ = Error{Reason::NotReached,
                             {},
                             "not done: the run ended with its one worker process" + how +
                                 "; its actions may have to see all of a run, which no other one "
                                 "can go on with"};
        }
        if (!hasSaidEnd(member.stage) && !result_.ending) {
            result_.ending = Error{Reason::WorkerFailed,
                                   {},
                                   "the actions were not told that the run is over: the worker "
                                   "process ended" +
                                       how};
        }
    }

    void failedStart(const CrewMember& member, const ProcessEnd& end)
    {
        ++failedStarts_;
        const bool hopeless = wholeRun_ || // a second one would begin the run once more
                              failedStarts_ >= (begun_ ? hopelessStartsLater : hopelessStarts) ||
                              (member.fault == WorkerFault::TookTooLong && !begun_);
        if (failure_ || stopping_ || !hopeless) {
            return;
        }
        const std::string what =
            member.fault == WorkerFault::TookTooLong
                ? "worker processes don't begin within " + secondsText(settings_.timeToBegin)
            : member.fault == WorkerFault::MadeNoSense
                ? "worker processes answer with what makes no sense"
                : "worker processes end before they begin: " + end.text();
        failure_ = Error{Reason::WorkerFailed, {}, what};
    }

    // The worker ended over this document.
    void judge(std::size_t document, const CrewMember& member, const ProcessEnd& end)
    {
        auto error = verdicts_.of(document, {end, member.fault == WorkerFault::TookTooLong,
                                             member.fault == WorkerFault::MadeNoSense,
                                             member.stage == WorkerStage::EndedAsked});
        if (error) {
            breakOff(document, member, std::move(*error));
        } else {
            suspects_.push_back(document);
        }
    }

    void breakOff(std::size_t document, const CrewMember& member, Error error)
    {
        error.file = batch_.inputs[document];
        DocumentReport report = failedReport(batch_.inputs[document], std::move(error));
        report.seconds = std::chrono::duration<double>(settings_.now() - member.since).count();
        arrived(document, std::move(report));
    }

    void endLateOnes()
    {
        const auto now = settings_.now();
        for (CrewMember& member : crew_) {
            const bool atWork = member.isBusy() || !isOpen(member.stage);
            const bool ready = wasReady(member.stage);
            const auto limit = ready ? settings_.timeout : settings_.timeToBegin;
            const bool late = limit > 0s && atWork && now - member.since > limit;
            const bool obstinate = stopping_ && now - stoppedAt_ > timeToStop;
            if (member.process && (late || obstinate)) {
                if (late && (member.isBusy() || !ready)) {
                    member.blameFor(WorkerFault::TookTooLong);
                }
                member.process->signal(SIGKILL);
                bury(member);
            }
        }
    }

    void closeAll()
    {
        for (CrewMember& member : crew_) {
            member.after(WorkerEvent::GetsNoMore);
            member.process->closeOrders();
        }
    }

    void stop()
    {
        stopping_ = true;
        result_.interrupted = true;
        stoppedAt_ = settings_.now();
        closeAll();
        for (const CrewMember& member : crew_) {
            member.process->signal(SIGTERM);
        }
    }

    Result<BatchResult> finish()
    {
        if (failure_ && !begun_) {
            return tl::unexpected<Error>(std::move(*failure_));
        }
        closeAll();
        while (!crew_.empty()) {
            wait();
        }
        if (failure_) {
            for (auto group = plan_.next(); !group.empty(); group = plan_.next()) {
                suspects_.insert(suspects_.end(), group.begin(), group.end());
            }
            for (const std::size_t document : suspects_) {
                arrived(document, failedReport(batch_.inputs[document],
                                               {failure_->reason, batch_.inputs[document],
                                                failure_->sentence}));
            }
        }
        order_.finish();
        return std::move(result_);
    }

    const Batch& batch_;
    const WorkerSettings& settings_;
    RunObserver& observer_;
    const std::vector<std::uint64_t> sizes_;
    const bool wholeRun_;
    const std::size_t workers_; ///< at most so many at a time
    BatchPlan plan_;
    ReportOrder order_;
    std::string setup_;
    std::string setupOfEarly_;
    std::vector<CrewMember> crew_;
    BatchResult result_;
    std::optional<Error> failure_;
    Verdicts verdicts_;
    std::deque<std::size_t> suspects_; ///< documents to be tried once more, each alone
    int failedStarts_ = 0;
    bool begun_ = false;    ///< whether any worker has
    FileDescriptor output_; ///< what goes to standard output
    bool stopping_ = false;
    Clock::time_point stoppedAt_;
};

} // namespace

Result<BatchResult> runInWorkers(const Batch& batch, const WorkerSettings& settings,
                                 RunObserver& observer)
{
    return Pool(batch, settings, observer).run();
}

} // namespace vantora
