#include "VantoraHost/cli/watch/WatchRun.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/run/RunRecords.h"
#include "VantoraHost/cli/run/RunReporter.h"
#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/outputs/OutputPlan.h"
#include "VantoraHost/core/watching/PuttingAside.h"

#include <algorithm>
#include <chrono>

namespace vantora::cli {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

// Worth starting worker processes for, and not so many that one which arrives meanwhile waits long.
constexpr std::size_t mostTogether = 256;
// What both lines about a document may take in the report.
constexpr std::uint64_t roomForADocument = 4 * 1024;
// Before what can't be done for reasons of the place is tried again, longer each time.
constexpr Clock::duration firstPause = 1s;
constexpr unsigned mostDoublings = 6;
// How often a document may find trouble where others don't, until it counts as its own.
constexpr unsigned mostFaults = 3;

bool isUnder(const std::string& path, const std::string& folder)
{
    return path.size() > folder.size() && path.compare(0, folder.size(), folder) == 0;
}

} // namespace

WatchRun::WatchRun(const WatchOptions& options, Equipment equipment,
                   const Installation& installation, const GuiPartSource& guiPart,
                   const Streams& streams)
    : options_(options), installation_(installation), guiPart_(guiPart), streams_(streams),
      with_(std::move(equipment)), identity_(identityOf(options.run, with_.steps.sequence)),
      watch_(std::move(with_.folders), {options.settle, options.poll, options.once},
             {streams.interrupted,
              [this](const WatchedDocument& document) { return isDone(document); },
              [this](const WatchedFolder&) {
                  if (const Outcome read = readState(); !read) {
                      printError(streams_, read.error());
                  }
              },
              [this](const std::string& folder, const std::string& sentence) {
                  printWarning(streams_, folder, "the folder " + sentence);
              }})
{
}

// Of documents that are still there: what is gone may come back as another one.
Outcome WatchRun::readState()
{
    const bool failuresStay = options_.failed.empty();
    const Outcome read =
        state_.read(options_.run.reportPath, failuresStay, [&](const std::string& path) {
            return std::any_of(options_.folders.begin(), options_.folders.end(),
                               [&](const std::string& folder) { return isUnder(path, folder); }) &&
                   isThere(path);
        });
    if (!read) {
        return read;
    }
    for (const DocumentReport& placed : state_.takePlaced()) {
        with_.report.add(placed, identity_);
    }
    return with_.report.sync();
}

void WatchRun::sayWhatIsWatched() const
{
    if (options_.run.quiet) {
        return;
    }
    const Language& language = streams_.language;
    for (std::size_t place = 0; place < options_.folders.size(); ++place) {
        const TextValues folder = {shown(options_.folders[place])};
        printNote(streams_, watch_.isTold(place) || options_.once
                                ? language.text("watching %1", folder)
                                : language.text("watching %1, by listing it now and then", folder));
    }
    if (state_.size() > 0) {
        printNote(streams_, language.text("the report knows %1 of the documents there",
                                          {language.number(state_.size())}));
    }
}

// One that is done and was not moved away, because the watch was cut off, is moved now.
bool WatchRun::isDone(const WatchedDocument& document)
{
    const auto status = state_.of(document.path, document.version);
    if (status && *status != DocumentStatus::Failed) {
        putAway(document, *status);
    }
    return status.has_value();
}

int WatchRun::run()
{
    if (const Outcome read = readState(); !read) {
        return failedWith(streams_, options_.run.json, read.error());
    }
    sayWhatStepsMean(options_.run, with_.steps.sequence, streams_);
    sayWhatIsWatched();
    for (;;) {
        const auto documents = watch_.next(troubles_ > 0 ? 1 : mostTogether, notBefore_);
        if (documents.empty()) {
            break;
        }
        const auto group = withRoomInReport(withDifferentOutputs(documents));
        if (const Outcome done = group.empty() ? Outcome() : doGroup(group); !done) {
            return failedWith(streams_, options_.run.json, done.error());
        }
        if (options_.once && troubles_ > 0) {
            break;
        }
    }
    return status();
}

// Of documents in several folders with one name the second has to find the first one's output.
std::vector<WatchedDocument> WatchRun::withDifferentOutputs(std::vector<WatchedDocument> documents)
{
    std::vector<Input> inputs;
    for (const WatchedDocument& document : documents) {
        inputs.push_back(inputNamed(document.path));
    }
    const PlannedNames names(inputs, *options_.run.destination);
    std::unordered_set<std::string> taken;
    std::vector<WatchedDocument> different;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        if (taken.insert(names.of(i)).second) {
            different.push_back(std::move(documents[i]));
        } else {
            watch_.again(documents[i], Clock::now());
        }
    }
    return different;
}

// As many as there is room on the disk for the lines of, the others later.
std::vector<WatchedDocument> WatchRun::withRoomInReport(std::vector<WatchedDocument> documents)
{
    std::size_t count = documents.size();
    Outcome room = with_.report.reserve(count * roomForADocument);
    while (!room && count > 1) {
        count /= 2;
        room = with_.report.reserve(count * roomForADocument);
    }
    if (!room) {
        std::vector<const WatchedDocument*> all;
        for (const WatchedDocument& document : documents) {
            all.push_back(&document);
        }
        waitOut(all, room.error());
        return {};
    }
    for (std::size_t i = count; i < documents.size(); ++i) {
        watch_.again(documents[i], Clock::now());
    }
    documents.resize(count);
    return documents;
}

