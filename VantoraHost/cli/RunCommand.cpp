#include "VantoraHost/cli/RunCommand.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/cli/InputFiles.h"
#include "VantoraHost/cli/Messages.h"
#include "VantoraHost/cli/RunReporter.h"
#include "VantoraHost/core/Batch.h"
#include "VantoraHost/core/Confinement.h"
#include "VantoraHost/core/DeletePagesOptions.h"
#include "VantoraHost/core/PdfLibrary.h"
#include "VantoraHost/core/WorkerPool.h"

#include <algorithm>
#include <ostream>
#include <thread>

namespace vantora::cli {

namespace {

int failedWith(const Streams& streams, const Error& error)
{
    printError(streams, error);
    switch (error.reason) {
    case Reason::BadPageRange:
    case Reason::ActionMissing:
    case Reason::ActionListMissing:
    case Reason::FavouriteMissing:
        return WrongUsage;
    case Reason::Interrupted:
        return InterruptedByUser;
    default:
        return SomeFailed;
    }
}

bool reads(const std::vector<std::string>& inputs, const char* name)
{
    return std::find(inputs.begin(), inputs.end(), name) != inputs.end();
}

// Everything that a run needs beside its steps.
Result<Batch> prepare(const RunOptions& options, const Streams& streams)
{
    Batch batch;
    batch.inputs = options.inputs;
    if (options.destination) {
        auto targets = planOutputs(options.inputs, *options.destination, options.overwrite);
        if (!targets) {
            return tl::unexpected<Error>(std::move(targets.error()));
        }
        batch.targets = std::move(*targets);
    } else {
        batch.targets.assign(options.inputs.size(), Target());
    }
    auto passwords = readPasswords(options.passwordFile);
    if (!passwords) {
        return tl::unexpected<Error>(std::move(passwords.error()));
    }
    batch.settings.passwords = std::move(*passwords);
    if (reads(options.inputs, standardStream)) {
        auto input = readStandardInput(streams);
        if (!input) {
            return tl::unexpected<Error>(std::move(input.error()));
        }
        batch.settings.standardInput = std::move(*input);
    }
    batch.settings.dryRun = options.dryRun;
    batch.settings.keepSigned = options.keepSigned;
    batch.settings.cancelled = streams.interrupted;
    batch.settings.standardOutput = [&streams](std::string_view bytes) {
        streams.out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
        return streams.out.good();
    };
    return batch;
}

// The steps that the command line names, saved ones read.
Result<std::vector<StepRequest>> stepsNamed(const std::vector<NamedStep>& named,
                                            const GuiPartSource& guiPart)
{
    std::vector<StepRequest> steps;
    for (const NamedStep& step : named) {
        if (!step.saved) {
            steps.push_back(step);
            continue;
        }
        const auto part = guiPart();
        if (!part) {
            return tl::unexpected<Error>(part.error());
        }
        const auto saved = (*part)->steps(*step.saved);
        if (!saved) {
            return tl::unexpected<Error>(saved.error());
        }
        for (const StepRequest& one : *saved) {
            steps.push_back(one);
            steps.back().options = step.options;
        }
    }
    return steps;
}

// The steps with ranges that stand in files read from them.
Result<std::vector<StepRequest>> stepsWithRanges(std::vector<StepRequest> steps)
{
    for (StepRequest& step : steps) {
        for (auto& [key, value] : step.options) {
            if (step.action == deletepages::actionName && key == deletepages::rangeKey) {
                Result<std::string> range = valueOrFileContent(value);
                if (!range) {
                    return tl::unexpected<Error>(std::move(range.error()));
                }
                value = std::move(*range);
            }
        }
    }
    return steps;
}

// One document needs nobody to survive it, and would only wait for the worker to start.
bool usesWorkers(const RunOptions& options)
{
    const bool asked = options.jobs || options.timeout || options.memoryLimit;
    return options.jobs != 0U && (asked || options.inputs.size() > 1);
}

WorkerSettings workersFor(const RunOptions& options, const Installation& installation,
                          const std::vector<StepRequest>& steps)
{
    constexpr int fiveMinutes = 300;
    WorkerSettings settings;
    settings.program = installation.program;
    settings.count = options.jobs.value_or(std::max(1U, std::thread::hardware_concurrency()));
    settings.timeout = std::chrono::seconds(options.timeout.value_or(fiveMinutes));
    settings.setup.library = installation.library;
    settings.setup.actionFolders = installation.actionFolders;
    settings.setup.steps = steps;
    settings.setup.memoryLimit = options.memoryLimit.value_or(availableMemory() / settings.count);
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

int run(const RunOptions& given, const Installation& installation, const GuiPartSource& guiPart,
        const Streams& streams)
{
    RunOptions options = given;
    if (!options.filesFrom.empty()) {
        const auto listed = readFileList(options.filesFrom, options.endedByNull, streams);
        if (!listed) {
            return failedWith(streams, listed.error());
        }
        options.inputs.insert(options.inputs.end(), listed->begin(), listed->end());
    }
    if (streams.outIsTerminal && writesDocumentToOutput(options)) {
        return failedWith(streams, {Reason::OutputNotAFile, {}, "a PDF is not for a terminal"});
    }
    const ActionCatalog catalog = ActionCatalog::of(installation.actionFolders);
    const Result<std::vector<StepRequest>> steps =
        stepsNamed(options.steps, guiPart).and_then(stepsWithRanges);
    if (!steps) {
        return failedWith(streams, steps.error());
    }
    Result<Sequence> sequence = Sequence::of(*steps, catalog);
    if (!sequence) {
        return failedWith(streams, sequence.error());
    }
    const Result<Batch> batch = prepare(options, streams);
    if (!batch) {
        return failedWith(streams, batch.error());
    }
    if (!options.dryRun) {
        removeAbandonedFiles(batch->targets);
    }
    RunReporter reporter(options, streams);
    const Result<BatchResult> result =
        usesWorkers(options)
            ? runInWorkers(*batch, workersFor(options, installation, *steps), reporter)
            : runHere(*batch, installation, *sequence, reporter);
    if (!result) {
        return failedWith(streams, result.error());
    }
    reporter.finish(*result);
    if (result->ending) {
        printError(streams, *result->ending);
    }
    if (result->interrupted) {
        return InterruptedByUser;
    }
    return result->failed > 0 || result->ending ? SomeFailed : AllDone;
}

} // namespace vantora::cli
