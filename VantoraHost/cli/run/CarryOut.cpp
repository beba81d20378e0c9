#include "VantoraHost/cli/run/CarryOut.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/cli/arguments/NamedSteps.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/worker/WorkerCommand.h"
#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/actions/StepsIdentity.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/workers/BatchPlan.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/SharedJudgement.h"
#include "VantoraHost/core/workers/SpreadRun.h"

#include <algorithm>
#include <thread>

namespace vantora::cli {

namespace {

// A copy of this process has everything loaded, but also the plan of all documents in pieces all
// over its memory: where it is one of thousands, each takes longer than starting a program pays
// for.
constexpr std::size_t mostForCopies = 1000;

// An action that isn't there may be the name of something that the person has saved.
Error withNamesakes(Error error, const RunOptions& options, const ActionCatalog& catalog,
                    const GuiPartSource& guiPart)
{
    for (const NamedStep& step : options.steps) {
        const bool isMissing = error.reason == Reason::ActionMissing && !step.saved;
        const auto part =
            isMissing && !catalog.find(step.action) ? guiPart() : Result<const GuiPart*>(nullptr);
        if (!part || !*part) {
            continue;
        }
        if ((*part)->steps({SavedKind::ActionList, step.action})) {
            error.sentence +=
                "; there is an action list of that name: --list \"" + step.action + "\"";
        }
        if ((*part)->steps({SavedKind::Favourite, step.action})) {
            error.sentence +=
                "; there is a favourite of that name: --favourite \"" + step.action + "\"";
        }
    }
    return error;
}

// What these steps can't be told to do.
Outcome checkSteps(const RunOptions& options, const Sequence& sequence)
{
    const Action* unknown = sequence.firstThatSeesTheRun();
    if (options.verify && unknown) {
        return fail(Reason::WrongUsage, {},
                    "--verify judges removals of pages, and what action \"" + unknown->name +
                        "\" does only itself knows");
    }
    return {};
}

bool usesStandardStreams(const Batch& batch)
{
    return std::find(batch.inputs.begin(), batch.inputs.end(), standardStream) !=
               batch.inputs.end() ||
           std::any_of(batch.targets.begin(), batch.targets.end(),
                       [](const auto& target) { return target && target->standardOutput; });
}

std::size_t workersAtMost(const RunOptions& options)
{
    return options.workers.jobs.value_or(std::max(1U, std::thread::hardware_concurrency()));
}

// Without what only a plan tells.
WorkerSetup setupFor(const RunOptions& options, const Installation& installation,
                     const std::vector<StepRequest>& steps)
{
    WorkerSetup setup;
    setup.library = installation.library;
    setup.actionFolders = installation.actionFolders;
    setup.steps = steps;
    setup.memoryLimit = options.workers.memoryLimit.value_or(memoryShare(workersAtMost(options)));
    return setup;
}

WorkerSettings workersFor(const RunOptions& options, const RunMeans& means,
                          const std::vector<StepRequest>& steps, const Batch& batch)
{
    WorkerSettings settings;
    settings.program = means.installation.program;
    settings.early = means.early;
    settings.count = workersAtMost(options);
    settings.timeout = std::chrono::seconds(options.workers.timeout.value_or(longestForADocument));
    settings.setup = setupFor(options, means.installation, steps);
    if (batch.inputs.size() <= mostForCopies || usesStandardStreams(batch)) {
        settings.copies = storedReader(means.guiPart);
    }
    return settings;
}

Result<BatchResult> runHere(const Batch& batch, const Installation& installation,
                            Sequence& sequence, RunObserver& observer)
{
    const auto library = loadPdfLibrary(installation.library);
    if (!library) {
        return tl::unexpected<Error>(library.error());
    }
    return runBatch(**library, sequence, batch, observer);
}

} // namespace

Result<RunSteps> stepsOfRun(const RunOptions& options, const Installation& installation,
                            const GuiPartSource& guiPart)
{
    const ActionCatalog catalog = ActionCatalog::of(installation.actionFolders);
    Result<std::vector<StepRequest>> requested = stepsNamed(options.steps, guiPart);
    if (!requested) {
        return tl::unexpected<Error>(std::move(requested.error()));
    }
    Result<Sequence> sequence = Sequence::of(*requested, catalog);
    if (!sequence) {
        return tl::unexpected<Error>(
            withNamesakes(std::move(sequence.error()), options, catalog, guiPart));
    }
    if (const Outcome fit = checkSteps(options, *sequence); !fit) {
        return tl::unexpected<Error>(fit.error());
    }
    return RunSteps{std::move(*requested), std::move(*sequence)};
}

RunIdentity identityOf(const RunOptions& options, const Sequence& sequence)
{
    return {VANTORA_VERSION,
            stepsDigest(sequence.steps()),
            stepsJson(sequence.steps()),
            nanosecondsNow(),
            options.salvage,
            options.verify};
}

JobSettings settingsOf(const RunOptions& options)
{
    JobSettings settings;
    settings.dryRun = options.dryRun;
    settings.keepSigned = options.keepSigned;
    const bool keepsRecords = options.certificates || !options.checksumsPath.empty();
    settings.hashInputs = options.reportHashes || keepsRecords;
    settings.hashOutputs = keepsRecords;
    settings.strict = options.strict;
    settings.salvage = options.salvage;
    const bool inPlace =
        options.destination && std::holds_alternative<InPlace>(*options.destination);
    settings.ifEmpty =
        options.ifEmpty.value_or(inPlace || options.strict ? IfEmpty::Fail : IfEmpty::Blank);
    // A run that is killed must not leave documents that are done and not reported: going on, the
    // next one would change them once more. Elsewhere it would only do them again.
    settings.reportFirst = !options.reportPath.empty() && inPlace;
    return settings;
}

void sayWhatStepsMean(const RunOptions& options, const Sequence& sequence, const Streams& streams)
{
    if (options.quiet) {
        return;
    }
    for (const OptionDoubt& doubt : sequence.doubts()) {
        std::string keys;
        for (const std::string& key : doubt.keys) {
            keys += (keys.empty() ? "" : ", ") + key;
        }
        printWarning(streams, {},
                     "action \"" + doubt.action + "\" may not know what was set: " + keys +
                         "; a misspelt option does nothing");
    }
    const Action* oneByOne = sequence.firstThatSeesTheRun();
    if (oneByOne && options.workers.jobs.value_or(1) > 1) {
        printNote(streams, streams.language.text(
                               "one worker process does all documents in their order, because "
                               "action \"%1\" may have to see them so",
                               {shown(oneByOne->name)}));
    }
}

std::unique_ptr<EarlyWorkers> earlyWorkers(RunSteps& steps, const std::vector<Input>& inputs,
                                           const RunOptions& options, const RunMeans& means)
{
    std::vector<std::string> documents;
    documents.reserve(inputs.size());
    for (const Input& input : inputs) {
        if (input.path == standardStream) {
            return nullptr; // which only a copy that is made after it was read can have
        }
        if (!input.leftAlone) {
            documents.push_back(input.path);
        }
    }
    const bool toOutput =
        options.destination && std::holds_alternative<ToStandardOutput>(*options.destination);
    // With outputs that may be there already, there may be nothing to do.
    if (options.workers.jobs == 0U || documents.empty() || toOutput || options.skipExisting) {
        return nullptr;
    }
    const std::size_t count = steps.sequence.firstThatSeesTheRun()
                                  ? 1
                                  : workersWorthwhile(documents.size(), workersAtMost(options));
    return EarlyWorkers::make(count, setupFor(options, means.installation, {}), steps.sequence,
                              documents, storedReader(means.guiPart));
}

Result<BatchResult> carryOut(RunSteps& steps, Batch& batch, const RunOptions& options,
                             const RunMeans& means, RunObserver& observer)
{
    if (options.verify && !options.dryRun) {
        batch.settings.verifier = means.installation.verifier;
    }
    if (options.workers.jobs == 0U || batch.inputs.empty()) {
        return runHere(batch, means.installation, steps.sequence, observer);
    }
    WorkerSettings workers = workersFor(options, means, steps.requested, batch);
    if (const ChoiceSet* choices = steps.sequence.choices()) {
        batch.settings.judged =
            judgeTogether(*choices, batch,
                          {means.installation.library, workers.count, workers.setup.memoryLimit,
                           workers.timeout, means.streams.interrupted});
    }
    return spreadRun(steps.sequence, batch, std::move(workers), observer);
}

} // namespace vantora::cli