Result<Batch> WatchRun::planned(const std::vector<WatchedDocument>& documents)
{
    std::vector<Input> inputs;
    for (const WatchedDocument& document : documents) {
        inputs.push_back(inputNamed(document.path));
    }
    auto targets = planOutputs(inputs, *options_.run.destination, options_.run.taken);
    if (!targets) {
        return tl::unexpected<Error>(std::move(targets.error()));
    }
    if (const Outcome apart = keepsApart(options_.run.reportPath, inputs, *targets); !apart) {
        return tl::unexpected<Error>(apart.error());
    }
    Batch batch;
    batch.settings = settingsOf(options_.run);
    batch.settings.passwords = with_.passwords;
    batch.settings.cancelled = streams_.interrupted;
    batch.settings.reportFirst = true;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        Result<Target>& target = (*targets)[i];
        if (target) {
            target->input = documents[i].version;
        }
        batch.inputs.push_back(documents[i].path);
        batch.targets.push_back(std::move(target));
    }
    return batch;
}

// The error is one that the watch can't go on with.
Outcome WatchRun::doGroup(const std::vector<WatchedDocument>& documents)
{
    std::vector<const WatchedDocument*> all;
    for (const WatchedDocument& document : documents) {
        all.push_back(&document);
    }
    auto batch = planned(documents);
    if (!batch) {
        if (batch.error().reason == Reason::ReportMisplaced) {
            return tl::unexpected<Error>(std::move(batch.error()));
        }
        waitOut(all, batch.error());
        return {};
    }
    if (!foldersAreTidy_) {
        removeAbandonedFiles(batch->targets);
        foldersAreTidy_ = true;
    }
    RunRecords records({installation_.program, {}}, {}, batch->inputs, std::nullopt);
    RunReporter printer(options_.run, documents.size(), {identity_, std::nullopt, 0}, records,
                        streams_);
    GroupReporter group(documents, printer, with_.report, identity_, state_,
                        [&](const std::string& path) {
                            const auto faults = faults_.find(path);
                            return faults != faults_.end() && faults->second >= mostFaults;
                        });
    const Result<BatchResult> result =
        carryOut(with_.steps, *batch, options_.run, {installation_, guiPart_, streams_}, group);
    if (const Outcome kept = with_.report.sync(); !kept) {
        return kept;
    }
    if (!result) {
        waitOut(all, result.error());
        return {};
    }
    static_cast<void>(printer.finish(false));
    if (result->ending) {
        printError(streams_, *result->ending);
    }
    someFailed_ = someFailed_ || printer.someFailed() || result->ending;
    someLost_ = someLost_ || printer.someLost();
    finishGroup(group);
    return {};
}

void WatchRun::finishGroup(const GroupReporter& group)
{
    for (const GroupReporter::Settled& one : group.settled()) {
        ++(one.status == DocumentStatus::Failed ? failed_ : done_);
        faults_.erase(one.document->path);
        putAway(*one.document, one.status);
    }
    if (!group.trouble()) {
        troubles_ = 0;
        notBefore_ = {};
        for (const WatchedDocument* document : group.left()) {
            watch_.again(*document, Clock::now());
        }
        return;
    }
    if (!group.settled().empty()) {
        for (const WatchedDocument* document : group.left()) {
            ++faults_[document->path];
        }
    }
    waitOut(group.left(), *group.trouble());
}

// What keeps documents from being done may pass: one of them is tried after a while, and then
// longer and longer ones. Said once, until it has passed.
void WatchRun::waitOut(const std::vector<const WatchedDocument*>& documents, const Error& trouble)
{
    if (troubles_ == 0) {
        printError(streams_, trouble);
        if (!options_.once) {
            printNote(streams_,
                      streams_.language.counted(
                          documents.size(), "document waits for that to pass, and is tried again",
                          "documents wait for that to pass, and are tried again"));
        }
    }
    someFailed_ = someFailed_ || options_.once;
    notBefore_ = Clock::now() + firstPause * (1U << std::min(troubles_, mostDoublings));
    ++troubles_;
    for (const WatchedDocument* document : documents) {
        watch_.again(*document, notBefore_);
    }
}

void WatchRun::putAway(const WatchedDocument& document, DocumentStatus status)
{
    const bool failed = status == DocumentStatus::Failed;
    const std::string& to = failed ? options_.failed : options_.done;
    const WatchedFolder* const folder = watch_.folder(document.folder);
    if (to.empty() || !folder || stuck_.count(document.path) != 0) {
        return;
    }
    const auto moved = putAside(folder->folder(), document.name, document.version, to);
    if (moved) {
        state_.forget(document.path);
        if (failed && !options_.run.quiet) {
            printNote(streams_,
                      streams_.language.text("%1 is moved to %2",
                                             {shown(document.path), shown(to + "/" + *moved)}));
        }
    } else if (moved.error().reason != Reason::ChangedMeanwhile) {
        stuck_.insert(document.path);
        printError(streams_, {moved.error().reason, document.path, moved.error().sentence});
        someFailed_ = true;
    }
}

int WatchRun::status() const
{
    if (streams_.interrupted()) {
        if (!options_.run.quiet) {
            const Language& language = streams_.language;
            printNote(streams_,
                      language.text("stopped: %1 done, %2 failed; nothing is half-written; to go "
                                    "on, give the same command again",
                                    {language.counted(done_, "document", "documents"),
                                     language.number(failed_)}));
        }
        return InterruptedByUser;
    }
    return someFailed_ ? SomeFailed : someLost_ ? DoneWithLosses : AllDone;
}

} // namespace vantora::cli
