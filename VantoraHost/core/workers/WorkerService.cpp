#include "VantoraHost/core/workers/WorkerService.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/documents/OutputVerification.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/outputs/OutputGroup.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/MessageFrames.h"
#include "VantoraHost/core/workers/Verdicts.h"

#include <signal.h>

#include <memory>

namespace vantora {

namespace {

/// Orders that come and answers that go.
class Orders {
public:
    explicit Orders(const WorkerChannel& channel) : side_(channel) {}

    /// The next order; none at the end of them.
    std::optional<std::string> next() { return side_.nextMessage(); }

    /// Whether the answer went through.
    bool answer(const WorkerAnswer& answer) const
    {
        return side_.write(framed(answerMessage(answer)));
    }

private:
    WorkerSide side_;
};

// A run that is interrupted asks its workers to end: at once, unless there is something to finish.
volatile sig_atomic_t asked = 0;
volatile sig_atomic_t mayEnd = 1;

void endOrNoteIt(int number)
{
    if (mayEnd == 0) {
        asked = 1;
        return;
    }
    ::signal(number, SIG_DFL);
    ::raise(number); // which comes once this handler is left
}

void listenForEnd()
{
    struct sigaction action = {};
    action.sa_handler = endOrNoteIt;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGTERM, &action, nullptr);
}

bool isAsked()
{
    return asked != 0;
}

class Service {
public:
    Service(Orders& orders, WorkerSetup given, WorkerInheritance inheritance)
        : orders_(orders), setup_(std::move(given)), library_(inheritance.library),
          sequence_(inheritance.sequence)
    {
        setup_.job.standardInput = std::move(inheritance.streams.standardInput);
        setup_.job.standardOutput = std::move(inheritance.streams.standardOutput);
        setup_.job.cancelled = isAsked;
        setup_.job.savingBegins = [] { mayEnd = 0; };
        setup_.job.verifyingBegins = [this] { nothingToFinish(); };
        nothingToFinish();
    }

    /// Loads what isn't there yet, confines this process, and begins the run if that is this
    /// worker's to do.
    Outcome begin(Confinement& confinement)
    {
        if (!library_) {
            if (const Outcome loaded = load(); !loaded) {
                return loaded;
            }
            confinement.allow({programFiles(ownFolders(setup_)), {}});
        }
        const auto verifier = verifierIn(setup_.job.verifier);
        if (!verifier) {
            return tl::unexpected<Error>(verifier.error());
        }
        verifier_ = *verifier;
        if (verifier_ != nullptr) {
            confinement.allow({{std::filesystem::path(setup_.job.verifier).parent_path()}, {}});
        }
        confinement.allow(setup_.files);
        confinement.enforce(setup_.memoryLimit);
        return setup_.wholeRun ? sequence_->begin(*library_) : Outcome();
    }

    void doDocuments()
    {
        DocumentJob job(*library_, *sequence_, setup_.job, verifier_);
        while (const auto order = orders_.next()) {
            const auto tasks = tasksOf(*order);
            if (!tasks || !doGroup(job, *tasks)) {
                return;
            }
        }
    }

    WorkerEnd end()
    {
        const Outcome ended = setup_.wholeRun ? sequence_->end(*library_) : Outcome();
        return {ended ? std::nullopt : std::optional(ended.error()), isAsked()};
    }

private:
    Outcome load()
    {
        auto loaded = loadPdfLibrary(setup_.library);
        if (!loaded) {
            return tl::unexpected<Error>(std::move(loaded.error()));
        }
        loadedLibrary_ = std::move(*loaded);
        auto made = Sequence::of(setup_.steps, ActionCatalog::of(setup_.actionFolders));
        if (!made) {
            return tl::unexpected<Error>(std::move(made.error()));
        }
        madeSequence_ = std::make_unique<Sequence>(std::move(*made));
        library_ = loadedLibrary_.get();
        sequence_ = madeSequence_.get();
        return {};
    }

