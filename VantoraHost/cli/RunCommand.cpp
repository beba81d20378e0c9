#include "VantoraHost/cli/RunCommand.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/cli/InputFiles.h"
#include "VantoraHost/cli/Messages.h"
#include "VantoraHost/cli/ProgressLine.h"
#include "VantoraHost/core/Batch.h"
#include "VantoraHost/core/DeletePagesOptions.h"
#include "VantoraHost/core/PageForecast.h"
#include "VantoraHost/core/PdfLibrary.h"

#include <algorithm>
#include <ostream>

namespace vantora::cli {

namespace {

std::string pagesText(const DocumentReport& report)
{
    const bool planned = report.status == DocumentStatus::Planned;
    const std::string before = grouped(report.pagesBefore.value_or(0)) + " pages";
    const std::string left = ", " + grouped(report.pagesAfter.value_or(0)) + " left";
    if (!report.pagesRemoved) {
        return planned ? before + ", only the action itself knows which would go" : before + left;
    }
    const std::size_t removed = report.pagesRemoved->size();
    return (removed == 0 ? "none" : grouped(removed)) + " of " + before +
           (planned ? " would go" : " removed") +
           (removed == 0 ? "" : " (" + pageNumbersText(*report.pagesRemoved) + ")") + left;
}

std::string resultLine(const DocumentReport& report)
{
    std::string line = inputName(report.input);
    if (report.output == standardStream) {
        line += " -> standard output";
    } else if (report.status == DocumentStatus::Done && report.output != report.input) {
        line += " -> " + shown(report.output);
    }
    line += ": " + pagesText(report);
    if (report.bytesBefore && report.bytesAfter) {
        line += "; " + sizeText(*report.bytesBefore) + " before, " + sizeText(*report.bytesAfter) +
                " after";
    }
    return line;
}

bool writesDocumentToOutput(const RunOptions& options)
{
    return !options.dryRun && std::holds_alternative<ToStandardOutput>(*options.destination);
}

/// Prints what a run has to say as it goes.
class Reporter : public RunObserver {
public:
    Reporter(const RunOptions& options, const Streams& streams)
        : options(options), streams(streams), documentOnOutput(writesDocumentToOutput(options)),
          progress(streams.err,
                   streams.errIsTerminal && !options.quiet && options.inputs.size() > 1)
    {
    }

    void documentFinished(const DocumentReport& report, std::size_t finished,
                          std::size_t total) override
    {
        const bool didFail = report.status == DocumentStatus::Failed;
        failed += didFail ? 1 : 0;
        if (saysSomething(report)) {
            progress.clear();
        }
        if (options.json) {
            streams.out << toJson(report) << '\n';
        } else if (!didFail && !options.quiet) {
            (documentOnOutput ? streams.err : streams.out) << resultLine(report) << '\n';
        }
        if (!options.quiet) {
            printWarnings(report);
        }
        if (report.error) {
            printError(streams, *report.error);
        }
        streams.out.flush();
        progress.show(finished, failed, total);
    }

    bool cancelled() const override { return streams.interrupted(); }

    void finish(const BatchResult& result)
    {
        progress.clear();
        const std::string count = grouped(result.finished - result.failed) + " of " +
                                  grouped(options.inputs.size()) + " documents done";
        const std::string failures =
            result.failed > 0 ? ", " + grouped(result.failed) + " failed" : "";
        if (result.interrupted) {
            printNote(streams, "interrupted: " + count + failures + "; nothing is half-written");
        } else if (options.inputs.size() > 1 && !options.quiet) {
            printNote(streams, count + failures);
        }
    }

private:
    bool saysSomething(const DocumentReport& report) const
    {
        return !options.quiet || options.json || report.error;
    }

    void printWarnings(const DocumentReport& report) const
    {
        for (const std::string& warning : report.warnings) {
            printWarning(streams, report.input, warning);
        }
        printRepairs(streams, report.input, report.repairs);
    }

    const RunOptions& options;
    const Streams& streams;
    const bool documentOnOutput;
    ProgressLine progress;
    std::size_t failed = 0;
};

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

} // namespace

int run(const RunOptions& options, const Installation& installation, const GuiPartSource& guiPart,
        const Streams& streams)
{
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
    const auto library = loadPdfLibrary(installation.library);
    if (!library) {
        return failedWith(streams, library.error());
    }
    Reporter reporter(options, streams);
    const Result<BatchResult> result = runBatch(**library, *sequence, *batch, reporter);
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