    // Returns whether there may be another group.
    bool doGroup(DocumentJob& job, const std::vector<WorkerTask>& tasks)
    {
        for (const WorkerTask& task : tasks) {
            if (isAsked() || !doDocument(job, task)) {
                placeOutputs();
                return false;
            }
        }
        return placeOutputs();
    }

    // Returns whether there may be another document.
    bool doDocument(DocumentJob& job, const WorkerTask& task)
    {
        ProcessedDocument done = job.run(task.input, task.target, task.range);
        nothingToFinish();
        if (done.output) {
            const bool announced =
                orders_.answer(WorkerWritten{task.number, done.report, done.output->identity});
            outputs_.add(task.number, std::move(done.report), std::move(*done.output));
            return announced && (!outputs_.isFull() || placeOutputs());
        }
        const Reason reason = done.report.error ? done.report.error->reason : Reason::NotPdf;
        if (reason == Reason::Interrupted) {
            return false;
        }
        const bool exhausted = reason == Reason::OutOfMemory;
        if (exhausted && setup_.memoryLimit > 0) {
            done.report.error->sentence = memorySentence(setup_.memoryLimit);
        }
        // Memory that was wanted for one document may be in pieces now; the next document had
        // better get a fresh worker, where there may be another one.
        return orders_.answer(WorkerReport{task.number, std::move(done.report)}) &&
               (!exhausted || setup_.wholeRun);
    }

    // The actions of a whole run are to hear of its end.
    void nothingToFinish() const { mayEnd = setup_.wholeRun ? 0 : 1; }

    bool mayName()
    {
        const auto leave = orders_.answer(WorkerNaming{}) ? orders_.next() : std::nullopt;
        return leave && *leave == namingMessage();
    }

    // Returns whether the run has heard of it. Without its leave outputs don't get their names.
    bool placeOutputs()
    {
        if (setup_.job.reportFirst && !outputs_.empty() && !mayName()) {
            return false;
        }
        mayEnd = 0;
        WorkerPlaced placed;
        bool heard = true;
        for (OutputGroup::Entry& entry : outputs_.place()) {
            if (entry.asWritten) {
                placed.numbers.push_back(entry.number);
            } else {
                heard =
                    orders_.answer(WorkerReport{entry.number, std::move(entry.report)}) && heard;
            }
        }
        heard = (placed.numbers.empty() || orders_.answer(placed)) && heard;
        nothingToFinish();
        return heard;
    }

    Orders& orders_;
    WorkerSetup setup_;
    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> loadedLibrary_;
    std::unique_ptr<Sequence> madeSequence_;
    KarvelPDFLibraryCPDylibCPP1311* library_;
    Sequence* sequence_;
    const verification::Verifier* verifier_ = nullptr;
    OutputGroup outputs_;
};

} // namespace

std::vector<std::filesystem::path> ownFolders(const WorkerSetup& setup)
{
    std::vector<std::filesystem::path> own = setup.actionFolders;
    own.push_back(setup.library.parent_path());
    return own;
}

bool serveAsWorker(const WorkerChannel& channel, const StoredReader& stored,
                   WorkerInheritance inheritance)
{
    giveUpPrivileges();
    listenForEnd();
    Confinement confinement;
    confinement.allow({inheritance.readable(), {}});
    Orders orders(channel);
    const auto first = orders.next();
    if (!first) {
        return false;
    }
    Result<WorkerSetup> setup = setupOf(*first, stored);
    if (!setup) {
        orders.answer(WorkerRefusal{setup.error()});
        return false;
    }
    Service service(orders, std::move(*setup), std::move(inheritance));
    if (const Outcome begun = service.begin(confinement); !begun) {
        orders.answer(WorkerRefusal{begun.error()});
        return false;
    }
    orders.answer(WorkerReady{});
    service.doDocuments();
    orders.answer(service.end());
    return true;
}

} // namespace vantora
